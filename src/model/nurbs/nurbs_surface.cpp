#include <algorithm>
#include <cstring>
#include <iostream>
#include <limits>
#include <span>
#include <vector>

#include "gltextures/gr_check_error.h"
#include "model/nurbs/nurbs.h"
#include "model/nurbs/nurbs_grid.h"
#include "model/nurbs/nurbs_normals.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"
#include "render/gl/mapped_span.h"
#include "utils/memory/memory_budget.h"

/// Makes the mesh as which the surface of a net is drawn.
namespace ulk3d {

using libgr::grCheckError;
using libutils::size_product;

namespace {

/// The number of strip indices: one strip and its restart mark for each pair of rows. When there is not even
/// one row, a number too large to be allocated.
std::uint64_t strip_elements(std::uint32_t columns, std::uint32_t rows) {
    if (rows == 0)
        return std::numeric_limits<std::uint64_t>::max();
    return size_product(rows - 1, std::uint64_t{columns} * 2 + 1);
}

/// Zigzags between each row and the one before it.
void write_strips(std::uint32_t columns, std::uint32_t rows, std::span<std::uint32_t> elements) {
    if (elements.size() < strip_elements(columns, rows))
        return;
    auto next = elements.begin();
    for (std::uint32_t r = 1; r < rows; ++r) {
        for (std::uint32_t c = 0; c < columns; ++c) {
            *next++ = r * columns + c;
            *next++ = (r - 1) * columns + c;
        }
        *next++ = restart_mark;
    }
}

/// The numbers of the points that are not the same bit by bit.
std::vector<std::uint64_t> changed_points(std::span<const control_point_t> before,
                                          std::span<const control_point_t> now) {
    std::vector<std::uint64_t> changed;
    for (std::uint64_t n = 0; n < now.size(); ++n) {
        if (std::memcmp(&before[n], &now[n], sizeof(control_point_t)) != 0)
            changed.push_back(n);
    }
    return changed;
}

}  // namespace

bool nurbs_t::mesh_fits() const {
    return polygon->can_hold(std::uint64_t{resolution1} * resolution2,
                             strip_elements(resolution1, resolution2));
}

bool nurbs_t::makeVertices() {
    const std::uint64_t vertex_count = std::uint64_t{resolution1} * resolution2;
    if (!polygon->allocate(vertex_count, strip_elements(resolution1, resolution2))) {
        std::cerr << "polygon.allocate() fail." << std::endl;
        return false;
    }
    texture->open(name.c_str());
    if (!polygon->afterload(name.c_str()))
        return false;

    bool is_written = false;
    {
        const index_span elements(polygon->elements);
        is_written = elements.size() == polygon->element_count();
        write_strips(resolution1, resolution2, elements.span());
    }
    grCheckError("MakeVertices5");
    return is_written;
}

bool nurbs_t::updateVertices() {
    return evaluate(nullptr).has_value();
}

/// Evaluates what has changed since the surface was made from `former`, or the whole of it without one.
/// Returns whether the surface is local, and nothing when a buffer can not be mapped.
std::optional<bool> nurbs_t::evaluate(const source_t* former) {
    bool is_local = false;
    {
        const array_span<vertex_t> vertices(polygon->vertices);
        const array_span<work_frame_t> frames(polygon->wknmls);
        grCheckError("nurbs_t::updateVertices() mapping.");
        if (vertices.size() != polygon->vertex_count() || frames.size() != polygon->vertex_count())
            return std::nullopt;
        const nurbs_net_t<control_point_t> net{count1, count2, order1, order2, knot1, knot2, weight, points};
        is_local = former != nullptr && former->is_local && has_other_points_only(*former)
                       ? evaluate_changes(net, changed_points(former->points.data, points.data), resolution1,
                                          resolution2, vertices.span())
                       : evaluate_surface(net, resolution1, resolution2, vertices.span());
    }
    return updateNormals() ? std::optional(is_local) : std::nullopt;
}

bool nurbs_t::has_other_points_only(const source_t& source) const {
    return source.order1 == order1 && source.order2 == order2 && is_same(source.knot1, knot1) &&
           is_same(source.knot2, knot2) && is_same(source.weight, weight) &&
           source.points.rows == points.rows && source.points.columns == points.columns;
}

bool nurbs_t::updateNormals() {
    const array_span<const vertex_t> vertices(polygon->vertices);
    const array_span<work_frame_t> frames(polygon->wknmls);
    const std::uint64_t sample_count = std::uint64_t{resolution1} * resolution2;
    if (vertices.size() < sample_count || frames.size() < sample_count)
        return false;
    // Each position is read many times, and reading from a mapping may be slow.
    std::vector<pos3> positions(sample_count);
    std::ranges::transform(vertices.span().first(sample_count), positions.begin(), &vertex_t::position);
    fill_work_frames(positions, resolution1, resolution2, frames.span().first(sample_count));
    grCheckError("nurbs_t::updateNormals() update end.");
    return true;
}

}  // namespace ulk3d
