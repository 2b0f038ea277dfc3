#include "app/editor/fit_view.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/math/vectors.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

constexpr float empty_scene_distance = 7;
constexpr float infinity = std::numeric_limits<float>::infinity();

struct box_t {
    pos3 low{infinity, infinity, infinity};
    pos3 high{-infinity, -infinity, -infinity};

    /// The greatest distance from the origin along each axis, to either side.
    pos3 furthest() const {
        return {std::max(std::fabs(low.x), std::fabs(high.x)), std::max(std::fabs(low.y), std::fabs(high.y)),
                std::max(std::fabs(low.z), std::fabs(high.z))};
    }
};

bool has_points(const model_entry_t& entry) {
    return entry.modeling().array(0)->element_count() > 0;
}

/// The box of all models that have points; a scene without points has the origin as its box.
box_t scene_box(const model_list_t& models) {
    box_t box;
    for (const auto& entry : models) {
        if (!has_points(*entry))
            continue;
        box_t one;
        entry->modeling().bounds(one.low, one.high);
        box.low = component_min(box.low, one.low);
        box.high = component_max(box.high, one.high);
    }
    return box.low == box_t{}.low ? box_t{origin, origin} : box;
}

/// The width of a box along one axis with some room around it; a flat box counts as 1.
float roomy(float low, float high) {
    const float size = (high - low) * 1.125F;
    return size == 0 ? 1 : size;
}

/// The outermost of the points seen so far, in normalised coordinates.
class extremes_t {
  public:
    /// Ignores points in the plane of the eye: their projections are not finite.
    void add(const pos3& p) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
            return;
        if (empty || p.x < left.x)
            left = p;
        if (empty || p.x > right.x)
            right = p;
        if (empty || p.y < bottom.y)
            bottom = p;
        if (empty || p.y > top.y)
            top = p;
        empty = false;
    }

    bool has_points() const { return !empty; }

    /// The point that lies furthest from the centre on the axis with the greater extent.
    pos3 furthest() const {
        const float reach_x = reach(left.x, right.x);
        const float reach_y = reach(bottom.y, top.y);
        if (reach_x > reach_y)
            return std::fabs(right.x) >= std::fabs(left.x) ? right : left;
        return std::fabs(top.y) >= std::fabs(bottom.y) ? top : bottom;
    }

  private:
    static float reach(float low, float high) {
        const float value = std::max(std::fabs(high), std::fabs(low));
        return value == 0 ? 1 : value;
    }

    bool empty = true;
    pos3 left, right, bottom, top;
};

template <typename Record>
void add_points(extremes_t& extremes, const array_t& array, const mtx3w& projecting) {
    if (array.element_count() <= 0)
        return;
    const array_span<const Record> records(array);
    for (const Record& record : records.span())
        extremes.add(dehomogenize(vec_times_mtx(homogenize(record.position), projecting)));
}

float distance_to(const pos3& p) {
    return (-std::max(std::fabs(p.x), std::fabs(p.y)) - std::fabs(p.z)) * 1.25F - 1.0F;
}

/// How far along z the trackball has to go for all points to be visible. `centre_and_back` is the point from
/// which the scene is viewed to find that out. A flat model can lie in the plane of that point; then the box
/// decides.
float distance_to(const model_list_t& models, const camera_t& camera, const dir3& centre_and_back,
                  const box_t& box) {
    const mtx3w projecting = translation(-centre_and_back) * camera.perspective.matrix;
    extremes_t extremes;
    for (const auto& entry : models) {
        if (entry->kind == model_kind_t::nurbs)
            add_points<control_point_t>(extremes, entry->nurbs.ctlpts, projecting);
        else
            add_points<vertex_t>(extremes, entry->polygon.vertices, projecting);
    }
    if (!extremes.has_points())
        return std::ranges::any_of(models, [](const auto& entry) { return has_points(*entry); })
                   ? distance_to(box.furthest())
                   : -empty_scene_distance;

    const mtx3w unprojecting = camera.perspective.inverse * translation(centre_and_back);
    return distance_to(dehomogenize(vec_times_mtx(homogenize(extremes.furthest()), unprojecting)));
}

}  // namespace

void reset_view(camera_t& camera, const model_list_t& models) {
    camera.fit = {};
    camera.view = {};
    camera.trackball.reset();
    if (models.empty()) {
        camera.trackball.translation.z -= empty_scene_distance;
        return;
    }

    const box_t box = scene_box(models);
    const dir3 size{roomy(box.low.x, box.high.x), roomy(box.low.y, box.high.y), roomy(box.low.z, box.high.z)};
    camera.fit = {scale(1 / size.x, 1 / size.y, 1 / size.z), scale(size.x, size.y, size.z)};

    const dir3 centre_and_back{(box.low.x + box.high.x) * 0.5F, (box.low.y + box.high.y) * 0.5F,
                               std::max({size.x, size.y, size.z}) - 1};
    camera.trackball.translation = {0, 0, distance_to(models, camera, centre_and_back, box)};
}

}  // namespace ulk3d
