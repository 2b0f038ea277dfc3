#pragma once

#include "formats/scene/block_lines.h"
#include "formats/scene/field_scanner.h"
#include "formats/scene/point_fields.h"

/// The keys for points and their colours, which both kinds of surface block share.
///
/// A block provides `color`, the colour of the points that follow; `points`, the fill of its array of points;
/// and `put_point(pos3)`, which writes entry `points.count`.
namespace ulk3d {

template <typename Block, col3a (*read)(field_scanner)>
void read_color(Block& block, std::string_view value) {
    block.color = read(field_scanner(value.data()));
}

template <typename Block, pos3 (*read)(field_scanner)>
void read_point(Block& block, std::string_view value) {
    block.put_point(read(field_scanner(value.data())));
}

template <typename Block>
constexpr auto point_keys = std::to_array<block_key_t<Block>>({
    {"color", ": color parm is not set. ", read_color<Block, read_byte_color>},
    {"fcolor", ": fcolor parm is not set. ", read_color<Block, read_float_color>},
    {"position", ": position parm is not set. ", read_point<Block, read_position>, &Block::points},
    {"circle", ": circle parm is not set. ", read_point<Block, read_circle>, &Block::points},
    {"sphere", ": sphere parm is not set. ", read_point<Block, read_sphere>, &Block::points},
});

}  // namespace ulk3d
