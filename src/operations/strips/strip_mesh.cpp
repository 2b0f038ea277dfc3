#include "operations/strips/strip_mesh.h"

#include <algorithm>
#include <span>

#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

/// With room behind the records: an operation that adds a few would otherwise copy them all. False when the
/// buffer could not be mapped.
template <class Record, class Buffer>
bool read_records(std::vector<Record>& copies, const Buffer& buffer) {
    const mapped_span<const Record, Buffer> records(buffer);
    copies.reserve(records.size() + records.size() / 16);
    copies.assign(records.span().begin(), records.span().end());
    return static_cast<bool>(records) || buffer.bytes_in_use() == 0;
}

/// False when the buffer could not be mapped.
template <class Record, class Buffer>
bool write_records(Buffer& buffer, const std::vector<Record>& records) {
    const mapped_span<Record, Buffer> target(buffer);
    if (target.size() != records.size())
        return false;
    std::ranges::copy(records, target.span().begin());
    return true;
}

}  // namespace

std::optional<strip_mesh_t> read_strip_mesh(const array_t& vertices, const array_t& normals,
                                            const element_array_t& elements) {
    std::optional<strip_mesh_t> read(std::in_place);
    strip_mesh_t& mesh = *read;
    if (!read_records(mesh.vertices, vertices) || !read_records(mesh.frames, normals) ||
        !read_records(mesh.elements, elements))
        return std::nullopt;
    mesh.frames.resize(mesh.vertices.size());
    const std::size_t vertex_count = mesh.vertices.size();
    std::ranges::replace_if(
        mesh.elements, [vertex_count](std::uint32_t index) { return index >= vertex_count; }, restart_mark);
    return read;
}

std::optional<strip_mesh_t> read_strip_mesh(const polygon_t& polygon) {
    return read_strip_mesh(polygon.vertices, polygon.normals, polygon.elements);
}

bool write_strip_mesh(const strip_mesh_t& mesh, array_t& vertices, array_t& normals,
                      element_array_t& elements) {
    const auto vertex_count = static_cast<std::int64_t>(mesh.vertices.size());
    const auto element_count = static_cast<std::int64_t>(mesh.elements.size());
    // Room for all three is made first: if one array grew while another could not, the counts would no longer
    // match.
    const bool has_room = vertices.has_buffer() && normals.has_buffer() && elements.has_buffer() &&
                          vertices.reserve(vertex_count) && normals.reserve(vertex_count) &&
                          elements.reserve(element_count);
    if (!has_room)
        return false;
    const bool is_sized =
        vertices.extend(vertex_count) && normals.extend(vertex_count) && elements.extend(element_count);
    return is_sized && write_records(vertices, mesh.vertices) && write_records(normals, mesh.frames) &&
           write_records(elements, mesh.elements);
}

bool write_strip_mesh(polygon_t& polygon, const strip_mesh_t& mesh) {
    return write_strip_mesh(mesh, polygon.vertices, polygon.normals, polygon.elements) &&
           polygon.extend(static_cast<std::int64_t>(mesh.vertices.size()),
                          static_cast<std::int64_t>(mesh.elements.size()));
}

}  // namespace ulk3d
