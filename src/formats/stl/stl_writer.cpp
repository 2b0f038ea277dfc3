#include "formats/stl/stl_writer.h"

#include <array>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "formats/scene/text_output.h"
#include "formats/stl/stl_layout.h"
#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"
#include "utils/files/byte_output.h"
#include "utils/text/numbers.h"

namespace ulk3d {

using libutils::byte_output;

namespace {

/// The unit normal of a triangle; the zero vector for a degenerate one.
dir3 unit_normal(const pos3& a, const pos3& b, const pos3& c) {
    const dir3 normal = triangle_normal(a, b, c);
    const float size = length(normal);
    return size == 0 ? dir3{} : normal * (1 / size);
}

/// Calls `visit(const stl::triangle_t&)` for each triangle of a mesh, in the order of the strips. Marks the
/// output as failed when an array can not be mapped, as triangles would be missing.
template <typename Output, typename Visit>
void visit_triangles(const polygon_t& polygon, Output& output, Visit&& visit) {
    const array_span<const vertex_t> vertices(*polygon.array(0));
    const const_index_span elements(*polygon.elementarray());
    if (vertices.size() != polygon.vertex_count() || elements.size() != polygon.element_count())
        output.fail();
    walk_strips(elements.span(), vertices.size(), [&](const strip_triangle_t& corners) {
        const pos3& a = vertices[corners.a].position;
        const pos3& b = vertices[corners.b].position;
        const pos3& c = vertices[corners.c].position;
        visit(stl::triangle_t{unit_normal(a, b, c), a, b, c});
    });
}

/// Writes the path, truncated or padded with zero bytes to the size of the header.
void write_header(const char* path, byte_output& output) {
    char* const header = output.append(stl::header_size);
    std::memset(header, 0, stl::header_size);
    std::memcpy(header, path, strnlen(path, stl::header_size));
}

/// The number of triangles in the strips of a mesh; nothing when they can not be mapped.
std::optional<stl::count_t> count_triangles(const polygon_t& polygon) {
    if (polygon.element_count() == 0)
        return 0;
    const const_index_span elements(*polygon.elementarray());
    if (elements.size() != polygon.element_count())
        return std::nullopt;
    stl::count_t count = 0;
    walk_strips(elements.span(), polygon.vertex_count(), [&](const strip_triangle_t&) { ++count; });
    return count;
}

/// Writes a whole file. The triangles are counted first, so that the file has its count at every moment.
bool save_binary(const char* path, std::span<const polygon_t* const> polygons) {
    byte_output output(path, libutils::fifo_t::needs_reader);
    if (!output.is_open())
        return false;
    stl::count_t total = 0;
    for (const polygon_t* const polygon : polygons) {
        const auto count = count_triangles(*polygon);
        if (!count)
            output.fail();
        total += count.value_or(0);
    }
    write_header(path, output);
    std::memcpy(output.append(sizeof total), &total, sizeof total);
    for (const polygon_t* const polygon : polygons)
        write_stl_triangles(output, *polygon);
    return output.complete();
}

std::string numbers(float x, float y, float z) {
    std::string text;
    libutils::append_scientific(text, x);
    text += ' ';
    libutils::append_scientific(text, y);
    text += ' ';
    libutils::append_scientific(text, z);
    return text;
}

void write_ascii_triangle(const stl::triangle_t& triangle, text_output& output) {
    output.line("facet normal ", numbers(triangle.normal.x, triangle.normal.y, triangle.normal.z));
    output.line("  outer loop");
    for (const pos3& corner : {triangle.a, triangle.b, triangle.c})
        output.line("    vertex ", numbers(corner.x, corner.y, corner.z));
    output.line("  endloop");
    output.line("endfacet");
}

}  // namespace

dir3 triangle_normal(const pos3& a, const pos3& b, const pos3& c) {
    return face_normal(a, b, c);
}

std::uint32_t write_stl_triangles(byte_output& output, const polygon_t& polygon) {
    stl::count_t count = 0;
    visit_triangles(polygon, output, [&](const stl::triangle_t& triangle) {
        char* const record = output.append(stl::record_size);
        std::memcpy(record, &triangle, sizeof triangle);
        std::memset(record + sizeof triangle, 0, stl::attribute_size);
        ++count;
    });
    return count;
}

bool save_stl_model(const char* path, const model_entry_t& entry) {
    return save_binary(path, std::array{&entry.polygon});
}

bool save_stl_models(const char* path, const model_list_t& models) {
    std::vector<const polygon_t*> polygons;
    for (const auto& entry : models)
        polygons.push_back(&entry->polygon);
    return save_binary(path, polygons);
}

bool save_stl_ascii(const char* path, const model_list_t& models) {
    text_output output(path);
    output.line("solid ", std::string_view(path));
    for (const auto& entry : models) {
        visit_triangles(entry->polygon, output,
                        [&](const stl::triangle_t& triangle) { write_ascii_triangle(triangle, output); });
    }
    // The name is not repeated, but the space before it is kept.
    output.line("endsolid ");
    return output.complete();
}

}  // namespace ulk3d
