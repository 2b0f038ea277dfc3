#include "utils/codecs/jpeg_library.h"

#include <algorithm>
#include <array>
#include <iostream>

namespace libutils {
namespace {

constexpr std::array<jpeg_layout_t, 3> layouts{{
    {image_format::rgb, image_type::unsigned_integer, image_bits::bits_8, JCS_RGB, 3},
    {image_format::ycbcr, image_type::unsigned_integer, image_bits::bits_8, JCS_YCbCr, 3},
    {image_format::grey, image_type::unsigned_integer, image_bits::bits_8, JCS_GRAYSCALE, 1},
}};

[[noreturn]] void report_and_jump(j_common_ptr library) {
    auto* const errors = reinterpret_cast<jpeg_errors_t*>(library->err);
    std::cerr << errors->filename << ": error detected.\n";
    std::longjmp(errors->way_out, 1);
}

template <class Condition>
const jpeg_layout_t* find_layout(const Condition& condition) {
    const auto row = std::ranges::find_if(layouts, condition);
    return row != layouts.end() ? &*row : nullptr;
}

}  // namespace

jpeg_error_mgr* jpeg_errors_t::prepare(const char* name) {
    filename = name;
    jpeg_std_error(&base);
    base.error_exit = report_and_jump;
    return &base;
}

const jpeg_layout_t* find_jpeg_layout(J_COLOR_SPACE colour_space, int components) {
    return find_layout([=](const jpeg_layout_t& row) {
        return row.colour_space == colour_space && row.components == components;
    });
}

const jpeg_layout_t* find_jpeg_layout(const image2d& image) {
    return find_layout([&image](const jpeg_layout_t& row) {
        return row.format == image.format && row.type == image.type && row.bits == image.bits;
    });
}

}  // namespace libutils
