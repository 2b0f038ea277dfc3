#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include "unit/utils/codecs/codec_test.h"
#include "utils/codecs/file_forms.h"

#include "support/places.h"

/// Files that ImageMagick has made (tests/data/images/make_images.sh), of slopes whose pixels are known.
namespace libutils {
namespace {

bool read_file_of_any_form(image2d& image, const std::string& name) {
    const std::string path = test_data_folder() + "/images/" + name;
    return find_file_form(path.c_str())->load(image, path.c_str());
}

using colour_t = std::array<int, 4>;

/// The slopes, the top row being 0.
colour_t slope(int x, int y) {
    return {30 * x + 10, 30 * y + 5, 250 - 20 * x - 11 * y, 255 - 20 * x - 3 * y};
}
colour_t grey_slope(int x, int y) {
    const int grey = 25 * x + 7 * y + 1;
    return {grey, grey, grey, 255};
}

/// The pixel in column `x` and in row `y` from the top, of any format that is read; opaque without an alpha
/// channel. Of 16 bits the first byte, the higher one, counts.
colour_t colour_at(const image2d& image, std::uint32_t x, std::uint32_t y) {
    const auto* pixel = image.pixel(x, image.height - 1 - y);
    const int step = image.bits == image_bits::bits_16 ? 2 : 1;
    switch (image.format) {
        case image_format::grey:
            return {pixel[0], pixel[0], pixel[0], 255};
        case image_format::rgb:
            return {pixel[0], pixel[step], pixel[2 * step], 255};
        case image_format::rgba:
            return {pixel[0], pixel[step], pixel[2 * step], pixel[3 * step]};
        case image_format::bgr:
            return {pixel[2], pixel[1], pixel[0], 255};
        case image_format::bgra:
            return {pixel[2], pixel[1], pixel[0], pixel[3]};
        default: {
            const unsigned bits = image.bitsperpixel();
            const unsigned shift = 8 - bits - x * bits % 8;
            const auto rgb = image.palette.colour(pixel[0] >> shift & ((1U << bits) - 1));
            return {rgb[0], rgb[1], rgb[2], 255};
        }
    }
}

struct file_row_t {
    std::string name;
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t format;
    std::uint32_t bits;
    int tolerance;
    bool has_alpha;
    colour_t (*colour)(int x, int y);
};

const std::vector<file_row_t> readable{
    {"colours24.bmp", 5, 3, 10, 3, 0, false, slope},  {"palette8.bmp", 8, 8, 17, 3, 0, false, slope},
    {"palette4.bmp", 3, 3, 17, 2, 0, false, slope},   {"palette1.bmp", 2, 1, 17, 0, 0, false, slope},
    {"colours24.tga", 4, 3, 10, 3, 0, false, slope},  {"colours32.tga", 5, 3, 11, 3, 0, true, slope},
    {"colours24.png", 5, 3, 8, 3, 0, false, slope},   {"interlaced24.png", 5, 3, 8, 3, 0, false, slope},
    {"colours32.png", 5, 3, 9, 3, 0, true, slope},    {"colours48.png", 5, 3, 8, 5, 0, false, slope},
    {"palette15.png", 5, 3, 17, 3, 0, false, slope},  {"palette64.png", 8, 8, 17, 3, 0, false, slope},
    {"grey8.png", 5, 3, 0, 3, 0, false, grey_slope},  {"colours.jpg", 5, 3, 8, 3, 3, false, slope},
    {"progressive.jpg", 5, 3, 8, 3, 3, false, slope}, {"grey.jpg", 5, 3, 0, 3, 2, false, grey_slope},
};

TEST(FilesOfOtherPrograms, AreReadPixelByPixel) {
    for (const file_row_t& row : readable) {
        SCOPED_TRACE(row.name);
        image2d image;
        ASSERT_TRUE(read_file_of_any_form(image, row.name));
        ASSERT_TRUE(image.holds_pixels());
        EXPECT_EQ(image.width, row.width);
        EXPECT_EQ(image.height, row.height);
        EXPECT_EQ(image.format, row.format);
        EXPECT_EQ(image.bits, row.bits);
        for (std::uint32_t y = 0; y < row.height; ++y)
            for (std::uint32_t x = 0; x < row.width; ++x) {
                colour_t expected = row.colour(static_cast<int>(x), static_cast<int>(y));
                if (!row.has_alpha)
                    expected[3] = 255;
                const colour_t colour = colour_at(image, x, y);
                for (std::size_t channel = 0; channel < 4; ++channel)
                    EXPECT_LE(std::abs(colour[channel] - expected[channel]), row.tolerance)
                        << "channel " << channel << " at " << x << ", " << y;
            }
    }
}

TEST(FilesOfOtherPrograms, AreRefusedInTheFormsThatAreNotRead) {
    for (const char* name : {"packed8.bmp", "fields32.bmp", "width5.tga", "grey8.tga", "packed24.tga",
                             "top_left24.tga", "cmyk.jpg"}) {
        const captured_descriptor_t errors;
        image2d image;
        EXPECT_FALSE(read_file_of_any_form(image, name)) << name;
    }
}

}  // namespace
}  // namespace libutils
