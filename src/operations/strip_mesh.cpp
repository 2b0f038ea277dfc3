#include "operations/strip_mesh.h"

#include <algorithm>
#include <span>

#include "model/mapped_span.h"

namespace ulk3d {

namespace {

template <class Record, class Buffer>
std::vector<Record> read_records(const Buffer& buffer) {
    const mapped_span<const Record, Buffer> records(buffer);
    return {records.span().begin(), records.span().end()};
}

/// False when the buffer could not be mapped.
template <class Record, class Buffer>
bool write_records(const Buffer& buffer, const std::vector<Record>& records) {
    const mapped_span<Record, Buffer> target(buffer);
    if (target.size() != records.size())
        return false;
    std::ranges::copy(records, target.span().begin());
    return true;
}

bool has_buffers(const polygon_t& polygon) {
    return polygon.vertices.has_buffer() && polygon.normals.has_buffer() && polygon.elements.has_buffer();
}

}  // namespace

strip_mesh_t read_strip_mesh(const polygon_t& polygon) {
    strip_mesh_t mesh{read_records<vertex_t>(polygon.vertices), read_records<frame_t>(polygon.normals),
                      read_records<std::uint32_t>(polygon.elements)};
    mesh.frames.resize(mesh.vertices.size());
    const std::size_t vertex_count = mesh.vertices.size();
    std::ranges::replace_if(
        mesh.elements, [vertex_count](std::uint32_t index) { return index >= vertex_count; }, restart_mark);
    return mesh;
}

bool write_strip_mesh(polygon_t& polygon, const strip_mesh_t& mesh) {
    const auto vertex_count = static_cast<std::int64_t>(mesh.vertices.size());
    const auto element_count = static_cast<std::int64_t>(mesh.elements.size());
    // Room for all three first: an array that grew while another could not would leave the counts apart.
    const bool has_room = has_buffers(polygon) && polygon.vertices.reserve(vertex_count) &&
                          polygon.normals.reserve(vertex_count) && polygon.elements.reserve(element_count);
    if (!has_room)
        return false;
    const bool is_sized = polygon.vertices.extend(vertex_count) && polygon.normals.extend(vertex_count) &&
                          polygon.elements.extend(element_count);
    return is_sized && write_records(polygon.vertices, mesh.vertices) &&
           write_records(polygon.normals, mesh.frames) && write_records(polygon.elements, mesh.elements) &&
           polygon.extend(vertex_count, element_count);
}

}  // namespace ulk3d
