#include "utils/codecs/file_forms.h"

#include <array>

#include "utils/codecs/bmp_file.h"
#include "utils/codecs/jpeg_file.h"
#include "utils/codecs/png_image.h"
#include "utils/codecs/tga_file.h"
#include "utils/text/strings.h"

namespace libutils {
namespace {

constexpr auto forms = std::to_array<file_form_t>({
    {".jpg", load_jpeg, save_jpeg},
    {".bmp", load_bmp, save_bmp},
    {".png", load_png, save_png},
    {".tga", load_tga, save_tga},
});

}  // namespace

std::span<const file_form_t> file_forms() {
    return forms;
}

const file_form_t* find_file_form(const char* path) {
    for (const file_form_t& form : forms)
        if (has_extension(path, form.extension) == 0)
            return &form;
    return nullptr;
}

std::string file_form_list() {
    std::string list = forms.front().extension;
    for (std::size_t i = 1; i < forms.size(); ++i)
        list.append(i + 1 < forms.size() ? ", " : " or ").append(forms[i].extension);
    return list;
}

}  // namespace libutils
