#include "render/gl/element.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using namespace ulk3d;

struct kind_row {
    e_type_t type;
    std::uint32_t value;
    const char* name;
    std::uint32_t components;
    GLenum gl_type;
    bool normalized;
};

void PrintTo(const kind_row& row, std::ostream* stream) {
    *stream << row.value;
}

class ElementKind : public testing::TestWithParam<kind_row> {};

TEST_P(ElementKind, HasItsComponentsNameAndFormat) {
    const kind_row& row = GetParam();
    EXPECT_EQ(static_cast<std::uint32_t>(row.type), row.value);
    const element_t element{row.type};
    EXPECT_EQ(component_count(element), row.components);
    EXPECT_STREQ(element_name(element), row.name);
    EXPECT_EQ(element_format(element).components, row.components);
    EXPECT_EQ(element_format(element).type, row.gl_type);
    EXPECT_EQ(element_format(element).normalized, row.normalized);
}

constexpr kind_row kind_rows[] = {
    {e_type_t::Position, 0, "Position", 3, GL_FLOAT, false},
    {e_type_t::Normal, 1, "Normal", 3, GL_FLOAT, true},
    {e_type_t::RGBA, 2, "RGBA", 4, GL_FLOAT, true},
    {e_type_t::TexCoord3, 3, "TexCoord3", 3, GL_FLOAT, false},
    {e_type_t::TexCoord2, 4, "TexCoord2", 2, GL_FLOAT, false},
    {e_type_t::PointSize, 5, "PointSize", 1, GL_FLOAT, false},
    {e_type_t::ID, 6, "ID", 1, GL_UNSIGNED_INT, false},
    {e_type_t::Vector3w, 7, "Vector3w", 4, 0, false},
    {e_type_t::Matrix3w, 8, "Matrix3w", 16, 0, false},
    {static_cast<e_type_t>(9), 9, nullptr, 0, 0, false},
    {static_cast<e_type_t>(0xFFFFFFFF), 0xFFFFFFFF, nullptr, 0, 0, false},
};

INSTANTIATE_TEST_SUITE_P(Table, ElementKind, testing::ValuesIn(kind_rows));

TEST(ElementList, DefaultIsEmpty) {
    const element_list_t list;
    EXPECT_EQ(list.size(), 0u);
    EXPECT_TRUE(elements_of(list).empty());
    EXPECT_EQ(words_of(list), 0u);
}

TEST(ElementList, KeepsItsOrder) {
    const auto list = make_element_list({e_type_t::Position, e_type_t::RGBA, e_type_t::TexCoord2});
    const auto elements = elements_of(list);
    ASSERT_EQ(elements.size(), 3u);
    EXPECT_EQ(elements[0].type, e_type_t::Position);
    EXPECT_EQ(elements[1].type, e_type_t::RGBA);
    EXPECT_EQ(elements[2].type, e_type_t::TexCoord2);
}

TEST(ElementList, WordsAreTheSumOfTheComponents) {
    EXPECT_EQ(words_of(make_element_list({e_type_t::Position, e_type_t::RGBA, e_type_t::TexCoord2})), 9u);
    EXPECT_EQ(words_of(make_element_list({e_type_t::Vector3w, e_type_t::Matrix3w, e_type_t::ID})), 21u);
}

TEST(ElementList, UnknownKindCountsNoWords) {
    EXPECT_EQ(words_of(make_element_list({e_type_t::Position, static_cast<e_type_t>(9), e_type_t::RGBA})),
              7u);
}

TEST(ElementList, WordOffsetIsTheSumBeforeTheIndex) {
    const auto list = make_element_list({e_type_t::Position, e_type_t::RGBA, e_type_t::TexCoord2});
    EXPECT_EQ(word_offset_of(list, 0), 0u);
    EXPECT_EQ(word_offset_of(list, 1), 3u);
    EXPECT_EQ(word_offset_of(list, 2), 7u);
    EXPECT_EQ(word_offset_of(list, 3), 9u);
    EXPECT_EQ(word_offset_of(list, 100), 9u);
}

TEST(ElementList, CopiesAreTheSameListEqualOnesAreNot) {
    const auto list = make_element_list({e_type_t::PointSize});
    const auto copy = list;
    EXPECT_TRUE(is_same_list(list, copy));
    EXPECT_FALSE(is_same_list(list, make_element_list({e_type_t::PointSize})));
}

}  // namespace
