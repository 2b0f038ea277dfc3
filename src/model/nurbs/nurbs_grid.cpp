#include "model/nurbs/nurbs_grid.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <vector>

#include "model/math/tolerance.h"
#include "model/nurbs/basis_table.h"

namespace ulk3d {
namespace {

/// Samples along one side of a tile. Tiles bound the memory for basis functions at high resolutions.
constexpr std::uint32_t tile_side = 512;

/// Four floats in one register of the baseline instruction set. Without it, compilers vectorise the sums
/// across terms, with shuffles that cost more than the sums.
using four_floats [[gnu::vector_size(16)]] = float;

/// The seven floats of a control point and a 1: the weighted sum of these also gives the sum of the factors,
/// and the eight floats fill two registers exactly.
struct lanes_t {
    four_floats low{};
    four_floats high{};

    void add(float factor, const lanes_t& point) {
        low += factor * point.low;
        high += factor * point.high;
    }
};

struct index_range_t {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    void include(const basis_run_t& run) {
        if (run.count == 0)
            return;
        begin = begin == end ? run.first : std::min(begin, run.first);
        end = std::max(end, run.first + run.count);
    }
};

/// The largest absolute value; not-a-number when there is one, else infinity when there is one.
float magnitude(std::span<const float> values) {
    // The bits of absolute values are ordered like the values, with infinity and not-a-number on top.
    std::int32_t largest = 0;
    for (const float value : values)
        largest = std::max(largest, std::bit_cast<std::int32_t>(value) & 0x7FFFFFFF);
    return std::bit_cast<float>(largest);
}

/// A net prepared for evaluation.
struct prepared_net_t {
    explicit prepared_net_t(const nurbs_net_t<control_point_t>& source)
        : net(source), largest_weight(magnitude(source.weight.data)) {
        points.reserve(source.points.data.size());
        for (const auto& [p, c] : source.points.data)
            points.push_back(lanes_t{four_floats{p.x, p.y, p.z, c.r}, four_floats{c.g, c.b, c.a, 1.0F}});
        largest_coordinate = magnitude({reinterpret_cast<const float*>(points.data()), points.size() * 8});
    }

    const nurbs_net_t<control_point_t>& net;
    std::vector<lanes_t> points;
    float largest_weight;
    float largest_coordinate = 0;
};

/// The basis functions along the columns at one v: that of row j in column i is values[(j - rows.begin) *
/// row_step + i * column_step].
struct column_factors_t {
    index_range_t rows;
    const float* values = nullptr;
    std::uint64_t row_step = 0;
    std::uint64_t column_step = 0;
};

/// Evaluates one tile of samples.
class tile_t {
  public:
    tile_t(const prepared_net_t& prepared_net, const basis_table_t& row_functions,
           const basis_table_t& column_functions)
        : prepared(prepared_net),
          net(prepared_net.net),
          along_row(row_functions),
          along_column(column_functions) {
        // A term with a basis function of 0 adds nothing, unless the 0 is multiplied by an infinity or
        // not-a-number.
        const float largest_factor = magnitude(along_row.all_values()) * prepared.largest_weight;
        zeros_add_nothing = std::isfinite(largest_factor) && std::isfinite(prepared.largest_coordinate) &&
                            std::isfinite(prepared.largest_weight) &&
                            std::isfinite(magnitude(along_column.all_values()));
        if (!along_column.is_one_kind())
            find_touched_columns();
    }

    void evaluate(std::uint32_t resolution1, std::span<vertex_t> vertices) {
        const sample_range_t columns = along_row.samples();
        const sample_range_t rows = along_column.samples();
        for (std::uint32_t r = rows.begin; r < rows.end; ++r) {
            const column_factors_t factors = factors_at(r);
            for (std::uint32_t c = columns.begin; c < columns.end; ++c) {
                const std::uint64_t place = std::uint64_t{r} * resolution1 + c;
                if (place >= vertices.size())
                    return;
                vertices[place] = vertex_at(c, r, factors);
            }
        }
    }

  private:
    vertex_t vertex_at(std::uint32_t c, std::uint32_t r, const column_factors_t& factors) const {
        const float u = along_row.parameter(c);
        const float v = along_column.parameter(r);
        const lanes_t sum = zeros_add_nothing ? sum_of_terms(c, r, factors) : sum_of_all_terms(c, r);
        const auto [x, y, z, red, green, blue, alpha, denominator] = std::bit_cast<std::array<float, 8>>(sum);
        if (f_eq(denominator, 0)) {
            const control_point_t sums{{x, y, z}, {red, green, blue, alpha}};
            const auto [position, color] = nurbs_surface_without_span(net, u, v, sums, denominator);
            return {position, color, {u, v}};
        }
        const float scale = 1 / denominator;
        return {{x * scale, y * scale, z * scale},
                {red * scale, green * scale, blue * scale, alpha * scale},
                {u, v}};
    }

    /// The sum over the control points whose basis functions are not 0, row by row.
    lanes_t sum_of_terms(std::uint32_t c, std::uint32_t r, const column_factors_t& factors) const {
        lanes_t sum{};
        const index_range_t rows = factors.column_step == 0 ? factors.rows : touched_rows(c, r);
        for (std::uint64_t j = rows.begin; j < rows.end; ++j) {
            const basis_run_t& run = along_row.run(j, c);
            const std::uint64_t first = j * net.count1 + run.first;
            const float* const row_values = along_row.values_of(run);
            const float* const weights = net.weight.data.data() + first;
            const lanes_t* const points = prepared.points.data() + first;
            const float* const column_values = factors.values + (j - factors.rows.begin) * factors.row_step +
                                               run.first * factors.column_step;
            for (std::uint64_t n = 0; n < run.count; ++n) {
                const float factor = row_values[n] * weights[n] * column_values[n * factors.column_step];
                sum.add(factor, points[n]);
            }
        }
        return sum;
    }

    lanes_t sum_of_all_terms(std::uint32_t c, std::uint32_t r) const {
        lanes_t sum{};
        for (std::uint64_t j = 0; j < net.count2; ++j) {
            for (std::uint64_t i = 0; i < net.count1; ++i) {
                const std::uint64_t place = j * net.count1 + i;
                const float factor =
                    along_row.value(j, c, i) * net.weight.data[place] * along_column.value(i, r, j);
                sum.add(factor, prepared.points[place]);
            }
        }
        return sum;
    }

    column_factors_t factors_at(std::uint32_t r) {
        if (net.count1 == 0)
            return {};
        if (along_column.is_one_kind()) {
            const basis_run_t& run = along_column.run(0, r);
            return {{run.first, run.first + run.count}, along_column.values_of(run), 1, 0};
        }
        index_range_t rows;
        for (std::uint64_t i = 0; i < net.count1; ++i)
            rows.include(along_column.run(i, r));
        slab.assign((rows.end - rows.begin) * net.count1, 0.0F);
        for (std::uint64_t i = 0; i < net.count1; ++i) {
            const basis_run_t& run = along_column.run(i, r);
            for (std::uint64_t n = 0; n < run.count; ++n)
                slab[(run.first + n - rows.begin) * net.count1 + i] = along_column.values_of(run)[n];
        }
        return {rows, slab.data(), net.count1, 1};
    }

    void find_touched_columns() {
        const sample_range_t samples = along_row.samples();
        touched_columns.resize(samples.size());
        for (std::uint64_t j = 0; j < net.count2; ++j) {
            for (std::uint32_t c = samples.begin; c < samples.end; ++c)
                touched_columns[c - samples.begin].include(along_row.run(j, c));
        }
    }

    /// The rows that contribute to a sample when the columns have different knots.
    index_range_t touched_rows(std::uint32_t c, std::uint32_t r) const {
        const index_range_t columns = touched_columns[c - along_row.samples().begin];
        index_range_t rows;
        for (std::uint64_t i = columns.begin; i < columns.end; ++i)
            rows.include(along_column.run(i, r));
        return rows;
    }

    const prepared_net_t& prepared;
    const nurbs_net_t<control_point_t>& net;
    const basis_table_t& along_row;
    const basis_table_t& along_column;
    bool zeros_add_nothing;
    std::vector<index_range_t> touched_columns;  ///< by sample of u; only when the columns' knots differ
    std::vector<float> slab;                     ///< column functions at one v, row by row
};

}  // namespace

void evaluate_surface(const nurbs_net_t<control_point_t>& net, std::uint32_t resolution1,
                      std::uint32_t resolution2, std::span<vertex_t> vertices) {
    const prepared_net_t prepared(net);
    const knot_table_t row_knots(net.knot1, net.count1, net.order1);
    const knot_table_t column_knots(net.knot2, net.count2, net.order2);
    const auto tile_from = [](std::uint32_t begin, std::uint32_t resolution) {
        return sample_range_t{begin, begin + std::min(resolution - begin, tile_side)};
    };
    for (std::uint32_t c = 0; c < resolution1; c = tile_from(c, resolution1).end) {
        const basis_table_t along_row(row_knots, tile_from(c, resolution1), resolution1);
        for (std::uint32_t r = 0; r < resolution2; r = tile_from(r, resolution2).end) {
            const basis_table_t along_column(column_knots, tile_from(r, resolution2), resolution2);
            tile_t(prepared, along_row, along_column).evaluate(resolution1, vertices);
        }
    }
}

}  // namespace ulk3d
