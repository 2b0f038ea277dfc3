#include "operations/place/place_models.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/math/vectors.h"
#include "render/gl/mapped_span.h"
#include "render/models/glpolygon.h"

namespace ulk3d {

namespace {

/// Calls `visit(const pos3&)` for each point that belongs to the box of a model. False when an array can not
/// be mapped.
template <class Visit>
bool visit_points(const model_entry_t& model, Visit&& visit) {
    if (model.kind == model_kind_t::nurbs) {
        for (const control_point_t& point : model.nurbs.points.data)
            visit(point.position);
        return true;
    }
    const polygon_t& polygon = model.polygon;
    if (polygon.element_count() == 0)
        return true;
    const array_span<const vertex_t> vertices(polygon.vertices);
    const const_index_span elements(polygon.elements);
    for (const std::uint32_t index : elements.span())
        if (index < vertices.size())
            visit(vertices[index].position);
    return vertices.size() == polygon.vertex_count() && elements.size() == polygon.element_count();
}

struct wide_box_t {
    position_t low, high;

    wide_box_t() {
        low.fill(std::numeric_limits<double>::infinity());
        high.fill(-std::numeric_limits<double>::infinity());
    }
    void include(const position_t& p) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], p[axis]);
            high[axis] = std::max(high[axis], p[axis]);
        }
    }
    bool is_empty() const { return low[0] > high[0]; }
    position_t towards_origin() const {
        return {-(low[0] + high[0]) / 2, -(low[1] + high[1]) / 2, -(low[2] + high[2]) / 2};
    }
    double longest_side() const { return std::max({high[0] - low[0], high[1] - low[1], high[2] - low[2]}); }
};

bool measure(std::span<const placed_model_t> body, wide_box_t& box) {
    return std::ranges::all_of(body, [&box](const placed_model_t& placed) {
        return visit_points(*placed.model, [&](const pos3& position) {
            if (is_finite(position))
                box.include(placed.placement.of(position));
        });
    });
}

/// Adds a step that depends on the box.
bool add_box_step(std::span<placed_model_t> body, place_kind_t kind) {
    wide_box_t box;
    if (!measure(body, box))
        return false;
    if (box.is_empty())
        return true;
    const double side = box.longest_side();
    for (placed_model_t& placed : body) {
        placed.placement.move(box.towards_origin());
        if (kind == place_kind_t::unit && side > 0)
            placed.placement.scale(1 / side);
    }
    return true;
}

/// Gives points their places. False, with nothing changed, when one would get a number that is too large.
template <class Point>
bool place_points(std::span<Point> points, const placement_t& placement) {
    const auto stays_within_reach = [&placement](const Point& point) {
        return !is_finite(point.position) || is_finite(rounded(placement.of(point.position)));
    };
    if (!std::ranges::all_of(points, stays_within_reach))
        return false;
    for (Point& point : points)
        point.position = rounded(placement.of(point.position));
    return true;
}

placed_t place_mesh(polygon_t& polygon, const placement_t& placement) {
    if (polygon.vertex_count() == 0)
        return placed_t::done;
    const array_span<vertex_t> vertices(polygon.vertices);
    const array_span<frame_t> frames(polygon.normals);
    if (vertices.size() != polygon.vertex_count() || frames.size() != polygon.vertex_count())
        return placed_t::no_memory;
    if (!place_points(vertices.span(), placement))
        return placed_t::too_far;
    if (placement.has_turns())
        for (frame_t& frame : frames)
            frame = {placement.of(frame.tangent), placement.of(frame.binormal), placement.of(frame.normal)};
    return placed_t::done;
}

placed_t place_net(nurbs_t& nurbs, const placement_t& placement, glpolygon_t& glpolygon) {
    {
        const mapped_span<control_point_t, array_t> uploaded(nurbs.ctlpts);
        if (uploaded.size() != nurbs.points.data.size())
            return placed_t::no_memory;
        if (!place_points(std::span(nurbs.points.data), placement))
            return placed_t::too_far;
        std::ranges::copy(nurbs.points.data, uploaded.begin());
    }
    return nurbs.rebuild({.sizes = false, .points = true}, glpolygon) ? placed_t::done : placed_t::no_memory;
}

}  // namespace

bool add_place_steps(std::span<placed_model_t> body, std::span<const place_step_t> steps) {
    for (const place_step_t& step : steps) {
        if (step.kind == place_kind_t::center || step.kind == place_kind_t::unit) {
            if (!add_box_step(body, step.kind))
                return false;
            continue;
        }
        for (placed_model_t& placed : body) {
            if (step.kind == place_kind_t::move)
                placed.placement.move(step.values);
            else if (step.kind == place_kind_t::turn)
                placed.placement.turn(step.values);
            else
                placed.placement.scale(step.values[0]);
        }
    }
    return true;
}

placed_t place_model(const placed_model_t& placed, glpolygon_t& glpolygon) {
    model_entry_t& model = *placed.model;
    const placement_t& placement = placed.placement;
    if (placement.is_identity())
        return placed_t::done;
    return model.kind == model_kind_t::nurbs ? place_net(model.nurbs, placement, glpolygon)
                                             : place_mesh(model.polygon, placement);
}

}  // namespace ulk3d
