#include "support/pictures.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>

#include "utils/pictures/image_files.h"

namespace ulk_test {

std::string write_picture(const temporary_folder_t& folder, const std::string& name,
                          const libutils::image2d& image) {
    const std::string path = folder.path(name);
    EXPECT_TRUE(libutils::autosaveformat(image, path.c_str()));
    return path;
}

libutils::image2d plain_picture(std::uint32_t width, std::uint32_t height, const colour_t& colour) {
    libutils::image2d image;
    image.format = libutils::image_format::rgb;
    image.type = libutils::image_type::unsigned_integer;
    image.bits = libutils::image_bits::bits_8;
    image.width = width;
    image.height = height;
    EXPECT_TRUE(image.allocate());
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; ++x)
            for (std::size_t channel = 0; channel < colour.size(); ++channel)
                image.pixel(x, y)[channel] = colour[channel];
    return image;
}

void write_cube(const temporary_folder_t& folder, const std::string& base,
                const std::array<colour_t, 6>& colours) {
    for (std::size_t face = 0; face < colours.size(); ++face)
        write_picture(folder, base + cube_suffixes[face] + ".png", plain_picture(2, 2, colours[face]));
}

namespace {

/// Sets the soft limit of the process's address space, which it may always raise again, and returns the
/// former one.
std::uint64_t set_page_limit(std::uint64_t bytes) {
    rlimit limit{};
    EXPECT_EQ(getrlimit(RLIMIT_AS, &limit), 0);
    const std::uint64_t former = limit.rlim_cur;
    limit.rlim_cur = bytes;
    EXPECT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
    return former;
}

std::uint64_t bytes_in_use() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

no_more_pages_t::no_more_pages_t() : former_limit(set_page_limit(bytes_in_use())) {}

no_more_pages_t::~no_more_pages_t() {
    set_page_limit(former_limit);
}

bool no_more_pages_t::is_possible() {
#if defined(__SANITIZE_ADDRESS__)
    return false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    return false;
#else
    return true;
#endif
#else
    return true;
#endif
}

}  // namespace ulk_test
