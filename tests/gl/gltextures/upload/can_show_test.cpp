#include "gltextures/upload/gr_can_show.h"

#include <gtest/gtest.h>

#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "support/captured_stream.h"
#include "support/gl_state.h"

namespace libgr {
namespace {

using libutils::image2d;
using ulk_test::captured_stream;
using ulk_test::gl_integer;
using ulk_test::image_of;
using ulk_test::plain_image;
namespace image_bits = libutils::image_bits;
namespace image_format = libutils::image_format;

struct CanShow : ulk_test::gl_test {};

/// An image of packed grey with all its pixels.
image2d grey_image(std::uint32_t bits, std::uint32_t width, std::uint32_t height) {
    image2d image;
    image.format = image_format::grey;
    image.type = libutils::image_type::unsigned_integer;
    image.bits = bits;
    image.width = width;
    image.height = height;
    EXPECT_TRUE(image.allocate());
    return image;
}

TEST_F(CanShow, WholeImagesOfTheFormsOfFiles) {
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(grCanShow(GL_TEXTURE_2D, plain_image(3, 2, {1, 2, 3, 4})));
    EXPECT_TRUE(grCanShow(GL_TEXTURE_CUBE_MAP, plain_image(2, 2, {1, 2, 3, 4})));
    for (const std::uint32_t bits :
         {image_bits::bits_1, image_bits::bits_4, image_bits::bits_8, image_bits::bits_16})
        EXPECT_TRUE(grCanShow(GL_TEXTURE_2D, grey_image(bits, 9, 3))) << bits;
    EXPECT_TRUE(grCanShow(GL_TEXTURE_2D, image_of(image_format::index, 3, 2, {0, 1, 2, 2, 1, 0})));
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CanShow, NoImageWithoutPixels) {
    EXPECT_FALSE(grCanShow(GL_TEXTURE_2D, {}));
    image2d image = plain_image(2, 2, {1, 2, 3, 4});
    image.width = 0;
    EXPECT_FALSE(grCanShow(GL_TEXTURE_2D, image));
}

TEST_F(CanShow, NoImageWhosePixelsAreNotAllThere) {
    image2d image = image_of(image_format::rgb, 3, 2, std::vector<std::uint8_t>(18));
    image.limit = 12 + 9;
    EXPECT_TRUE(grCanShow(GL_TEXTURE_2D, image)) << "but for what fills up the last row";
    image.limit = 12 + 8;
    EXPECT_FALSE(grCanShow(GL_TEXTURE_2D, image));
    image.limit = 24;
    image.height = 0xFFFFFFFE;
    EXPECT_FALSE(grCanShow(GL_TEXTURE_2D, image));
}

TEST_F(CanShow, FormsWithoutATripleAreTold) {
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(grCanShow(GL_TEXTURE_2D, grey_image(image_bits::bits_2, 4, 1)));
    EXPECT_EQ(errors.text(), "Not supported image format!\nimgformat: 0\nimgtype: 1\nimgbits: 1\n");
}

TEST_F(CanShow, NoImageThatIsLargerThanGlTakes) {
    const auto longest = static_cast<std::uint32_t>(gl_integer(GL_MAX_TEXTURE_SIZE));
    EXPECT_TRUE(grCanShow(GL_TEXTURE_2D, grey_image(image_bits::bits_1, longest, 1)));
    EXPECT_TRUE(grCanShow(GL_TEXTURE_2D, grey_image(image_bits::bits_1, 1, longest)));
    EXPECT_FALSE(grCanShow(GL_TEXTURE_2D, grey_image(image_bits::bits_1, longest + 1, 1)));
    EXPECT_FALSE(grCanShow(GL_TEXTURE_2D, grey_image(image_bits::bits_1, 1, longest + 1)));
    const auto cube = static_cast<std::uint32_t>(gl_integer(GL_MAX_CUBE_MAP_TEXTURE_SIZE));
    EXPECT_FALSE(grCanShow(GL_TEXTURE_CUBE_MAP, grey_image(image_bits::bits_1, cube + 1, 1)));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
}  // namespace libgr
