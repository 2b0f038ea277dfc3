#include "support/golden.h"

#include <algorithm>
#include <cstdlib>

#include "utils/codecs/png_file.h"

namespace ulk_test {

using libutils::rgba_picture_t;

namespace {

bool differs(const rgba_picture_t::pixel_t& a, const rgba_picture_t::pixel_t& b) {
    for (std::size_t channel = 0; channel < a.size(); ++channel)
        if (std::abs(a[channel] - b[channel]) > picture_difference_t::channel_tolerance)
            return true;
    return false;
}

bool is_update_wanted() {
    const char* const value = std::getenv("ULK_UPDATE_GOLDEN");
    return value != nullptr && std::string(value) == "1";
}

bool write_into(const std::filesystem::path& folder, const std::string& file, const rgba_picture_t& picture) {
    std::error_code ignored;  // if the folder can not be made, the write fails
    std::filesystem::create_directories(folder, ignored);
    return libutils::write_png((folder / file).c_str(), picture);
}

rgba_picture_t difference_picture(const rgba_picture_t& a, const rgba_picture_t& b) {
    rgba_picture_t result{a.width, a.height, {}};
    result.pixels.resize(a.pixels.size());
    std::transform(a.pixels.begin(), a.pixels.end(), b.pixels.begin(), result.pixels.begin(),
                   [](const auto& one, const auto& other) {
                       return differs(one, other) ? rgba_picture_t::pixel_t{255, 255, 255, 255}
                                                  : rgba_picture_t::pixel_t{0, 0, 0, 255};
                   });
    return result;
}

testing::AssertionResult leave_failure(const rgba_picture_t& picture, const std::string& name,
                                       const golden_folders_t& folders) {
    testing::AssertionResult failure = testing::AssertionFailure();
    if (write_into(folders.failures, name + ".png", picture))
        return failure << "see " << (folders.failures / (name + ".png")).string() << ": ";
    return failure << "(the picture could not be written to " << folders.failures.string() << ") ";
}

}  // namespace

picture_difference_t compare_pictures(const rgba_picture_t& picture, const rgba_picture_t& golden) {
    picture_difference_t result;
    const auto counts = [&](int x, int y) { return differs(picture.at(x, y), golden.at(x, y)); };
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (!counts(x, y))
                continue;
            ++result.pixels;
            if (!result.has_block && x + 1 < picture.width && y + 1 < picture.height && counts(x + 1, y) &&
                counts(x, y + 1) && counts(x + 1, y + 1)) {
                result.has_block = true;
                result.block_x = x;
                result.block_y = y;
            }
        }
    }
    return result;
}

testing::AssertionResult matches_golden(const rgba_picture_t& picture, const std::string& name,
                                        const golden_folders_t& folders) {
    const std::string file = name + ".png";
    if (is_update_wanted()) {
        if (write_into(folders.golden, file, picture))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "can not write " << (folders.golden / file).string();
    }

    rgba_picture_t golden;
    if (!libutils::read_png((folders.golden / file).c_str(), golden))
        return leave_failure(picture, name, folders)
               << "no golden picture; ULK_UPDATE_GOLDEN=1 makes it after a look at this one";
    if (picture.width != golden.width || picture.height != golden.height)
        return leave_failure(picture, name, folders)
               << "size " << picture.width << "x" << picture.height << ", golden size " << golden.width << "x"
               << golden.height;

    const picture_difference_t difference = compare_pictures(picture, golden);
    if (difference.is_tolerable(picture.pixels.size()))
        return testing::AssertionSuccess();
    testing::AssertionResult failure = leave_failure(picture, name, folders);
    write_into(folders.failures, name + "-difference.png", difference_picture(picture, golden));
    failure << difference.pixels << " pixels differ";
    if (difference.has_block)
        failure << ", a block of them at " << difference.block_x << ", " << difference.block_y;
    return failure;
}

}  // namespace ulk_test
