#include "model/nurbs/nurbs.h"

#include <algorithm>
#include <iostream>
#include <limits>
#include <new>
#include <utility>

#include "gltextures/gr_check_error.h"
#include "model/math/vectors.h"
#include "render/gl/mapped_span.h"
#include "utils/memory/memory_budget.h"

namespace ulk3d {

using libgr::grCheckError;
using libutils::size_product;
using libutils::size_sum;

namespace {

constexpr std::uint32_t default_resolution = 33;
constexpr std::int64_t selection_words = 10;  // per control point: what the selection pass writes

/// For each control point beside the tables: its record and its size in GL arrays, and what the selection
/// pass writes.
constexpr std::uint64_t uploaded_bytes =
    sizeof(control_point_t) + sizeof(float) + selection_words * sizeof(float);

/// Size of one table in bytes; the largest value when it does not fit in 64 bits.
template <typename T>
std::uint64_t byte_count(const matrix_t<T>& /*table*/, std::uint64_t rows, std::uint64_t columns) {
    return size_product(size_product(rows, columns), sizeof(T));
}

option_view_t view_of(matrix_t<float>& table) {
    return {table.data.data(), 1, table.data.size()};
}

nurbs_t::dims_t dims_of(const matrix_t<float>& table) {
    return {static_cast<std::uint32_t>(table.rows), static_cast<std::uint32_t>(table.columns)};
}

}  // namespace

nurbs_t::nurbs_t(texture_t* target_texture, polygon_t* target_polygon)
    : texture(target_texture),
      polygon(target_polygon),
      resolution1(default_resolution),
      resolution2(default_resolution) {}

bool nurbs_t::allocate(std::uint64_t new_count1, std::uint64_t new_order1, std::uint64_t new_count2,
                       std::uint64_t new_order2) {
    release_tables();
    const std::uint64_t row_knots = size_sum(new_count1, new_order1);
    const std::uint64_t column_knots = size_sum(new_count2, new_order2);
    const std::uint64_t knot_bytes =
        size_sum(byte_count(knot1, new_count2, row_knots), byte_count(knot2, new_count1, column_knots));
    const std::uint64_t point_bytes =
        size_sum(byte_count(weight, new_count2, new_count1), byte_count(points, new_count2, new_count1));
    const std::uint64_t bytes = size_sum(knot_bytes, point_bytes);
    if (bytes > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()))
        throw std::bad_array_new_length();
    // The tables are kept a second time, as what the mesh was made from.
    const std::uint64_t uploads = size_product(size_product(new_count2, new_count1), uploaded_bytes);
    if (!libutils::claim_memory(size_sum(size_product(bytes, 2), uploads)))
        return false;

    knot1.resize(new_count2, row_knots);
    knot2.resize(new_count1, column_knots);
    weight.resize(new_count2, new_count1);
    points.resize(new_count2, new_count1);
    selection.assign(points.data.size(), false);
    count1 = new_count1;
    order1 = new_order1;
    count2 = new_count2;
    order2 = new_order2;
    return true;
}

void nurbs_t::release_tables() {
    knot1.release();
    knot2.release();
    weight.release();
    points.release();
    selection.clear();
    count1 = order1 = count2 = order2 = 0;
}

void nurbs_t::clear() {
    release_tables();
    built_resolution.reset();
    built_source.reset();
    resolution1 = resolution2 = default_resolution;
    ctlpts.release();
    pointarray.reset();
    modeling_t::clear();
}

bool nurbs_t::MakeCtlpts() {
    const auto count = static_cast<std::int64_t>(points.data.size());
    const void* const source = points.data.empty() ? nullptr : points.data.data();
    const auto source_bytes = static_cast<std::int64_t>(points.data.size() * sizeof(control_point_t));
    grCheckError("nurbs_t::MakeCtlpts(0)");
    if (!ctlpts.allocate(count, control_point_elements(), source, source_bytes))
        return false;
    grCheckError("nurbs_t::MakeCtlpts(1)");
    if (!pointsizes.allocate(count, size_elements()))
        return false;
    grCheckError("nurbs_t::MakeCtlpts(2)");
    return true;
}

bool nurbs_t::afterload(const char* new_name) {
    grCheckError("nurbs_t::afterload(1)");
    if (!MakeCtlpts()) {
        std::cerr << "makeCtlpts() error." << std::endl;
        return false;
    }
    grCheckError("nurbs_t::afterload(2)");
    if (new_name != nullptr)
        name = new_name;
    const bool is_cleared = clearselection();

    grCheckError("nurbs_t::afterload(3)");
    make_point_array();
    const bool has_feedback = selectionfeedback.allocate(ctlpts.element_count() * selection_words);
    grCheckError("nurbs_t::afterload(4)");
    return is_cleared && has_feedback;
}

bool nurbs_t::copy(const nurbs_t& other) {
    knot1 = other.knot1;
    knot2 = other.knot2;
    weight = other.weight;
    points = other.points;
    count1 = other.count1;
    order1 = other.order1;
    count2 = other.count2;
    order2 = other.order2;
    resolution1 = other.resolution1;
    resolution2 = other.resolution2;
    built_resolution = other.built_resolution;
    built_source = other.built_source;
    ctlpts = other.ctlpts;
    if (!ctlpts.unshare() || !copy_points(other)) {
        grCheckError("nurbs_t::copy()");
        std::cerr << "nurbs_t::copy() failed." << std::endl;
        clear();
        return false;
    }
    if (other.pointarray)
        make_point_array();
    return true;
}

void nurbs_t::swap(nurbs_t& other) noexcept {
    swap_points(other);
    std::swap(knot1, other.knot1);
    std::swap(knot2, other.knot2);
    std::swap(weight, other.weight);
    std::swap(points, other.points);
    std::swap(count1, other.count1);
    std::swap(order1, other.order1);
    std::swap(count2, other.count2);
    std::swap(order2, other.order2);
    std::swap(resolution1, other.resolution1);
    std::swap(resolution2, other.resolution2);
    std::swap(built_resolution, other.built_resolution);
    std::swap(built_source, other.built_source);
    std::swap(ctlpts, other.ctlpts);
    std::swap(pointarray, other.pointarray);
}

void nurbs_t::make_point_array() {
    if (!pointarray)
        pointarray = vertex_array_ref::make();
    pointarray->allocate();
    ctlpts.bind_to(pointarray, 0);
    pointsizes.bind_to(pointarray, static_cast<GLuint>(ctlpts.element_list().size()));
}

void nurbs_t::elementchanged(std::uint32_t array_index, std::uint64_t element) {
    if (array_index != 0 || !is_uploaded(element))
        return;
    ctlpts.read_one(static_cast<std::int64_t>(element), &points.row(element / count1)[element % count1]);
}

void nurbs_t::uploadpoint(std::uint64_t column, std::uint64_t row) {
    if (column >= count1 || row >= count2 || !is_uploaded(row * count1 + column))
        return;
    ctlpts.write_one(static_cast<std::int64_t>(row * count1 + column), &points.row(row)[column]);
}

bool nurbs_t::is_uploaded(std::uint64_t point) const {
    return point < points.data.size() && point < static_cast<std::uint64_t>(ctlpts.element_count());
}

void nurbs_t::uploadpoints() {
    if (!ctlpts.has_buffer())
        return;
    const array_span<control_point_t> uploaded(ctlpts);
    std::copy_n(points.data.begin(), std::min(uploaded.size(), points.data.size()), uploaded.span().begin());
}

nurbs_t::dims_t nurbs_t::optiondims(std::uint32_t index) const {
    switch (index) {
        case 0:
            return dims_of(knot1);
        case 1:
            return dims_of(knot2);
        case 2:
            return dims_of(weight);
        default:
            return {};
    }
}

option_view_t nurbs_t::option(std::uint32_t index) {
    switch (index) {
        case 0:
            return view_of(knot1);
        case 1:
            return view_of(knot2);
        case 2:
            return view_of(weight);
        default:
            return {};
    }
}

const array_t* nurbs_t::array(std::uint32_t index) const {
    return index == 0 ? &ctlpts : nullptr;
}

array_t* nurbs_t::array(std::uint32_t index) {
    return index == 0 ? &ctlpts : nullptr;
}

bool nurbs_t::drawpoints() {
    return ulk3d::draw(pointarray, GL_POINTS, ctlpts.element_count());
}

void nurbs_t::bounds(pos3& low, pos3& high) const {
    low = high = {};
    if (!ctlpts.has_buffer())
        return;
    const mapped_span<const control_point_t, array_t> uploaded(ctlpts);
    if (uploaded.size() == 0)
        return;
    low = high = uploaded[0].position;
    for (const control_point_t& point : uploaded.span()) {
        low = component_min(low, point.position);
        high = component_max(high, point.position);
    }
}

}  // namespace ulk3d
