#include "formats/scene/scene_completeness.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "utils/files/file_descriptor.h"

namespace ulk3d {

namespace {

constexpr std::array<std::string_view, 3> openings = {"begin environment", "begin nurbs_surface",
                                                      "begin polygon_surface"};
constexpr std::size_t longest_opening = openings.back().size();

/// Follows the blocks of a file by the first bytes of its lines.
class block_follower {
  public:
    /// Takes a part of the line that is being read; `ends` with the last one.
    void put(std::string_view part, bool ends) {
        const std::string_view taken = part.substr(0, longest_opening - head_size);
        std::ranges::copy(taken, head.begin() + static_cast<std::ptrdiff_t>(head_size));
        head_size += taken.size();
        if (ends)
            end_line();
    }

    void end_line() {
        const std::string_view line(head.data(), head_size);
        if (open_block) {
            if (line.starts_with("end"))
                open_block.reset();
        } else if (std::ranges::any_of(openings,
                                       [line](std::string_view key) { return line.starts_with(key); })) {
            open_block = line_number;
        }
        head_size = 0;
        ++line_number;
    }

    std::optional<std::uint64_t> open_block;

  private:
    std::array<char, longest_opening> head{};
    std::size_t head_size = 0;
    std::uint64_t line_number = 1;
};

}  // namespace

scene_completeness_t scene_completeness(const char* path) {
    constexpr std::size_t window_size = std::size_t{256} * 1024;
    std::uint64_t size = 0;
    libutils::file_descriptor file = libutils::open_plain_file(path, size);
    std::vector<char> window(window_size);
    block_follower blocks;
    bool has_feed = true;
    while (const std::size_t got = file.is_open() ? read_some(file, window.data(), window.size()) : 0) {
        std::string_view rest(window.data(), got);
        while (!rest.empty()) {
            const std::size_t length = rest.find('\n');
            has_feed = length != std::string_view::npos;
            blocks.put(rest.substr(0, length), has_feed);
            rest.remove_prefix(has_feed ? length + 1 : rest.size());
        }
    }
    if (!has_feed)
        blocks.end_line();
    return {.open_block = blocks.open_block, .lacks_last_feed = !has_feed};
}

}  // namespace ulk3d
