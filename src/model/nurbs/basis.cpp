#include "model/nurbs/basis.h"

#include <algorithm>
#include <array>
#include <span>

namespace ulk3d {
namespace {

/// A half-open range of indices.
struct range_t {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    std::uint64_t size() const { return end - begin; }
};

/// The function of order 1 on interval n.
float interval_function(std::uint64_t n, float t, knot_view_t knots) {
    if (knots[n] == knots[n + 1])
        return 0;
    return t >= knots[n] && t <= knots[n + 1] ? 1.0F : 0.0F;
}

/// The first n below `end` for which `holds` is false, given that it is true before and false after.
template <typename Holds>
std::uint64_t partition_point(std::uint64_t end, Holds holds) {
    std::uint64_t begin = 0;
    while (begin < end) {
        const std::uint64_t middle = begin + (end - begin) / 2;
        if (holds(middle))
            begin = middle + 1;
        else
            end = middle;
    }
    return begin;
}

/// The range of intervals from the first to the last whose function of order 1 is not 0; empty when all are
/// 0.
range_t active_intervals(std::uint64_t intervals, float t, knot_view_t knots, bool ascending) {
    range_t active{0, intervals};
    if (ascending) {
        active.begin = partition_point(intervals, [&](std::uint64_t n) { return knots[n + 1] < t; });
        active.end = partition_point(intervals, [&](std::uint64_t n) { return knots[n] <= t; });
    }
    while (active.begin < active.end && interval_function(active.begin, t, knots) == 0)
        ++active.begin;
    while (active.begin < active.end && interval_function(active.end - 1, t, knots) == 0)
        --active.end;
    return active.begin < active.end ? active : range_t{};
}

/// The functions 0 to count - 1 of `order` that depend on an active interval.
range_t touched_functions(std::uint64_t count, std::uint64_t order, range_t active) {
    return {active.begin - std::min(active.begin, order - 1), std::min(active.end, count)};
}

/// Raises the functions of order `order - 1` with the numbers `range`, which are in `values`, to `order` in
/// place. Functions outside the range are +0. Numbers from `limit` on do not exist in the new order. Returns
/// the new range; in both orders `values` starts with number `base`.
range_t raise_order(range_t range, std::uint64_t order, std::uint64_t limit, float t, knot_view_t knots,
                    std::span<float> values, std::uint64_t base) {
    // Each function contributes a rising share to the function with its own number and a falling share to the
    // one before, both over the same denominator.
    float rising = 0;
    for (std::uint64_t n = range.begin; n < range.end; ++n) {
        const float value = values[n - base];
        float next_rising = value;
        float falling = value;
        const float denominator = knots[n + order - 1] - knots[n];
        if (value != 0 && denominator != 0) {
            next_rising = value * (t - knots[n]) / denominator;
            falling = value * (knots[n + order - 1] - t) / denominator;
        }
        if (n > base)
            values[n - 1 - base] = rising + falling;
        rising = next_rising;
    }
    if (range.end <= limit)
        values[range.end - 1 - base] = rising + 0.0F;
    return {range.begin - std::min<std::uint64_t>(range.begin - base, 1), std::min(range.end, limit)};
}

/// Writes the functions `touched` to `values`, which has room for one more than the number of intervals that
/// they rest on.
void evaluate(std::uint64_t count, std::uint64_t order, float t, knot_view_t knots, range_t active,
              range_t touched, std::span<float> values) {
    std::fill(values.begin(), values.end(), 0.0F);
    for (std::uint64_t n = active.begin; n < active.end; ++n)
        values[n - touched.begin] = interval_function(n, t, knots);
    range_t range = active;
    for (std::uint64_t k = 2; k <= order; ++k)
        range = raise_order(range, k, count + order - k, t, knots, values, touched.begin);
}

}  // namespace

float basis(std::uint64_t i, std::uint64_t order, float t, knot_view_t knots) {
    if (order == 0)
        return 0;
    const knot_view_t own{&knots[i], knots.stride};
    const range_t active = active_intervals(order, t, own, false);
    if (active.size() == 0)
        return 0;
    std::array<float, 16> few;
    std::vector<float> many;
    if (active.end > few.size())
        many.resize(active.end);
    const std::span<float> values(many.empty() ? few.data() : many.data(), active.end);
    evaluate(1, order, t, own, active, {0, 1}, values);
    return values[0];
}

bool is_ascending(std::uint64_t knot_count, knot_view_t knots) {
    for (std::uint64_t n = 1; n < knot_count; ++n) {
        if (!(knots[n - 1] <= knots[n]))
            return false;
    }
    return knot_count == 0 || knots[0] == knots[0];
}

basis_run_t basis_run(std::uint64_t count, std::uint64_t order, float t, knot_view_t knots, bool ascending,
                      std::vector<float>& values) {
    if (order == 0 || count == 0)
        return {};
    const range_t active = active_intervals(count + order - 1, t, knots, ascending);
    if (active.size() == 0)
        return {};
    const range_t touched = touched_functions(count, order, active);
    const std::size_t place = values.size();
    values.resize(place + (active.end - touched.begin));
    evaluate(count, order, t, knots, active, touched, std::span(values).subspan(place));
    values.resize(place + touched.size());
    return {touched.begin, touched.size(), place};
}

}  // namespace ulk3d
