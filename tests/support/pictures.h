#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "support/scene_text.h"
#include "utils/pictures/image2d.h"

/// Picture files for tests.
namespace ulk_test {

using colour_t = std::array<std::uint8_t, 3>;

/// Writes an image into the folder, in the file form of the name's extension, and returns its path. Fails the
/// test when that is impossible.
std::string write_picture(const temporary_folder_t& folder, const std::string& name,
                          const libutils::image2d& image);

/// A picture of one colour.
libutils::image2d plain_picture(std::uint32_t width, std::uint32_t height, const colour_t& colour);

/// The ends of the faces' names, before the extension, in GL's order.
inline constexpr std::array<const char*, 6> cube_suffixes{"_posx", "_negx", "_posy",
                                                          "_negy", "_posz", "_negz"};

/// Writes six faces of two by two pixels, each of one colour, as <base>_posx.png and so on.
void write_cube(const temporary_folder_t& folder, const std::string& base,
                const std::array<colour_t, 6>& colours);

/// During its lifetime the process gets no more memory pages. Keep it to the call that is to fail.
class no_more_pages_t {
  public:
    no_more_pages_t();
    ~no_more_pages_t();
    no_more_pages_t(const no_more_pages_t&) = delete;
    no_more_pages_t& operator=(const no_more_pages_t&) = delete;

    /// False in builds whose instrumentation may need pages at any time.
    static bool is_possible();

  private:
    std::uint64_t former_limit;
};

}  // namespace ulk_test
