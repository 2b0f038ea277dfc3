#include "utils/codecs/file_forms.h"

#include <gtest/gtest.h>

#include "support/places.h"
#include "support/scene_text.h"

using namespace libutils;

TEST(FileForms, AreToldInOrder) {
    EXPECT_EQ(file_form_list(), ".jpg, .bmp, .png or .tga");
}

TEST(FileForms, AreFoundByTheEndOfThePathInAnyCase) {
    for (const file_form_t& form : file_forms()) {
        std::string path = std::string("/a.b/c") + form.extension;
        EXPECT_EQ(find_file_form(path.c_str()), &form) << path;
        path.back() = static_cast<char>(path.back() - 'a' + 'A');
        EXPECT_EQ(find_file_form(path.c_str()), &form) << path;
    }
    EXPECT_EQ(find_file_form("a.jpeg"), nullptr);
    EXPECT_EQ(find_file_form(""), nullptr);
}

TEST(FileForms, AreNamedByTheDocuments) {
    for (const char* document : {"manual.md", "file-format.md"}) {
        const std::string text = ulk_test::read_file(ulk_test::sample("../docs/") + document);
        for (const file_form_t& form : file_forms())
            EXPECT_NE(text.find('`' + std::string(form.extension) + '`'), std::string::npos)
                << document << ": " << form.extension;
    }
}
