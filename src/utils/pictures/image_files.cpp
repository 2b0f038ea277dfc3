#include "utils/pictures/image_files.h"

#include <iostream>

#include "utils/codecs/file_forms.h"
#include "utils/memory/try_allocate.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {

bool autoloadformat(image2d& image, const char* path) {
    const file_form_t* const form = find_file_form(path);
    if (form == nullptr) {
        std::cerr << "autoloadformat load fail, fname=" << path << '\n';
        return false;
    }
    if (!form->load(image, path))
        return false;
    if (image.format != image_format::index)
        return true;
    image2d colours;
    if (!index2rgb(colours, image))
        return false;
    image = colours;
    return true;
}

bool autosaveformat(const image2d& image, const char* path) {
    const file_form_t* const form = find_file_form(path);
    if (form == nullptr || form->save == nullptr) {
        // The saving side prints "load", too.
        std::cerr << "autosaveformat load fail, fname=" << path << '\n';
        return false;
    }
    return try_allocate([&] { return form->save(image, path); });
}

}  // namespace libutils
