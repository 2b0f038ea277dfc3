#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "support/places.h"
#include "utils/pictures/rgba_picture.h"
namespace ulk_test {

/// How two pictures of one size differ. A pixel counts when one of its channels is off by more than
/// `channel_tolerance`.
struct picture_difference_t {
    static constexpr int channel_tolerance = 8;

    std::size_t pixels = 0;  ///< pixels that count
    bool has_block = false;  ///< a square of 2 by 2 pixels all of which count
    int block_x = 0;         ///< its place, from the top left; the first one in reading order
    int block_y = 0;

    /// Single pixels and thin lines are what rasterisers may disagree on, up to one pixel in two hundred. A
    /// block is a change of what is shown.
    bool is_tolerable(std::size_t pixel_count) const { return !has_block && pixels * 200 <= pixel_count; }
};

/// Both pictures must be of the same size.
picture_difference_t compare_pictures(const libutils::rgba_picture_t& picture,
                                      const libutils::rgba_picture_t& golden);

/// Where golden pictures lie, and where what a failed comparison leaves goes.
struct golden_folders_t {
    std::filesystem::path golden = std::filesystem::path(test_data_folder()) / "golden";
    std::filesystem::path failures = golden_failures_folder();
};

/// Compares with the golden picture `name`.png. A comparison that fails leaves `name`.png and, when the sizes
/// are equal, `name`-difference.png (changed pixels white) in the folder of failures. With
/// ULK_UPDATE_GOLDEN=1 in the environment the picture becomes the golden one, and the result is a success.
///
///     EXPECT_TRUE(matches_golden(target.read_pixels(), "torus-front"));
testing::AssertionResult matches_golden(const libutils::rgba_picture_t& picture, const std::string& name,
                                        const golden_folders_t& folders = {});

}  // namespace ulk_test
