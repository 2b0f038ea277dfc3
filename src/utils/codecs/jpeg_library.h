#pragma once

#include <csetjmp>
#include <cstdint>
// The library's header needs it first.
#include <cstdio>

#include <jpeglib.h>

#include "utils/pictures/image2d.h"

/// What the reader and the writer of JPEG share in driving libjpeg.
namespace libutils {

/// Error manager whose exit reports the file and jumps to `way_out`, which the caller has set. No object with
/// a destructor may live in a function that is jumped out of: what has one stays with the caller of the
/// function that calls setjmp.
struct jpeg_errors_t {
    /// The library hands back a pointer to it.
    jpeg_error_mgr base;
    std::jmp_buf way_out;
    const char* filename = nullptr;

    /// For the `err` of a library struct.
    jpeg_error_mgr* prepare(const char* name);
};

/// A picture that passes through the library, and its form there.
struct jpeg_layout_t {
    std::uint32_t format;
    std::uint32_t type;
    std::uint32_t bits;
    J_COLOR_SPACE colour_space;
    int components;
};

/// Null for a picture of another form.
const jpeg_layout_t* find_jpeg_layout(J_COLOR_SPACE colour_space, int components);
const jpeg_layout_t* find_jpeg_layout(const image2d& image);

}  // namespace libutils
