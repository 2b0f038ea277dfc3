#include <algorithm>
#include <array>
#include <iostream>
#include <optional>
#include <string>
#include <utility>

#include "model/math/vectors.h"
#include "model/polygon/polygon.h"
#include "model/polygon/strip_walk.h"
#include "model/polygon/unset_frames.h"
#include "render/gl/mapped_span.h"

/// Numbering and selection of polygons, and default frames.
namespace ulk3d {

namespace {

using three_indices = std::array<std::uint32_t, 3>;
constexpr three_indices no_triangle{restart_mark, restart_mark, restart_mark};

/// Gives a triangle's frame to its three vertices when the last of them has none.
void supply_frame(const strip_triangle_t& triangle, std::span<const vertex_t> vertices,
                  std::span<frame_t> frames) {
    if (frames[triangle.c].normal != dir3{})
        return;
    frames[triangle.a] = frames[triangle.b] = frames[triangle.c] = triangle_frame(
        vertices[triangle.a].position, vertices[triangle.b].position, vertices[triangle.c].position);
}

/// Writes the three indices of a polygon id; ids beyond the list are skipped.
void write_triangle(std::span<std::uint32_t> selected, std::uint64_t id, const three_indices& indices) {
    if (id < selected.size() / 3)
        std::ranges::copy(indices, selected.begin() + static_cast<std::ptrdiff_t>(3 * id));
}

/// The triangle at a place in the strips; restart marks when there is no longer a triangle.
three_indices triangle_at(const polygon_place_t& place, std::span<const std::uint32_t> strips,
                          std::uint64_t vertex_count) {
    if (std::uint64_t{place.position} + 2 >= strips.size())
        return no_triangle;
    const auto corners = strips.subspan(place.position, 3);
    if (std::ranges::any_of(corners, [vertex_count](std::uint32_t index) { return index >= vertex_count; }))
        return no_triangle;
    if (place.flipped)
        return {corners[1], corners[0], corners[2]};
    return {corners[0], corners[1], corners[2]};
}

/// True when an id has no record, after printing a line. Both callers print the same words.
bool is_beyond(std::uint64_t polyid, std::size_t size) {
    if (polyid < size)
        return false;
    std::cerr << "polygon_t::selectpolygon() polyid(" << std::to_string(polyid) << ") >= polyidvector.size("
              << std::to_string(size) << ")" << std::endl;
    return true;
}

}  // namespace

/// As many polygon ids as there would be if there were no restart marks.
std::size_t polygon_t::id_count() const {
    return element_count() < 3 ? 0 : element_count() - 2;
}

bool polygon_t::afterload(const char* new_name) {
    if (new_name != nullptr)
        name = new_name;
    if (element_count() < 3) {
        if (selectelems.bytes_in_use() > 0 && !selectelems.fill(0, restart_mark))
            return false;
        polyidvector.clear();
        return true;
    }

    polygon_places_t places(id_count());
    const array_span<const vertex_t> corners(vertices);
    const array_span<frame_t> frames(normals);
    const const_index_span strips(elements);
    const bool has_vertices = vertex_count() > 0;
    if (!strips || static_cast<bool>(corners) != has_vertices || static_cast<bool>(frames) != has_vertices)
        return false;
    // Triangles that are not selected, and places that have no triangle, keep the restart mark. As long as
    // nothing is selected this needs no store.
    std::optional<index_span> selected;
    if (selected_ids.empty() ? !selectelems.fill(0, restart_mark) : !selected.emplace(selectelems))
        return false;
    const std::span<const vertex_t> positions = corners.span();
    const std::span<frame_t> normal_frames = frames.span();
    const std::span<std::uint32_t> selected_indices =
        selected ? selected->span() : std::span<std::uint32_t>();
    std::ranges::fill(selected_indices, restart_mark);
    const std::size_t reachable = std::min(positions.size(), normal_frames.size());

    auto next_selected = selected_ids.begin();
    walk_strips(strips.span(), reachable, [&](const strip_triangle_t& triangle) {
        // Both the set and the ids ascend, so one step in the set suffices for each selected triangle.
        if (next_selected != selected_ids.end() && *next_selected == triangle.id) {
            write_triangle(selected_indices, triangle.id, {triangle.a, triangle.b, triangle.c});
            ++next_selected;
        }
        places.number({triangle.position, triangle.flipped});
        supply_frame(triangle, positions, normal_frames);
    });
    std::swap(polyidvector, places);
    return true;
}

void polygon_t::selectpolygon(std::uint64_t polyid) {
    const auto id = static_cast<std::uint32_t>(polyid);
    if (is_beyond(polyid, polyidvector.size()) || polyidvector[polyid].position == restart_mark) {
        selected_ids.insert(id);
        return;
    }
    const const_index_span strips(elements);
    const index_span selected(selectelems);
    if (!strips || !selected)
        return;
    selected_ids.insert(id);
    write_triangle(selected.span(), polyid, triangle_at(polyidvector[polyid], strips.span(), vertex_count()));
}

void polygon_t::unselectpolygon(std::uint64_t polyid) {
    selected_ids.erase(static_cast<std::uint32_t>(polyid));
    if (is_beyond(polyid, polyidvector.size()))
        return;
    const index_span selected(selectelems);
    write_triangle(selected.span(), polyid, no_triangle);
}

void polygon_t::clearpolygons() {
    selected_ids.clear();
    if (!selectelems.has_buffer())
        return;
    static_cast<void>(selectelems.fill(0, restart_mark));  // prints its own failure
}

}  // namespace ulk3d
