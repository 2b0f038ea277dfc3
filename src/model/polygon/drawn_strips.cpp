#include "model/polygon/drawn_strips.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

constexpr std::size_t elements_per_triangle = 4;  // three corners and a restart mark

/// The number of triangles in a list of strips of one triangle each; the last mark may be missing. 0 when it
/// is another list.
std::size_t single_triangles(std::span<const std::uint32_t> indices) {
    const std::size_t rest = indices.size() % elements_per_triangle;
    return rest == 0 || rest == 3 ? (indices.size() + 1) / elements_per_triangle : 0;
}

/// The vertices that such a list goes through when its corners are all of them in order; 0 when they are not.
std::size_t vertices_in_order(std::span<const std::uint32_t> indices, std::uint64_t vertex_count) {
    const std::size_t corners = 3 * single_triangles(indices);
    if (corners > vertex_count)
        return 0;
    for (std::size_t i = 0; i < indices.size() && corners > 0; ++i) {
        const std::size_t triangle = i / elements_per_triangle, corner = i % elements_per_triangle;
        if (indices[i] != (corner == 3 ? restart_mark : 3 * triangle + corner))
            return 0;
    }
    return corners;
}

/// True when an index is at or above the vertex count but not the restart mark, which GL handles itself.
bool has_foreign_index(std::span<const std::uint32_t> indices, std::uint64_t vertex_count) {
    // There is no early exit: without one the compiler examines many indices at once.
    bool found = false;
    for (const std::uint32_t index : indices)
        found |= (index >= vertex_count) & (index != restart_mark);
    return found;
}

}  // namespace

bool drawn_strips_t::examine(const element_array_t& elements, std::uint64_t vertex_count) {
    const state_t state{elements.writes(), vertex_count,
                        static_cast<std::uint64_t>(elements.element_count())};
    if (examined == state)
        return true;
    const const_index_span strips(elements);
    if (!strips && elements.bytes_in_use() > 0)
        return false;
    ordered_vertices = static_cast<std::int64_t>(vertices_in_order(strips.span(), vertex_count));
    form = ordered_vertices > 0                             ? form_t::without_indices
           : has_foreign_index(strips.span(), vertex_count) ? form_t::cleaned
                                                            : form_t::as_they_are;
    if (form != form_t::cleaned) {
        clean.release();
    } else if (clean.allocate(elements.element_count())) {
        const index_span marked(clean, first_words_t::overwritten);
        if (!marked)
            return false;
        std::ranges::transform(
            strips.span().first(std::min(strips.size(), marked.size())), marked.span().begin(),
            [=](std::uint32_t index) { return index < vertex_count ? index : restart_mark; });
    }
    examined = state;
    return true;
}

void drawn_strips_t::draw(const element_array_t& elements, std::uint64_t vertex_count,
                          const vertex_array_ref& vertex_array) {
    if (!elements.has_buffer() || !examine(elements, vertex_count))
        return;
    switch (form) {
        case form_t::as_they_are:
            elements.draw(vertex_array, GL_TRIANGLE_STRIP);
            break;
        case form_t::cleaned:
            clean.draw(vertex_array, GL_TRIANGLE_STRIP);
            break;
        case form_t::without_indices:
            // A vertex array that lacks a store has printed its lines; the mesh is not drawn then.
            static_cast<void>(ulk3d::draw(vertex_array, GL_TRIANGLES, ordered_vertices));
            break;
    }
}

void drawn_strips_t::release() {
    clean.release();
    form = form_t::as_they_are;
    examined = {};
}

}  // namespace ulk3d
