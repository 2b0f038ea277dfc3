#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "support/places.h"
#include "utils/pictures/rgba_picture.h"
namespace ulk_test {

/// How two pictures of the same size differ. A pixel counts as different when one of its channels is off by
/// more than `channel_tolerance`.
struct picture_difference_t {
    static constexpr int channel_tolerance = 8;

    std::size_t pixels = 0;  ///< number of different pixels
    bool has_block = false;  ///< some square of 2 by 2 pixels is all different
    int block_x = 0;         ///< position of the first such square in reading order, from the top left
    int block_y = 0;

    /// Rasterisers may disagree on single pixels and thin lines, up to one pixel in two hundred. A block
    /// means that the picture shows something else.
    bool is_tolerable(std::size_t pixel_count) const { return !has_block && pixels * 200 <= pixel_count; }
};

/// Both pictures must have the same size.
[[nodiscard]] picture_difference_t compare_pictures(const libutils::rgba_picture_t& picture,
                                                    const libutils::rgba_picture_t& golden);

/// Where golden pictures are, and where the results of failed comparisons go.
struct golden_folders_t {
    std::filesystem::path golden = std::filesystem::path(test_data_folder()) / "golden";
    std::filesystem::path failures = golden_failures_folder();
};

/// Compares a picture with the golden picture `name`.png. A failed comparison leaves `name`.png and, if the
/// sizes are equal, `name`-difference.png (different pixels in white) in the folder for failures. With
/// ULK_UPDATE_GOLDEN=1 in the environment the picture becomes the golden one, and the comparison succeeds.
///
///     EXPECT_TRUE(matches_golden(target.read_pixels(), "torus-front"));
[[nodiscard]] testing::AssertionResult matches_golden(const libutils::rgba_picture_t& picture,
                                                      const std::string& name,
                                                      const golden_folders_t& folders = {});

}  // namespace ulk_test
