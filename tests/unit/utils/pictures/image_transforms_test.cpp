#include "support/scene_text.h"
#include "unit/utils/pictures/image_transform_cases.h"

using namespace libutils;
using namespace ulk_test;

namespace {

bool turn_once(image2d& target, const image2d& source) {
    return rotate(1, target, source);
}

struct guarded_t {
    const char* name;
    transform_t transform;
    std::uint32_t format;
};

const guarded_t guarded[] = {
    {"rgb2bgr", rgb2bgr, format::rgb},
    {"rgb2bgr of 4", rgb2bgr, format::rgba},
    {"bgr2rgb", bgr2rgb, format::bgr},
    {"bgr2rgb of 4", bgr2rgb, format::bgra},
    {"index2rgb", index2rgb, format::index},
    {"rgb2grey", rgb2grey, format::rgb},
    {"heightmap2normalmap", heightmap2normalmap, format::grey},
    {"scaledown", scaledown, format::rgb},
    {"scaledown of grey", scaledown, format::grey},
    {"rotate", turn_once, format::rgb},
    {"tight_copy", tight_copy, format::rgb},
    {"fill_colour", fill_with_used_colour, format::rgb},
    {"add_colour", add_used_colour, format::rgba},
};

image2d random_image(std::uint32_t code, std::uint32_t width, std::uint32_t height) {
    std::mt19937 random(7);
    image2d image = image_header(code, image_bits::bits_8, width, height);
    EXPECT_TRUE(image.allocate());
    ulk_test::fill_randomly(image, random);
    return image;
}

TEST(ImageTransforms, WindowThatDoesNotHoldTheRowsIsRefusedWithoutAWord) {
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        image2d source = random_image(row.format, 8, 8);
        source.limit = source.size() - 1;
        expect_refused(row.transform, source, "");
        source.limit = image2d::no_limit;
        source.offset = 1;
        expect_refused(row.transform, source, "");
        source.offset = 1U << 20;
        expect_refused(row.transform, source, "");
        source.deallocate();
        expect_refused(row.transform, source, "");
    }
}

TEST(ImageTransforms, SkipsBeyondTheDataAreRefusedWithoutAWord) {
    for (const guarded_t& row : guarded) {
        if (row.transform == heightmap2normalmap)
            continue;
        SCOPED_TRACE(row.name);
        image2d source = random_image(row.format, 8, 8);
        source.skip_y = 1;
        expect_refused(row.transform, source, "");
        source.skip_y = most;
        expect_refused(row.transform, source, "");
        source.skip_y = 0;
        source.skip_x = 1;
        expect_refused(row.transform, source, "");
        source.skip_x = most;
        expect_refused(row.transform, source, "");
    }
}

TEST(ImageTransforms, HeightOfATopDownFileIsRefused) {
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        image2d source = random_image(row.format, 8, 8);
        source.height = most - 7;
        image2d target;
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(row.transform(target, source));
        EXPECT_TRUE(is_shallow_copy(target, source));
    }
}

TEST(ImageTransforms, ImagesWithoutPixelsGiveImagesWithoutPixels) {
    for (const guarded_t& row : guarded)
        for (const auto& [width, height] : {std::pair{0U, 0U}, {0U, 5U}, {5U, 0U}}) {
            SCOPED_TRACE(row.name);
            image2d target = random_image(format::rgb, 2, 2);
            EXPECT_TRUE(row.transform(target, image_header(row.format, image_bits::bits_8, width, height)));
            EXPECT_TRUE(target.empty());
            EXPECT_TRUE(target.holds_pixels());
        }
}

TEST(ImageTransforms, MappedFileIsReadAndNeverWritten) {
    const ulk_test::temporary_folder_t folder;
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        const image2d in_memory = random_image(row.format, 7, 5);
        const auto bytes = in_memory.elements();
        const std::string contents(bytes.begin(), bytes.end());
        const std::string path = folder.write("pixels.bin", contents);
        image2d mapped = image_header(row.format, image_bits::bits_8, 7, 5);
        ASSERT_TRUE(mapped.image_window_t::allocate(0, path.c_str(), 0));
        const image2d other = mapped;
        image2d expected;
        ASSERT_TRUE(row.transform(expected, in_memory));
        ASSERT_TRUE(row.transform(mapped, mapped));
        EXPECT_EQ(window_bytes(mapped), window_bytes(expected));
        EXPECT_TRUE(mapped.writable());
        EXPECT_EQ(window_bytes(other), window_bytes(in_memory));
    }
}

TEST(ImageTransforms, TargetThatWasUsedBeforeGetsTheSameBytes) {
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        const image2d source = random_image(row.format, 7, 5);
        image2d fresh;
        ASSERT_TRUE(row.transform(fresh, source));
        image2d used = random_image(format::rgba, 40, 40);
        used.skip_x = 3;
        used.skip_y = 2;
        used.row_length = 40;
        ASSERT_TRUE(row.transform(used, source));
        EXPECT_EQ(window_bytes(used), window_bytes(fresh));
        EXPECT_EQ(used.row_length, 0U);
        EXPECT_EQ(used.skip_x, 0U);
        EXPECT_EQ(used.skip_y, 0U);
    }
}

}  // namespace
