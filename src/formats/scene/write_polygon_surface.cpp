#include <span>

#include "formats/scene/color_writer.h"
#include "formats/scene/point_fields.h"
#include "formats/scene/scene_text.h"
#include "model/polygon/polygon.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

void write_vertices(std::span<const vertex_t> vertices, text_output& output) {
    color_writer colors;
    for (const vertex_t& vertex : vertices) {
        colors.write(vertex.color, output);
        output.line("texcoord ", vertex.texcoord.s, ',', vertex.texcoord.t);
        write_position(vertex.position, output);
    }
}

void write_elements(std::span<const std::uint32_t> elements, text_output& output) {
    for (const std::uint32_t element : elements) {
        if (element == restart_mark)
            output.line("element -1");
        else
            output.line("element ", element);
    }
}

void write_direction(std::string_view key, const dir3& direction, text_output& output) {
    output.line(key, direction.x, ',', direction.y, ',', direction.z);
}

void write_frames(std::span<const frame_t> frames, text_output& output) {
    for (const frame_t& frame : frames) {
        write_direction("tangent ", frame.tangent, output);
        write_direction("binormal ", frame.binormal, output);
        write_direction("normal ", frame.normal, output);
    }
}

}  // namespace

bool write_polygon_surface(const texture_t& texture, const polygon_t& polygon, text_output& output) {
    const std::uint64_t vertex_count = polygon.vertex_count();
    const std::uint64_t element_count = polygon.element_count();
    if (vertex_count == 0)
        return false;
    output.line("begin polygon_surface,", vertex_count, ',', element_count);
    if (!write_texture_keys(texture, output))
        return false;

    const array_span<const vertex_t> vertices(polygon.vertices);
    const const_index_span elements(polygon.elements);
    const array_span<const frame_t> frames(polygon.normals);
    // With an array that can not be mapped the block would announce more than it contains.
    if (vertices.size() != vertex_count || elements.size() != element_count || frames.size() != vertex_count)
        output.fail();
    write_vertices(vertices.span(), output);
    write_elements(elements.span(), output);
    write_frames(frames.span(), output);
    output.line("end");
    return false;
}

}  // namespace ulk3d
