#include "model/nurbs/flat_sheet.h"

#include <algorithm>

#include "model/nurbs/nurbs.h"

namespace ulk3d {

namespace {

/// Where the point of an index lies on one axis of the grid.
float grid_place(std::uint64_t index, std::uint64_t count) {
    return count < 2 ? 0.0F : static_cast<float>(index) / static_cast<float>(count - 1) - 0.5F;
}

float clamped_knot(std::uint64_t index, std::uint64_t order, std::uint64_t count) {
    if (index < order)
        return 0;
    if (index >= count)
        return 1;
    return static_cast<float>(index - order + 1) / static_cast<float>(count - order + 1);
}

void fill_knots(matrix_t<float>& knots, std::uint64_t order, std::uint64_t count) {
    for (std::uint64_t row = 0; row < knots.rows; ++row)
        for (std::uint64_t i = 0; i < knots.columns; ++i)
            knots.row(row)[i] = clamped_knot(i, order, count);
}

}  // namespace

void make_flat_sheet(nurbs_t& nurbs) {
    fill_knots(nurbs.knot1, nurbs.order1, nurbs.count1);
    fill_knots(nurbs.knot2, nurbs.order2, nurbs.count2);
    std::ranges::fill(nurbs.weight.data, 1.0F);
    for (std::uint64_t row = 0; row < nurbs.count2; ++row)
        for (std::uint64_t column = 0; column < nurbs.count1; ++column)
            nurbs.points.row(row)[column] = {
                {grid_place(column, nurbs.count1), grid_place(row, nurbs.count2), 0}, default_color};
}

}  // namespace ulk3d
