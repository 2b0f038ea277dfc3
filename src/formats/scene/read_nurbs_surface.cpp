#include <array>
#include <cassert>

#include "formats/scene/block_lines.h"
#include "formats/scene/block_size.h"
#include "formats/scene/field_scanner.h"
#include "formats/scene/point_keys.h"
#include "formats/scene/scene_text.h"
#include "formats/scene/shared_keys.h"
#include "model/nurbs/nurbs.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"
#include "model/try_allocate.h"
#include "render/models/glpolygon.h"

namespace ulk3d {

using libutils::size_product;
using libutils::size_sum;

namespace {

struct opening_t {
    std::uint64_t count1, order1, count2, order2;  // of 32 bits each
};

/// The cost of a basis function grows with the square of its order, and no real surface has an order beyond
/// this.
constexpr std::uint64_t highest_order = 1024;

block_size_t size_of(const opening_t& opening) {
    constexpr std::uint64_t knot_line = sizeof "knot1 ";  // the NUL stands in for the line feed
    constexpr std::uint64_t weight_line = sizeof "weight ";
    constexpr std::uint64_t point_line = sizeof "circle ";
    constexpr std::uint64_t point_bytes = 2 * sizeof(control_point_t) + 2 * sizeof(float);

    const auto [count1, order1, count2, order2] = opening;
    const std::uint64_t points = count1 * count2;
    const std::uint64_t knots =
        size_sum(size_product(count1 + order1, count2), size_product(count2 + order2, count1));
    // A net without points still has rows or columns to walk.
    const std::uint64_t walks = points == 0 ? count1 + count2 : 0;
    const auto sum_of = [&](std::uint64_t per_knot, std::uint64_t per_point) {
        return size_sum(walks, size_sum(size_product(knots, per_knot), size_product(points, per_point)));
    };
    return {.arrays = sum_of(sizeof(float), point_bytes),
            .lines = sum_of(knot_line, weight_line + point_line)};
}

struct nurbs_block {
    static constexpr bool has_arrays = true;
    nurbs_t& nurbs;
    texture_t& texture;
    col3a color = default_color;
    fill_t knots1{.full = "nurbs knots1", .name = "knot1", .too_few = "too few knots."};
    fill_t knots2{.full = "nurbs knots2", .name = "knot2", .too_few = "too few knots."};
    fill_t weights{.full = "nurbs weights", .name = "weight", .too_few = "too few weights."};
    fill_t points{.full = "nurbs points", .name = "point", .too_few = "too few points."};

    nurbs_block(nurbs_t& surface, texture_t& surface_texture) : nurbs(surface), texture(surface_texture) {
        knots1.capacity = nurbs.knot1.data.size();
        knots2.capacity = nurbs.knot2.data.size();
        weights.capacity = nurbs.weight.data.size();
        points.capacity = nurbs.points.data.size();
    }

    void put_point(const pos3& position) const { nurbs.points.data[points.count] = {position, color}; }

    bool read_other(const text_line_t& line, line_log& log) {
        return read_shared_key(line, surface_block_t::nurbs, texture, log);
    }
};

void read_resolution(nurbs_block& block, std::string_view value) {
    field_scanner fields(value.data());
    block.nurbs.resolution1 = fields.uint();
    block.nurbs.resolution2 = fields.uint();
}

template <matrix_t<float> nurbs_t::*table, fill_t nurbs_block::*fill>
void read_entry(nurbs_block& block, std::string_view value) {
    (block.nurbs.*table).data[(block.*fill).count] = field_scanner(value.data()).dbl();
}

constexpr auto read_knot1 = read_entry<&nurbs_t::knot1, &nurbs_block::knots1>;
constexpr auto read_knot2 = read_entry<&nurbs_t::knot2, &nurbs_block::knots2>;
constexpr auto read_weight = read_entry<&nurbs_t::weight, &nurbs_block::weights>;

using key = block_key_t<nurbs_block>;
constexpr std::array own_keys = {
    key{"resolution", ": resolution parm is not set. ", read_resolution},
    key{"knot1", ": knot1 parm is not set. ", read_knot1, &nurbs_block::knots1},
    key{"knot2", ": knot2 parm is not set. ", read_knot2, &nurbs_block::knots2},
    key{"weight", ": weight parm is not set. ", read_weight, &nurbs_block::weights},
};
constexpr auto nurbs_keys = joined(own_keys, point_keys<nurbs_block>);
static_assert(is_prefix_free(nurbs_keys));

/// Allocates the tables for the sizes in the opening line. False, without a message, when these are out of
/// all proportion to the file or do not fit into memory.
bool allocate(nurbs_t& nurbs, const opening_t& opening, std::uint64_t rest_of_file) {
    if (opening.order1 > highest_order || opening.order2 > highest_order ||
        !is_within_reach(size_of(opening), rest_of_file))
        return false;
    return try_allocate(
        [&] { return nurbs.allocate(opening.count1, opening.order1, opening.count2, opening.order2); });
}

/// Builds the drawn surface from the tables.
bool build_surface(const char* path, nurbs_t& nurbs, glpolygon_t& glpolygon) {
    return nurbs.afterload(path) && nurbs.rebuild({.sizes = true, .points = true}, glpolygon);
}

}  // namespace

key_names_t nurbs_key_names() {
    return names_of(nurbs_keys);
}

bool read_nurbs_surface(const char* path, nurbs_t& nurbs, texture_t& texture,
                        [[maybe_unused]] polygon_t& polygon, glpolygon_t& glpolygon,
                        std::uint64_t& line_counter, text_line_t& line, text_lines& input,
                        std::ostream& log) {
    assert(nurbs.polygon == &polygon && "a surface is built into the mesh that it is wired to");
    const std::size_t comma = line.view().find(',');
    if (comma == std::string_view::npos)
        return false;
    line_log messages(log, line_counter);
    field_scanner fields(line.text + comma + 1);
    const opening_t opening{fields.uint(), fields.uint(), fields.uint(), fields.uint()};

    nurbs.clear();
    if (!allocate(nurbs, opening, input.remaining())) {
        messages.message(": nurbs allocate error.");
        return false;
    }
    nurbs_block block(nurbs, texture);
    const block_end_t end = read_block_lines(nurbs_keys, block, line, input, messages);
    if (end == block_end_t::over_run || input.met_overlong_line())
        return false;
    const bool complete = end == block_end_t::end_of_file ||
                          all_filled(messages, block.knots1, block.knots2, block.weights, block.points);
    if (!build_surface(path, nurbs, glpolygon)) {
        put_line(log, "nurbs.makeVertices() error.");
        return false;
    }
    return complete;
}

}  // namespace ulk3d
