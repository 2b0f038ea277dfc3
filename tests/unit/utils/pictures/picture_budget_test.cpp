#include <gtest/gtest.h>

#include <string>

#include "unit/utils/codecs/bmp_bytes.h"
#include "unit/utils/codecs/codec_test.h"
#include "unit/utils/codecs/jpeg_bytes.h"
#include "unit/utils/codecs/png_bytes.h"
#include "unit/utils/codecs/tga_bytes.h"
#include "utils/memory/memory_budget.h"
#include "utils/pictures/image_files.h"
#include "utils/pictures/image_transforms.h"

/// The pixels of pictures are held against the budget of a load before they are allocated.
using namespace libutils;

namespace {

constexpr std::uint32_t side = 100;

std::string png_of(int colour_type, const std::string& chunks = {}) {
    png_bytes_t png;
    png.width = png.height = side;
    png.colour_type = colour_type;
    png.chunks = chunks;
    return png.bytes();
}

std::string png_of_indices() {
    return png_of(3, png_chunk("PLTE", std::string(256 * 3, '\x55')));
}

std::string jpeg_of(bool progressive) {
    jpeg_bytes_t jpeg;
    jpeg.width = jpeg.height = side;
    jpeg.progressive = progressive;
    jpeg.full_chroma = true;
    return jpeg.bytes();
}

std::string tga_of_pixels() {
    tga_bytes_t tga;
    tga.width = tga.height = side;
    tga.pixels = std::string(std::size_t{side} * side * 3, 'x');
    return tga.bytes();
}

bool loads_within(std::uint64_t bytes, const std::string& name, const std::string& file) {
    const temporary_folder_t folder;
    const std::string path = folder.write(name, file);
    const captured_descriptor_t errors;
    const load_budget_t budget(bytes);
    image2d image;
    return autoloadformat(image, path.c_str());
}

}  // namespace

TEST(PictureBudget, PixelsAreClaimedBeforeTheyAreAllocated) {
    constexpr std::uint64_t pixels = std::uint64_t{side} * side;
    // A block of 8 by 8 pixels has 64 coefficients of two bytes; 13 blocks cover a side.
    constexpr std::uint64_t coefficients = 3 * 13 * 13 * 64 * 2;
    struct row {
        const char* name;
        std::string file;
        std::uint64_t bytes;
    };
    const row rows[] = {
        {"rgb.png", png_of(2), 3 * pixels},
        {"grey.png", png_of(0), pixels},
        {"rgba.png", png_of(6), 4 * pixels},
        {"sequential.jpg", jpeg_of(false), 3 * pixels},
        {"progressive.jpg", jpeg_of(true), 3 * pixels + coefficients},
        {"rgb.tga", tga_of_pixels(), 3 * pixels},
    };
    for (const auto& [name, file, bytes] : rows) {
        EXPECT_FALSE(loads_within(bytes - 1, name, file)) << name;
        EXPECT_TRUE(loads_within(bytes, name, file)) << name;
    }
}

TEST(PictureBudget, TheColoursOfIndicesAreClaimedBeforeTheyAreLookedUp) {
    constexpr std::uint64_t pixels = std::uint64_t{side} * side;
    EXPECT_FALSE(loads_within(pixels, "indices.png", png_of_indices()));
    EXPECT_FALSE(loads_within(4 * pixels - 1, "indices.png", png_of_indices()));
    EXPECT_TRUE(loads_within(4 * pixels, "indices.png", png_of_indices()));
}

TEST(PictureBudget, PicturesShareTheBudgetOfALoad) {
    const temporary_folder_t folder;
    const std::string path = folder.write("rgb.png", png_of(2));
    const captured_descriptor_t errors;
    const load_budget_t budget(70'000);
    image2d first, second, third;
    EXPECT_TRUE(autoloadformat(first, path.c_str()));
    EXPECT_TRUE(autoloadformat(second, path.c_str()));
    EXPECT_FALSE(autoloadformat(third, path.c_str()));
}

TEST(PictureBudget, ARefusedPictureHoldsNoPixels) {
    const temporary_folder_t folder;
    const std::string path = folder.write("indices.png", png_of_indices());
    const load_budget_t budget(20'000);
    image2d indices;
    ASSERT_FALSE(autoloadformat(indices, path.c_str()));
    image2d image = image2d();
    image.format = image_format::rgb;
    image.bits = image_bits::bits_8;
    image.width = image.height = side;
    EXPECT_FALSE(image.allocate());
    EXPECT_TRUE(image.elements().empty());
}

TEST(PictureBudget, ABlockThatIsUsedAgainIsClaimedOnce) {
    const load_budget_t budget(50'000);
    image2d image;
    image.format = image_format::rgb;
    image.bits = image_bits::bits_8;
    image.width = image.height = side;
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(image.allocate()) << i;
    EXPECT_EQ(memory_budget(), 20'000U);
}

TEST(PictureBudget, AMapOfOnePixelIsAlwaysThere) {
    const load_budget_t budget(0);
    image2d image;
    image.format = image_format::rgba;
    image.bits = image_bits::bits_8;
    image.width = image.height = 1;
    EXPECT_TRUE(image.allocate());
}
