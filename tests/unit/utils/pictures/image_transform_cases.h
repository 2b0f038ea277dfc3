#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <iostream>
#include <limits>
#include <vector>

#include "support/captured_stream.h"
#include "support/image_builder.h"
#include "utils/pictures/image_transforms.h"

/// What the tests of the transforms share: small images, changes of their headers, and what a refusal is.
namespace ulk_test {

using bytes_t = std::vector<int>;
namespace format = libutils::image_format;

inline constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();

/// True when `copy` has the header of `image` and shares its bytes.
inline bool is_shallow_copy(const libutils::image2d& copy, const libutils::image2d& image) {
    return copy.format == image.format && copy.type == image.type && copy.bits == image.bits &&
           copy.pack == image.pack && copy.row_length == image.row_length && copy.skip_x == image.skip_x &&
           copy.skip_y == image.skip_y && copy.width == image.width && copy.height == image.height &&
           copy.compressed == image.compressed && copy.palette.count == image.palette.count &&
           copy.begin() == image.begin();
}

using transform_t = bool (*)(libutils::image2d&, const libutils::image2d&);

/// What a refused transform does: `source` stays, the target shares its bytes, and `message` is all that is
/// said.
inline void expect_refused(transform_t transform, const libutils::image2d& source, const char* message) {
    libutils::image2d target = image_of(format::grey, 1, 1, {5});
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(transform(target, source));
    EXPECT_EQ(errors.text(), message);
    EXPECT_TRUE(is_shallow_copy(target, source));
}

inline libutils::image2d with_type(libutils::image2d image, std::uint32_t type) {
    image.type = type;
    return image;
}

inline libutils::image2d with_bits(libutils::image2d image, std::uint32_t bits) {
    image.bits = bits;
    return image;
}

inline libutils::image2d compressed(libutils::image2d image) {
    image.compressed = true;
    return image;
}

inline libutils::image2d with_palette(libutils::image2d image,
                                      std::initializer_list<std::array<unsigned char, 3>> colours) {
    EXPECT_TRUE(image.palette.allocate(static_cast<std::uint32_t>(colours.size())));
    std::uint32_t i = 0;
    for (const auto& [red, green, blue] : colours)
        image.palette.set(i++, red, green, blue);
    return image;
}

inline libutils::image2d rgb_image() {
    return image_of(format::rgb, 2, 1, {1, 2, 3, 4, 5, 6});
}

inline libutils::image2d rgba_image() {
    return image_of(format::rgba, 2, 1, {1, 2, 3, 4, 5, 6, 7, 8});
}

/// Where only the images matter.
inline constexpr libutils::image_colour_t used_colour{};

inline bool fill_with_used_colour(libutils::image2d& target, const libutils::image2d& source) {
    return fill_colour(target, source, used_colour);
}

inline bool add_used_colour(libutils::image2d& target, const libutils::image2d& source) {
    return add_colour(target, source, used_colour);
}

}  // namespace ulk_test
