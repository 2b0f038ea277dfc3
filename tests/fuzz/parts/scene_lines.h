#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The text of a scene file as lines and blocks, for mutations that keep most of it readable.
namespace ulk_test {

using scene_lines_t = std::vector<std::string>;

/// The lines without their line feeds. Text behind the last line feed is a line, too.
scene_lines_t lines_of(std::string_view text);
/// The text of as many whole lines, from the first one, as fit into a number of bytes.
std::string text_of(const scene_lines_t& lines, std::size_t most_bytes);

/// The lines of a block: its opening line, its end line, which may be missing at the end of the text, and
/// what is between.
struct line_block_t {
    std::size_t first = 0;
    std::size_t behind = 0;  ///< index behind the last line
    std::size_t size() const { return behind - first; }
};

/// The blocks in the order of the text. A block that is opened inside another ends that one.
std::vector<line_block_t> blocks_of(const scene_lines_t& lines);

bool opens_mesh(std::string_view line);
bool opens_net(std::string_view line);

/// The number of lines by which a block can grow to have what its opening line announces.
inline constexpr std::size_t most_lines_added = 256;

/// Takes away and adds lines of a mesh or net, so that it has as many of each kind as its opening line
/// announces; lines are added behind the last one of their kind, as its copies. A block that would have to
/// grow by more than `most_lines_added` stays as it is, and so does one that is no mesh or net.
void fit_lines_to_counts(scene_lines_t& lines, const line_block_t& block);

/// Announces in the opening line of a mesh what the block holds.
void fit_counts_to_lines(scene_lines_t& lines, const line_block_t& block);

}  // namespace ulk_test
