#pragma once

#include <span>
#include <string>

#include "utils/pictures/image2d.h"

/// The forms of pictures in files. A form is one row of the table in file_forms.cpp; all that depends on
/// which forms there are is made from it.
namespace libutils {

struct file_form_t {
    /// With its dot, in lower case.
    const char* extension;
    /// From a path to an image and back; messages and results are those of the codec's header. `save` is null
    /// for a form that is only read.
    bool (*load)(image2d& image, const char* path);
    bool (*save)(const image2d& image, const char* path);
};

/// In the order in which they are tried and told.
std::span<const file_form_t> file_forms();

/// The form of a path by its extension, in any case of letters. Null for any other.
const file_form_t* find_file_form(const char* path);

/// The extensions for a message: ".a, .b or .c".
std::string file_form_list();

}  // namespace libutils
