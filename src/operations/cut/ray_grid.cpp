#include "operations/cut/ray_grid.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

#include "operations/cut/unit_space.h"

namespace ulk3d {
namespace {

constexpr double most_cells = 1024;               ///< along an axis
constexpr std::uint32_t most_cells_of_one = 256;  ///< that one box may be put into

}  // namespace

std::uint32_t ray_grid_t::axis_t::cell(float v) const {
    const float place = (v - low) * per_unit;
    if (!(place > 0))
        return 0;
    return place < static_cast<float>(cells) ? static_cast<std::uint32_t>(place) : cells - 1;
}

ray_grid_t::ray_grid_t(std::span<const box3> boxes, float room) {
    if (boxes.empty())
        return;
    const box3 whole = std::accumulate(boxes.begin(), boxes.end(), boxes.front(), box_around);
    const double cells = std::clamp(std::sqrt(static_cast<double>(boxes.size())), 1.0, most_cells);
    const auto lay = [cells](float from, float to) {
        return axis_t{from, static_cast<float>(cells) / (to - from), static_cast<std::uint32_t>(cells)};
    };
    x_axis = lay(whole.low.x, whole.high.x);
    y_axis = lay(whole.low.y, whole.high.y);
    fill(boxes, room);
}

ray_grid_t::cells_t ray_grid_t::cells_of(const box3& box, float room) const {
    return {{x_axis.cell(box.low.x - room), x_axis.cell(box.high.x + room)},
            {y_axis.cell(box.low.y - room), y_axis.cell(box.high.y + room)}};
}

void ray_grid_t::fill(std::span<const box3> boxes, float room) {
    const auto for_each_entry = [&](auto&& visit) {
        for (std::uint32_t number = 0; number < boxes.size(); ++number) {
            const cells_t cells = cells_of(boxes[number], room);
            if (cells.count() > most_cells_of_one)
                continue;
            for (std::uint32_t row = cells.y.first; row <= cells.y.last; ++row)
                for (std::uint32_t column = cells.x.first; column <= cells.x.last; ++column)
                    visit(std::size_t{row} * x_axis.cells + column, number);
        }
    };
    offsets.assign(std::size_t{x_axis.cells} * y_axis.cells + 1, 0);
    for_each_entry([&](std::size_t cell, std::uint32_t) { ++offsets[cell + 1]; });
    std::partial_sum(offsets.begin(), offsets.end(), offsets.begin());
    entries.resize(offsets.back());
    std::vector<std::uint32_t> next(offsets.begin(), offsets.end() - 1);
    for_each_entry([&](std::size_t cell, std::uint32_t number) { entries[next[cell]++] = number; });

    for (std::uint32_t number = 0; number < boxes.size(); ++number)
        if (cells_of(boxes[number], room).count() > most_cells_of_one)
            for_all.push_back(number);
}

std::span<const std::uint32_t> ray_grid_t::numbers_at(float x, float y) {
    if (offsets.empty())
        return {};
    const std::size_t cell = std::size_t{y_axis.cell(y)} * x_axis.cells + x_axis.cell(x);
    const std::span in_cell = std::span(entries).subspan(offsets[cell], offsets[cell + 1] - offsets[cell]);
    if (for_all.empty())
        return in_cell;
    found.clear();
    std::ranges::merge(in_cell, for_all, std::back_inserter(found));
    return found;
}

}  // namespace ulk3d
