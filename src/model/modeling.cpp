#include "model/modeling.h"

#include <bit>
#include <cstdint>
#include <utility>

namespace ulk3d {

const element_list_t& vertex_elements() {
    static const element_list_t list =
        make_element_list({e_type_t::Position, e_type_t::RGBA, e_type_t::TexCoord2});
    return list;
}

const element_list_t& frame_elements() {
    static const element_list_t list =
        make_element_list({e_type_t::Normal, e_type_t::Normal, e_type_t::Normal});
    return list;
}

const element_list_t& work_frame_elements() {
    static const element_list_t list =
        make_element_list({e_type_t::Normal, e_type_t::Normal, e_type_t::Normal, e_type_t::Normal});
    return list;
}

const element_list_t& size_elements() {
    static const element_list_t list = make_element_list({e_type_t::PointSize});
    return list;
}

const element_list_t& control_point_elements() {
    static const element_list_t list = make_element_list({e_type_t::Position, e_type_t::RGBA});
    return list;
}

void modeling_t::clear() {
    name.clear();
    pointsizes.release();
    selection.clear();
    selectionfeedback.release();
}

bool modeling_t::copy_points(const modeling_t& other) {
    name = other.name;
    selection = other.selection;
    pointsizes = other.pointsizes;
    return pointsizes.unshare() && (!other.selectionfeedback.has_buffer() ||
                                    selectionfeedback.allocate(other.selectionfeedback.element_count()));
}

void modeling_t::swap_points(modeling_t& other) noexcept {
    name.swap(other.name);
    selection.swap(other.selection);
    std::swap(pointsizes, other.pointsizes);
    selectionfeedback.swap(other.selectionfeedback);
}

bool modeling_t::clearselection() {
    const bool is_filled = pointsizes.fill(0, std::bit_cast<std::uint32_t>(unselected_point_size));
    selection.assign(selection.size(), false);
    return selection.empty() || (is_filled && pointsizes.holds(static_cast<std::int64_t>(selection.size())));
}

bool modeling_t::select(std::uint64_t point) {
    return mark(point, true, selected_point_size);
}

bool modeling_t::unselect(std::uint64_t point) {
    return mark(point, false, unselected_point_size);
}

bool modeling_t::mark(std::uint64_t point, bool selected, float size) {
    if (point >= selection.size() || selection[point] == selected)
        return false;
    if (!pointsizes.write_one(static_cast<std::int64_t>(point), &size))
        return false;
    selection[point] = selected;
    return true;
}

}  // namespace ulk3d
