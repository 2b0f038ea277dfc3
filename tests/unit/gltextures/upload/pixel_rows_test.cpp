#include "gltextures/upload/gr_pixel_rows.h"

#include <gtest/gtest.h>

#include <array>

#include "utils/pictures/image_format.h"

namespace {

using namespace libgr;

constexpr std::array<unsigned char, 64> bytes{};

/// A grey picture whose rows of 3 bytes begin at every fourth one.
pixel_source_t grey_source(image_extent_t extent, std::size_t byte_count) {
    pixel_source_t source{};
    source.extent = extent;
    source.format = libutils::image_format::grey;
    source.bits = libutils::image_bits::bits_8;
    source.bytes = std::span(bytes).first(byte_count);
    return source;
}

TEST(HoldsRows, ToTheLastPixelAndNotToTheEndOfItsRow) {
    EXPECT_TRUE(holds_rows(grey_source({3, 3, 2, 2}, 15)));
    EXPECT_FALSE(holds_rows(grey_source({3, 3, 2, 2}, 14)));
}

TEST(HoldsRows, BehindWhatIsSkipped) {
    pixel_source_t source = grey_source({3, 3, 2, 2}, 8 + 4 + 1 + 15);
    source.skip_images = source.skip_rows = source.skip_pixels = 1;
    source.image_height = 2;
    source.row_length = 4;
    EXPECT_TRUE(holds_rows(source));
    source.bytes = source.bytes.first(source.bytes.size() - 1);
    EXPECT_FALSE(holds_rows(source));
}

TEST(HoldsRows, OfNoPixelsWithoutBytes) {
    for (const image_extent_t& extent : {image_extent_t{3, 0, 2, 2}, {3, 3, 0, 2}, {3, 3, 2, 0}})
        EXPECT_TRUE(holds_rows(grey_source(extent, 0))) << extent.width << extent.height << extent.depth;
}

}  // namespace
