#include <array>

#include "formats/scene/block_lines.h"
#include "formats/scene/block_size.h"
#include "formats/scene/field_scanner.h"
#include "formats/scene/point_keys.h"
#include "formats/scene/scene_text.h"
#include "formats/scene/shared_keys.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"
#include "model/try_allocate.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

block_size_t size_of(std::uint64_t vertices, std::uint64_t elements) {  // of 32 bits each
    constexpr std::uint64_t vertex_lines =  // the NULs stand in for the line feeds
        sizeof "circle " + sizeof "tangent " + sizeof "binormal " + sizeof "normal ";
    constexpr std::uint64_t element_line = sizeof "element ";
    constexpr std::uint64_t vertex_bytes =
        sizeof(vertex_t) + sizeof(frame_t) + sizeof(work_frame_t) + sizeof(float);
    constexpr std::uint64_t element_bytes = 4 * sizeof(std::uint32_t);  // and three of `selectelems`

    return {.arrays = vertices * vertex_bytes + elements * element_bytes,
            .lines = vertices * vertex_lines + elements * element_line};
}

/// The arrays of a model, mapped while its block is read.
struct mapped_arrays {
    explicit mapped_arrays(polygon_t& polygon)
        : vertices(polygon.vertices), frames(polygon.normals), elements(polygon.elements) {}

    array_span<vertex_t> vertices;
    array_span<frame_t> frames;
    index_span elements;
};

struct polygon_block {
    static constexpr bool has_arrays = true;
    texture_t& texture;
    const mapped_arrays& arrays;
    col3a color = default_color;
    txc2 texcoord;
    fill_t points{.full = "polygon vertex", .name = "vertex", .too_few = "too few vertex."};
    fill_t elements{.full = "polygon element", .name = "element", .too_few = "too few element."};
    fill_t tangents{.full = "polygon tangent", .name = "tangent", .too_few = "too few tangent."};
    fill_t binormals{.full = "polygon binormal", .name = "binormal", .too_few = "too few binormal."};
    fill_t normals{.full = "polygon normal", .name = "normal", .too_few = "too few normal."};

    polygon_block(texture_t& surface_texture, const mapped_arrays& mapped)
        : texture(surface_texture), arrays(mapped) {
        points.capacity = arrays.vertices.size();
        elements.capacity = arrays.elements.size();
        tangents.capacity = binormals.capacity = normals.capacity = arrays.frames.size();
    }

    void put_point(const pos3& position) const {
        arrays.vertices[points.count] = {position, color, texcoord};
    }

    bool read_other(const text_line_t& line, line_log& log) {
        return read_shared_key(line, surface_block_t::polygon, texture, log);
    }
};

/// A mesh has no resolution, but the key is accepted.
void ignore_value(polygon_block&, std::string_view) {}

void read_texcoord(polygon_block& block, std::string_view value) {
    field_scanner fields(value.data());
    block.texcoord = {fields.expr(), fields.expr()};
}

void read_element(polygon_block& block, std::string_view value) {
    block.arrays.elements[block.elements.count] = field_scanner(value.data()).uint();
}

template <dir3 frame_t::*direction, fill_t polygon_block::*fill>
void read_frame(polygon_block& block, std::string_view value) {
    block.arrays.frames[(block.*fill).count].*direction = read_direction(field_scanner(value.data()));
}

constexpr auto read_tangent = read_frame<&frame_t::tangent, &polygon_block::tangents>;
constexpr auto read_binormal = read_frame<&frame_t::binormal, &polygon_block::binormals>;
constexpr auto read_normal = read_frame<&frame_t::normal, &polygon_block::normals>;

using key = block_key_t<polygon_block>;
constexpr std::array own_keys = {
    key{"resolution", {}, ignore_value},
    key{"texcoord", ": texcoord parm is not set. ", read_texcoord},
    key{"element", ": element parm is not set. ", read_element, &polygon_block::elements},
    key{"tangent", ": tangent parm is not set. ", read_tangent, &polygon_block::tangents},
    key{"binormal", ": binormal parm is not set. ", read_binormal, &polygon_block::binormals},
    key{"normal", ": normal parm is not set. ", read_normal, &polygon_block::normals},
};
constexpr auto polygon_keys = joined(own_keys, point_keys<polygon_block>);
static_assert(is_prefix_free(polygon_keys));

/// Allocates the arrays for the sizes in the opening line. False, without a message, when these are out of
/// all proportion to the file or do not fit into memory.
bool allocate(polygon_t& polygon, std::uint64_t vertices, std::uint64_t elements,
              std::uint64_t rest_of_file) {
    return is_within_reach(size_of(vertices, elements), rest_of_file) &&
           try_allocate([&] { return polygon.allocate(vertices, elements); });
}

/// Reads the lines of the block into the mapped arrays; true when all arrays are full.
bool fill_arrays(const mapped_arrays& arrays, texture_t& texture, text_line_t& line, text_lines& input,
                 line_log& messages) {
    polygon_block block(texture, arrays);
    const block_end_t end = read_block_lines(polygon_keys, block, line, input, messages);
    return end == block_end_t::end_line &&
           all_filled(messages, block.points, block.elements, block.tangents, block.binormals, block.normals);
}

}  // namespace

key_names_t polygon_key_names() {
    return names_of(polygon_keys);
}

bool read_polygon_surface(const char* path, texture_t& texture, polygon_t& polygon,
                          std::uint64_t& line_counter, text_line_t& line, text_lines& input,
                          std::ostream& log) {
    const std::size_t comma = line.view().find(',');
    if (comma == std::string_view::npos)
        return false;
    line_log messages(log, line_counter);
    field_scanner fields(line.text + comma + 1);
    const std::uint64_t vertex_count = fields.uint();
    const std::uint64_t element_count = fields.uint();
    if (!allocate(polygon, vertex_count, element_count, input.remaining())) {
        messages.message(": polygon allocate error.");
        return false;
    }
    {
        const mapped_arrays arrays(polygon);
        if (arrays.vertices.size() != vertex_count || arrays.frames.size() != vertex_count ||
            arrays.elements.size() != element_count) {
            messages.message(": polygon allocate error.");
            return false;
        }
        if (!fill_arrays(arrays, texture, line, input, messages))
            return false;
    }
    texture.open(path);
    if (polygon.afterload(path))
        return true;
    messages.message(": polygon allocate error.");
    return false;
}

}  // namespace ulk3d
