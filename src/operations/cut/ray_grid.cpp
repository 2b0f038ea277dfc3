#include "operations/cut/ray_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>

#include "model/math/vectors.h"

namespace ulk3d {
namespace {

constexpr double most_cells = 512;                ///< along an axis
constexpr std::uint32_t most_cells_of_one = 256;  ///< that one triangle may be put into

/// Twice what the roundings between a ray and a distance can add up to, relative to the largest coordinate.
constexpr double rounding = 16 * static_cast<double>(std::numeric_limits<float>::epsilon());

float largest(const pos3& p) {
    return std::max({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
}

bool is_finite(const pos3& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool is_finite(const cut_triangle_t& triangle) {
    return is_finite(triangle.p0) && is_finite(triangle.p1) && is_finite(triangle.p2);
}

pos3 low_corner(const cut_triangle_t& triangle) {
    return component_min(component_min(triangle.p0, triangle.p1), triangle.p2);
}

pos3 high_corner(const cut_triangle_t& triangle) {
    return component_max(component_max(triangle.p0, triangle.p1), triangle.p2);
}

/// How far a corner can be from the plane, because rounding has turned the normal.
double off_plane(const cut_triangle_t& triangle) {
    const dir3& n = triangle.normal;
    const pos3& c = triangle.centroid;
    double distance = 0;
    for (const pos3& p : {triangle.p0, triangle.p1, triangle.p2}) {
        const double value = double{n.x} * (double{p.x} - c.x) + double{n.y} * (double{p.y} - c.y) +
                             double{n.z} * (double{p.z} - c.z);
        distance = std::max(distance, std::fabs(value));
    }
    return distance;
}

/// How far a point can be from the outline when all its distances from the edge lines are within `distance`:
/// at the sharpest corner the distance divided by the sine of half the angle, which is at least half the
/// angle's sine.
double beyond_corner(const cut_triangle_t& triangle, const std::array<double, 3>& sides, double distance) {
    const auto& [p, q, r] = triangle.flat_points;
    const double twice_area =
        std::fabs((double{q.x} - p.x) * (double{r.y} - p.y) - (double{q.y} - p.y) * (double{r.x} - p.x));
    const double sine = twice_area / (sides[1] * sides[2]);
    return distance / (sine / 2);
}

/// How far in x and y from a triangle's box a ray can be and still count as meeting it, when no coordinate
/// exceeds `size`. Infinite or not-a-number when there is no bound.
double widening(const cut_triangle_t& triangle, double size) {
    std::array<double, 3> sides{};
    for (std::size_t k = 0; k < 3; ++k) {
        const pos3& p = triangle.flat_points[k];
        const pos3& q = triangle.flat_points[(k + 1) % 3];
        sides[k] = std::hypot(double{q.x} - p.x, double{q.y} - p.y);
    }
    std::ranges::sort(sides);
    // The constant of an edge line is a difference of products of coordinates, divided by the edge's length.
    double largest_flat = 0;
    for (const pos3& p : triangle.flat_points)
        largest_flat = std::max({largest_flat, std::fabs(double{p.x}), std::fabs(double{p.y})});
    const double distance = eps + rounding * (size + largest_flat * largest_flat / sides[0]);
    return 2 * (beyond_corner(triangle, sides, distance) + off_plane(triangle) + rounding * size);
}

}  // namespace

std::uint32_t ray_grid_t::axis_t::cell(float v) const {
    const float place = (v - low) * per_unit;
    if (!(place > 0))
        return 0;
    return place < static_cast<float>(cells) ? static_cast<std::uint32_t>(place) : cells - 1;
}

ray_grid_t::range_t ray_grid_t::axis_t::range(float from, float to, double widening) const {
    return {cell(static_cast<float>(from - widening)), cell(static_cast<float>(to + widening))};
}

ray_grid_t::ray_grid_t(std::span<cut_triangle_t> triangles, float end_z)
    : triangle_count(triangles.size()), reach(std::fabs(end_z)) {
    for (cut_triangle_t& triangle : triangles)
        triangle.make_flat();
    lay_axes(triangles);
    fill(triangles);
}

void ray_grid_t::lay_axes(std::span<const cut_triangle_t> triangles) {
    pos3 low, high;
    bool seeded = false;
    for (const cut_triangle_t& triangle : triangles) {
        if (!is_finite(triangle))
            continue;
        low = seeded ? component_min(low, low_corner(triangle)) : low_corner(triangle);
        high = seeded ? component_max(high, high_corner(triangle)) : high_corner(triangle);
        seeded = true;
    }
    // Rays may start somewhat further away than the triangles are.
    reach = 4 * std::max({reach, largest(low), largest(high)});
    const double cells = std::clamp(std::sqrt(static_cast<double>(triangles.size())), 1.0, most_cells);
    const auto lay = [cells](float from, float to) {
        return axis_t{from, static_cast<float>(cells) / (to - from), static_cast<std::uint32_t>(cells)};
    };
    x_axis = lay(low.x, high.x);
    y_axis = lay(low.y, high.y);
}

std::optional<ray_grid_t::cells_t> ray_grid_t::cells_of(const cut_triangle_t& triangle) const {
    const double wider = widening(triangle, reach);
    if (!is_finite(triangle) || !std::isfinite(wider))
        return std::nullopt;
    const pos3 low = low_corner(triangle);
    const pos3 high = high_corner(triangle);
    const cells_t cells{x_axis.range(low.x, high.x, wider), y_axis.range(low.y, high.y, wider)};
    if (cells.x.size() * cells.y.size() > most_cells_of_one)
        return std::nullopt;
    return cells;
}

void ray_grid_t::fill(std::span<const cut_triangle_t> triangles) {
    std::vector<std::optional<cells_t>> places;
    for (const cut_triangle_t& triangle : triangles)
        places.push_back(cells_of(triangle));

    const auto for_each_entry = [&](auto&& visit) {
        for (std::uint32_t number = 0; number < places.size(); ++number) {
            if (!places[number])
                continue;
            const auto& [x, y] = *places[number];
            for (std::uint32_t row = y.first; row <= y.last; ++row)
                for (std::uint32_t column = x.first; column <= x.last; ++column)
                    visit(std::size_t{row} * x_axis.cells + column, number);
        }
    };
    offsets.assign(std::size_t{x_axis.cells} * y_axis.cells + 1, 0);
    for_each_entry([&](std::size_t cell, std::uint32_t) { ++offsets[cell + 1]; });
    std::partial_sum(offsets.begin(), offsets.end(), offsets.begin());
    entries.resize(offsets.back());
    std::vector<std::uint32_t> next(offsets.begin(), offsets.end() - 1);
    for_each_entry([&](std::size_t cell, std::uint32_t number) { entries[next[cell]++] = number; });

    for (std::uint32_t number = 0; number < places.size(); ++number)
        if (!places[number])
            for_all.push_back(number);
}

const std::vector<std::uint32_t>& ray_grid_t::numbers_for(const pos3& start) {
    found.clear();
    if (!(largest(start) <= reach) || !is_finite(start)) {
        found.resize(triangle_count);
        std::iota(found.begin(), found.end(), 0);
        return found;
    }
    const std::size_t cell = std::size_t{y_axis.cell(start.y)} * x_axis.cells + x_axis.cell(start.x);
    const std::span in_cell = std::span(entries).subspan(offsets[cell], offsets[cell + 1] - offsets[cell]);
    std::ranges::merge(in_cell, for_all, std::back_inserter(found));
    return found;
}

}  // namespace ulk3d
