#include "model/nurbs/basis_table.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace ulk3d {
namespace {

std::string_view bytes_of(std::span<const float> values) {
    const auto bytes = std::as_bytes(values);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// How many terms are best added at a time: the number that leaves the fewest zeros behind `order` terms.
std::uint32_t step_for(std::uint64_t order) {
    const auto zeros = [order](std::uint32_t step) { return (step - order % step) % step; };
    return std::min({4U, 3U, 2U}, [&](std::uint32_t a, std::uint32_t b) { return zeros(a) < zeros(b); });
}

constexpr std::uint64_t no_interval = std::numeric_limits<std::uint64_t>::max();

/// Finds for each parameter, of rising ones, the knot at which its interval begins, where kernels can
/// evaluate it: it is inside a single interval, and all functions that rest on that exist. `no_interval` at
/// all others.
void find_intervals(std::uint64_t count, std::uint64_t order, std::span<const float> knots,
                    std::span<const float> parameters, std::span<std::uint64_t> intervals) {
    std::ranges::fill(intervals, no_interval);
    if (order < 2 || order > highest_kernel_order || count < order)
        return;
    std::uint64_t interval = order - 1;
    for (std::size_t n = 0; n < parameters.size(); ++n) {
        while (interval + 1 < count && knots[interval + 1] <= parameters[n])
            ++interval;
        if (knots[interval] < parameters[n] && parameters[n] < knots[interval + 1])
            intervals[n] = interval;
    }
}

}  // namespace

knot_table_t::knot_table_t(const matrix_t<float>& table, std::uint64_t function_count,
                           std::uint64_t function_order)
    : knots(table), count(function_count), order(function_order) {
    std::unordered_map<std::string_view, std::uint32_t> known;
    for (std::uint64_t row = 0; row < table.rows; ++row) {
        const std::string_view bytes = bytes_of(table.row(row));
        if (row != 0 && bytes == bytes_of(table.row(row - 1))) {
            kinds.push_back(kinds.back());
            continue;
        }
        const auto next = static_cast<std::uint32_t>(rows_of_kinds.size());
        const auto [entry, is_new] = known.emplace(bytes, next);
        kinds.push_back(entry->second);
        if (is_new)
            rows_of_kinds.push_back(row);
    }
}

basis_table_t::basis_table_t(const knot_table_t& table, sample_range_t samples, std::uint32_t resolution,
                             const kernel_t& kernel)
    : kinds(table.kinds), range(samples), run_step(step_for(table.order)), intervals(samples.size()) {
    parameters.reserve(range.size());
    for (std::uint32_t sample = range.begin; sample < range.end; ++sample)
        parameters.push_back(sample_parameter(sample, resolution));

    runs.reserve(table.rows_of_kinds.size() * range.size());
    for (const std::uint64_t row : table.rows_of_kinds)
        evaluate(table.count, table.order, table.knots.row(row), kernel);
    values.resize(values.size() + read_ahead);
}

void basis_table_t::evaluate(std::uint64_t count, std::uint64_t order, std::span<const float> knots,
                             const kernel_t& kernel) {
    const bool ascending = is_ascending(knots.size(), {knots.data()});
    if (ascending)
        find_intervals(count, order, knots, parameters, intervals);
    else
        std::ranges::fill(intervals, no_interval);
    const std::uint64_t stride = (order + run_step - 1) / run_step * run_step;
    for (std::size_t begin = 0, end = 0; begin < parameters.size(); begin = end) {
        end = begin + 1;
        if (intervals[begin] == no_interval) {
            evaluate_one(count, order, parameters[begin], knots, ascending);
            continue;
        }
        while (end < parameters.size() && intervals[end] != no_interval)
            ++end;
        const std::size_t place = values.size();
        values.resize(place + (end - begin) * stride);
        for (std::size_t n = begin; n < end; ++n)
            runs.push_back({intervals[n] - (order - 1), order, place + (n - begin) * stride});
        kernel.evaluate_basis({end - begin, order, knots.data(), &parameters[begin], &intervals[begin],
                               &values[place], stride});
    }
}

void basis_table_t::evaluate_one(std::uint64_t count, std::uint64_t order, float parameter,
                                 std::span<const float> knots, bool ascending) {
    basis_run_t run = basis_run(count, order, parameter, {knots.data()}, ascending, values);
    if (run.count == 0)
        run.values = values.size();
    runs.push_back(run);
    const std::uint64_t steps = run.count == 0 ? 1 : (run.count + run_step - 1) / run_step;
    values.resize(run.values + steps * run_step);
}

}  // namespace ulk3d
