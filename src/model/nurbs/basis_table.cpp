#include "model/nurbs/basis_table.h"

#include <string_view>
#include <unordered_map>

namespace ulk3d {
namespace {

std::string_view bytes_of(std::span<const float> values) {
    const auto bytes = std::as_bytes(values);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
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

basis_table_t::basis_table_t(const knot_table_t& table, sample_range_t samples, std::uint32_t resolution)
    : kinds(table.kinds), range(samples) {
    parameters.reserve(range.size());
    for (std::uint32_t sample = range.begin; sample < range.end; ++sample)
        parameters.push_back(static_cast<float>(sample) / static_cast<float>(resolution - 1));

    runs.reserve(table.rows_of_kinds.size() * range.size());
    for (const std::uint64_t row : table.rows_of_kinds) {
        const knot_view_t knots{table.knots.row(row).data()};
        const bool ascending = is_ascending(table.knots.columns, knots);
        for (const float parameter : parameters)
            runs.push_back(basis_run(table.count, table.order, parameter, knots, ascending, values));
    }
}

}  // namespace ulk3d
