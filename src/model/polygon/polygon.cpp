#include "model/polygon/polygon.h"

#include <algorithm>
#include <utility>

#include "gltextures/gr_check_error.h"
#include "model/math/vectors.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

using libgr::grCheckError;

const array_t* polygon_t::array(std::uint32_t index) const {
    switch (index) {
        case 0:
            return &vertices;
        case 1:
            return &normals;
        case 2:
            return &wknmls;
        default:
            return nullptr;
    }
}

array_t* polygon_t::array(std::uint32_t index) {
    return const_cast<array_t*>(std::as_const(*this).array(index));
}

std::uint64_t polygon_t::vertex_count() const {
    return static_cast<std::uint64_t>(vertices.element_count());
}

std::uint64_t polygon_t::element_count() const {
    return static_cast<std::uint64_t>(elements.element_count());
}

void polygon_t::draw() {
    grCheckError("polygon_t::draw(0)");
    glPrimitiveRestartIndex(restart_mark);
    grCheckError("polygon_t::draw(1)");
    glEnable(GL_PRIMITIVE_RESTART);
    grCheckError("polygon_t::draw(2)");
    drawn_strips.draw(elements, vertex_count(), drawarray);
    grCheckError("polygon_t::draw(3)");
    glDisable(GL_PRIMITIVE_RESTART);
    grCheckError("polygon_t::draw(end)");
}

void polygon_t::drawselected() {
    glPrimitiveRestartIndex(restart_mark);
    glEnable(GL_PRIMITIVE_RESTART);
    selectelems.draw(drawarray, GL_TRIANGLES);
    glDisable(GL_PRIMITIVE_RESTART);
}

bool polygon_t::drawpoints() {
    return ulk3d::draw(pointarray, GL_POINTS, static_cast<GLsizei>(vertex_count()));
}

bool polygon_t::showpoints() {
    if (pointarray && !pointarray->provide())
        return false;
    const element_array_t* const points = distinct_points.of(vertices, pointsizes);
    if (points == nullptr)
        return drawpoints();
    points->draw(pointarray, GL_POINTS);
    return true;
}

bool polygon_t::drawframes() {
    return ulk3d::draw(workarray, GL_POINTS, static_cast<GLsizei>(vertex_count()));
}

void polygon_t::give_back_frame_pass() {
    wknmls.give_back();
    normalfeedback.give_back();
}

std::uint64_t polygon_t::drawvertices() {
    static_cast<void>(ulk3d::draw(drawarray, GL_POINTS, static_cast<GLsizei>(vertex_count())));
    return vertex_count();
}

void polygon_t::bounds(pos3& low, pos3& high) const {
    const array_span<const vertex_t> corners(vertices);
    const const_index_span strips(elements);
    const std::span<const vertex_t> all = corners.span();
    bool seeded = false;
    for (const std::uint32_t index : strips.span()) {
        if (index >= all.size())
            continue;
        const pos3& position = all[index].position;
        low = seeded ? component_min(low, position) : position;
        high = seeded ? component_max(high, position) : position;
        seeded = true;
    }
}

void polygon_t::clear() {
    vertices.release();
    normals.release();
    wknmls.release();
    elements.release();
    drawarray.reset();
    workarray.reset();
    pointarray.reset();
    normalfeedback.release();
    selected_ids.clear();
    polyidvector.clear();
    selectelems.release();
    drawn_strips.release();
    distinct_points.release();
    unset_frames.clear();
    modeling_t::clear();
}

}  // namespace ulk3d
