#include "formats/stl/stl_reader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <span>

#include "formats/scene/point_fields.h"
#include "formats/stl/stl_layout.h"
#include "model/math/vectors.h"
#include "model/try_allocate.h"
#include "render/gl/mapped_span.h"
#include "utils/files/file_descriptor.h"
#include "utils/memory/memory_budget.h"

namespace ulk3d {

using libutils::file_descriptor;

namespace {

/// A strip of one triangle and its restart mark.
constexpr std::uint64_t elements_per_triangle = 4;

/// Reads `size` bytes, or fewer when the file ends. Returns the number of bytes read.
std::size_t read_block(file_descriptor& file, char* target, std::size_t size) {
    std::size_t total = 0;
    while (total < size) {
        const std::size_t got = read_some(file, target + total, size - total);
        if (got == 0)
            break;
        total += got;
    }
    return total;
}

/// The number of triangles whose corners lie within `bytes` bytes; the last one may lack its attribute.
std::uint64_t whole_triangles(std::uint64_t bytes) {
    return (bytes + stl::attribute_size) / stl::record_size;
}

/// Reads the header and the count. Returns the number of triangles that are both announced and present.
std::uint64_t count_triangles(file_descriptor& file, std::uint64_t file_size) {
    char prologue[stl::prologue_size];
    if (read_block(file, prologue, sizeof prologue) < sizeof prologue || file_size < sizeof prologue)
        return 0;
    stl::count_t announced = 0;
    std::memcpy(&announced, prologue + stl::header_size, sizeof announced);
    return std::min<std::uint64_t>(announced, whole_triangles(file_size - sizeof prologue));
}

bool allocate(polygon_t& polygon, std::uint64_t triangle_count) {
    return try_allocate(
        [&] { return polygon.allocate(3 * triangle_count, elements_per_triangle * triangle_count); });
}

/// The frame of a triangle, computed from its winding; the file's normal is ignored.
frame_t flat_frame(const pos3& a, const pos3& b, const pos3& c) {
    const dir3 along_first = normalize(b - a);
    const dir3 tangent = normalize(c - a);
    const dir3 normal = normalize(cross(along_first, tangent));
    return {tangent, cross(tangent, normal), normal};
}

/// The arrays of a mesh that is being read.
struct triangle_soup {
    std::span<vertex_t> vertices;
    std::span<frame_t> frames;
    std::span<std::uint32_t> elements;

    bool holds(std::uint64_t triangle_count) const {
        return vertices.size() == 3 * triangle_count && frames.size() == 3 * triangle_count &&
               elements.size() == elements_per_triangle * triangle_count;
    }

    void put(std::uint64_t index, const stl::triangle_t& triangle) const {
        const std::uint64_t first = 3 * index;
        vertices[first] = {triangle.a, default_color, {}};
        vertices[first + 1] = {triangle.b, default_color, {}};
        vertices[first + 2] = {triangle.c, default_color, {}};
        std::ranges::fill(frames.subspan(first, 3), flat_frame(triangle.a, triangle.b, triangle.c));
        const auto vertex = static_cast<std::uint32_t>(first);
        const std::array strip = {vertex, vertex + 1, vertex + 2, restart_mark};
        std::ranges::copy(strip, elements.subspan(elements_per_triangle * index, strip.size()).begin());
    }
};

/// The triangles from `first` on are not there: zero vertices and restart marks, as they were allocated.
void clear_rest(const triangle_soup& soup, std::uint64_t first) {
    std::ranges::fill(soup.vertices.subspan(3 * first), vertex_t{});
    std::ranges::fill(soup.frames.subspan(3 * first), frame_t{});
    std::ranges::fill(soup.elements.subspan(elements_per_triangle * first), restart_mark);
}

/// Fills the arrays from the file's current position, also if the file has become shorter in the meantime.
void read_triangles(file_descriptor& file, std::uint64_t triangle_count, const triangle_soup& soup) {
    constexpr std::uint64_t most_at_once = 4096;
    const std::uint64_t block_triangles = std::min(triangle_count, most_at_once);
    const auto block = std::make_unique_for_overwrite<char[]>(block_triangles * stl::record_size);
    std::uint64_t filled = 0;
    while (filled < triangle_count) {
        const std::uint64_t wanted = std::min(triangle_count - filled, most_at_once);
        const std::uint64_t there = whole_triangles(read_block(file, block.get(), wanted * stl::record_size));
        for (std::uint64_t i = 0; i < there; ++i) {
            stl::triangle_t triangle;
            std::memcpy(&triangle, block.get() + i * stl::record_size, sizeof triangle);
            soup.put(filled + i, triangle);
        }
        filled += there;
        if (there < wanted)
            break;
    }
    clear_rest(soup, filled);
}

/// Reads the triangles into the buffers of a mesh that was allocated for them. False when the buffers can not
/// be mapped, or the file can not be read.
bool fill(polygon_t& polygon, file_descriptor& file, std::uint64_t triangle_count) {
    const array_span<vertex_t> vertices(polygon.vertices, first_words_t::overwritten);
    const array_span<frame_t> frames(polygon.normals, first_words_t::overwritten);
    const index_span elements(polygon.elements, first_words_t::overwritten);
    const triangle_soup soup{vertices.span(), frames.span(), elements.span()};
    if (!soup.holds(triangle_count))
        return false;
    read_triangles(file, triangle_count, soup);
    return !file.has_read_error();
}

}  // namespace

bool load_stl(const char* path, scene_t& scene) {
    const libutils::load_budget_t budget;
    std::uint64_t file_size = 0;
    file_descriptor file = libutils::open_plain_file(path, file_size);
    if (!file.is_open())
        return false;
    const std::uint64_t triangle_count = count_triangles(file, file_size);
    if (file.has_read_error())
        return false;
    model_entry_t& entry = *scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    if (!allocate(entry.polygon, triangle_count) || !fill(entry.polygon, file, triangle_count))
        return false;
    entry.texture.open(path);
    return entry.polygon.afterload(path);
}

}  // namespace ulk3d
