#include "model/nurbs/nurbs_grid.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

#include "model/math/tolerance.h"
#include "model/nurbs/basis_table.h"
#include "model/nurbs/reached_samples.h"

namespace ulk3d {
namespace {

/// Samples along one side of a tile. Tiles bound the memory for basis functions at high resolutions.
constexpr std::uint32_t tile_side = 512;

/// The seven floats of a control point, and a 1; or weighted sums of these.
using lanes_t = std::array<float, point_floats>;

struct index_range_t {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    std::uint64_t size() const { return end - begin; }
    void include(const index_range_t& other) {
        if (other.begin == other.end)
            return;
        begin = begin == end ? other.begin : std::min(begin, other.begin);
        end = std::max(end, other.end);
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

bool all_are_finite(std::span<const float> values) {
    // One more in the exponent of an infinity or not-a-number runs over into the sign.
    std::uint32_t bits = 0;
    for (const float value : values)
        bits |= (std::bit_cast<std::uint32_t>(value) & 0x7FFFFFFFU) + 0x00800000U;
    return bits >> 31 == 0;
}

/// A net prepared for kernels.
struct prepared_net_t {
    explicit prepared_net_t(const nurbs_net_t<control_point_t>& source)
        : net(source),
          weights(source.weight.data),
          points(source.points.data.size() + read_ahead),
          largest_weight(magnitude(weights)) {
        for (std::size_t n = 0; n < source.points.data.size(); ++n) {
            std::memcpy(&points[n], &source.points.data[n], sizeof(control_point_t));
            points[n].back() = 1;
        }
        weights.resize(weights.size() + read_ahead);
        coordinates_are_finite = all_are_finite({points.data()->data(), points.size() * point_floats});
    }

    const nurbs_net_t<control_point_t>& net;
    std::vector<float> weights;
    std::vector<lanes_t> points;
    float largest_weight;
    bool coordinates_are_finite = false;
};

/// Evaluates one tile of samples.
class tile_t {
  public:
    tile_t(const prepared_net_t& prepared_net, const basis_table_t& row_functions,
           const basis_table_t& column_functions, const kernel_t& chosen_kernel)
        : prepared(prepared_net),
          net(prepared_net.net),
          along_row(row_functions),
          along_column(column_functions),
          kernel(chosen_kernel),
          sums(row_functions.samples().size()) {
        // A term with a basis function of 0 adds nothing, unless the 0 is multiplied by an infinity or
        // not-a-number.
        const float largest_factor = magnitude(along_row.all_values()) * prepared.largest_weight;
        zeros_add_nothing = std::isfinite(largest_factor) && prepared.coordinates_are_finite &&
                            std::isfinite(prepared.largest_weight) &&
                            std::isfinite(magnitude(along_column.all_values()));
        if (zeros_add_nothing && !along_column.is_one_kind())
            find_stretches();
    }

    /// Evaluates those of the samples that are in the tile. True when the surface is local in them.
    bool evaluate(const reached_samples_t& samples, std::uint32_t resolution1, std::span<vertex_t> vertices) {
        const sample_range_t columns = along_row.samples();
        const sample_range_t rows = along_column.samples();
        bool have_span = true;
        for (std::uint32_t r = rows.begin; r < rows.end; ++r) {
            const std::uint32_t begin = std::max(samples[r].begin, columns.begin);
            const std::uint32_t end = std::min(samples[r].end, columns.end);
            const std::uint64_t place = std::uint64_t{r} * resolution1 + begin;
            if (begin >= end || place >= vertices.size())
                continue;
            const std::uint64_t length = std::min<std::uint64_t>(vertices.size() - place, end - begin);
            const index_range_t range{begin - columns.begin, begin - columns.begin + length};
            sum_row(r, range);
            have_span &= make_vertices(r, range, vertices.subspan(place, length));
        }
        return have_span && zeros_add_nothing;
    }

  private:
    /// True when each sample has a mean.
    bool make_vertices(std::uint32_t r, const index_range_t& range, std::span<vertex_t> row) const {
        const float v = along_column.parameter(r);
        if (kernel.make_vertices(sums[range.begin].data(), row.size(),
                                 along_row.all_parameters() + range.begin, v,
                                 reinterpret_cast<float*>(row.data())))
            return true;
        for (std::uint64_t n = 0; n < row.size(); ++n) {
            const auto& [x, y, z, red, green, blue, alpha, denominator] = sums[range.begin + n];
            if (!f_eq(denominator, 0))
                continue;
            const float u = along_row.all_parameters()[range.begin + n];
            const auto [position, color] =
                nurbs_surface_without_span(net, u, v, {{x, y, z}, {red, green, blue, alpha}}, denominator);
            row[n] = {position, color, {u, v}};
        }
        return false;
    }

    /// Sums up samples of a row, which are counted from the first one of the tile.
    void sum_row(std::uint32_t r, const index_range_t& range) {
        if (net.points.data.empty())
            return;
        if (!zeros_add_nothing)
            sum_all_terms(r, range);
        else if (along_column.is_one_kind())
            sum_with_equal_columns(r, range);
        else
            sum_with_different_columns(r, range);
    }

    void sum_with_equal_columns(std::uint32_t r, const index_range_t& range) {
        const basis_run_t& run = along_column.run(0, r);
        const sample_terms_t terms =
            terms_of({run.first, run.first + run.count}, along_column.values_of(run));
        kernel.sum_terms(terms, {range.begin, range.end, run.first, run.first + run.count},
                         sums[range.begin].data());
    }

    void sum_with_different_columns(std::uint32_t r, const index_range_t& range) {
        const index_range_t all_rows = spread_columns(r);
        const sample_terms_t terms = terms_of(all_rows, slab.data());
        for (const auto& [begin, end, columns] : stretches) {
            const std::uint64_t first = std::max(begin, range.begin);
            const std::uint64_t last = std::min(end, range.end);
            if (first >= last)
                continue;
            index_range_t rows;
            for (std::uint64_t i = columns.begin; i < columns.end; ++i)
                rows.include(rows_of_columns[i]);
            kernel.sum_terms(terms, {first, last, rows.begin, rows.end}, sums[first].data());
        }
    }

    sample_terms_t terms_of(const index_range_t& rows, const float* column_values) const {
        return {.step = along_row.step(),
                .kinds = along_row.all_kinds(),
                .runs = along_row.all_runs(),
                .samples = sums.size(),
                .row_values = along_row.all_values().data(),
                .columns = net.count1,
                .weights = prepared.weights.data(),
                .points = prepared.points.data()->data(),
                .first_row = rows.begin,
                .column_values = column_values,
                .rows_differ = !along_row.is_one_kind(),
                .columns_differ = !along_column.is_one_kind()};
    }

    void sum_all_terms(std::uint32_t r, const index_range_t& range) {
        for (std::uint64_t n = range.begin; n < range.end; ++n)
            sums[n] = sum_of_all_terms(along_row.samples().begin + static_cast<std::uint32_t>(n), r);
    }

    lanes_t sum_of_all_terms(std::uint32_t c, std::uint32_t r) const {
        lanes_t sum{};
        for (std::uint64_t j = 0; j < net.count2; ++j) {
            for (std::uint64_t i = 0; i < net.count1; ++i) {
                const std::uint64_t place = j * net.count1 + i;
                const float factor =
                    along_row.value(j, c, i) * net.weight.data[place] * along_column.value(i, r, j);
                for (std::size_t n = 0; n < sum.size(); ++n)
                    sum[n] += factor * prepared.points[place][n];
            }
        }
        return sum;
    }

    /// Writes the functions along the columns at one v, row by row, and returns the rows that they touch.
    index_range_t spread_columns(std::uint32_t r) {
        index_range_t rows;
        rows_of_columns.resize(net.count1);
        for (std::uint64_t i = 0; i < net.count1; ++i) {
            const basis_run_t& run = along_column.run(i, r);
            rows_of_columns[i] = {run.first, run.first + run.count};
            rows.include(rows_of_columns[i]);
        }
        slab.assign(rows.size() * net.count1 + read_ahead, 0.0F);
        for (std::uint64_t i = 0; i < net.count1; ++i) {
            const basis_run_t& run = along_column.run(i, r);
            for (std::uint64_t n = 0; n < run.count; ++n)
                slab[(run.first + n - rows.begin) * net.count1 + i] = along_column.values_of(run)[n];
        }
        return rows;
    }

    /// Samples that touch the same columns but for one are summed together. A row of the net without a share
    /// in a sample adds nothing to it.
    void find_stretches() {
        const std::vector<index_range_t> touched = touched_columns();
        for (std::size_t begin = 0, end = 0; begin < touched.size(); begin = end) {
            stretch_t stretch{begin, begin, touched[begin]};
            for (end = begin; end < touched.size(); ++end) {
                index_range_t columns = touched[end];
                columns.include(stretch.columns);
                if (columns.size() > touched[begin].size() + 1)
                    break;
                stretch = {begin, end + 1, columns};
            }
            stretches.push_back(stretch);
        }
    }

    /// By sample of u.
    std::vector<index_range_t> touched_columns() const {
        std::vector<index_range_t> touched(sums.size());
        for (std::uint64_t j = 0; j < net.count2; ++j) {
            for (std::uint32_t n = 0; n < sums.size(); ++n) {
                const basis_run_t& run = along_row.run(j, along_row.samples().begin + n);
                touched[n].include({run.first, run.first + run.count});
            }
        }
        return touched;
    }

    /// Samples of u, and the columns of the net that have a share in any of them.
    struct stretch_t {
        std::uint64_t begin, end;
        index_range_t columns;
    };

    const prepared_net_t& prepared;
    const nurbs_net_t<control_point_t>& net;
    const basis_table_t& along_row;
    const basis_table_t& along_column;
    const kernel_t& kernel;
    bool zeros_add_nothing;
    std::vector<stretch_t> stretches;            ///< only when the columns' knots differ
    std::vector<index_range_t> rows_of_columns;  ///< by column, at one v; only then, too
    std::vector<float> slab;                     ///< column functions at one v, row by row
    std::vector<lanes_t> sums;                   ///< by sample of u, at one v
};

/// The part of a range that begins at `begin`, as long as a tile.
sample_range_t tile_from(std::uint32_t begin, std::uint32_t range_end) {
    return {begin, begin + std::min(range_end - begin, tile_side)};
}

/// The smallest ranges of columns and rows that hold all samples.
struct sample_box_t {
    explicit sample_box_t(const reached_samples_t& samples) {
        for (std::uint32_t r = 0; r < samples.size(); ++r) {
            if (samples[r].size() == 0)
                continue;
            columns = columns.size() == 0 ? samples[r]
                                          : sample_range_t{std::min(columns.begin, samples[r].begin),
                                                           std::max(columns.end, samples[r].end)};
            rows = {rows.size() == 0 ? r : rows.begin, r + 1};
        }
    }

    sample_range_t columns{0, 0};
    sample_range_t rows{0, 0};
};

bool evaluate_samples(const prepared_net_t& prepared, const reached_samples_t& samples,
                      std::uint32_t resolution1, std::uint32_t resolution2, std::span<vertex_t> vertices,
                      const kernel_t& kernel) {
    const auto& net = prepared.net;
    const knot_table_t row_knots(net.knot1, net.count1, net.order1);
    const knot_table_t column_knots(net.knot2, net.count2, net.order2);
    const auto [columns, rows] = sample_box_t(samples);
    bool is_local = true;
    for (std::uint32_t c = columns.begin; c < columns.end; c = tile_from(c, columns.end).end) {
        const basis_table_t along_row(row_knots, tile_from(c, columns.end), resolution1, kernel);
        for (std::uint32_t r = rows.begin; r < rows.end; r = tile_from(r, rows.end).end) {
            const basis_table_t along_column(column_knots, tile_from(r, rows.end), resolution2, kernel);
            is_local &=
                tile_t(prepared, along_row, along_column, kernel).evaluate(samples, resolution1, vertices);
        }
    }
    return is_local;
}

}  // namespace

bool evaluate_surface(const nurbs_net_t<control_point_t>& net, std::uint32_t resolution1,
                      std::uint32_t resolution2, std::span<vertex_t> vertices, const kernel_t& kernel) {
    return evaluate_samples(prepared_net_t(net), all_samples(resolution1, resolution2), resolution1,
                            resolution2, vertices, kernel);
}

bool evaluate_changes(const nurbs_net_t<control_point_t>& net, std::span<const std::uint64_t> changed_points,
                      std::uint32_t resolution1, std::uint32_t resolution2, std::span<vertex_t> vertices,
                      const kernel_t& kernel) {
    const prepared_net_t prepared(net);
    // All else that decides whether a surface is local is as it was.
    const bool is_local = prepared.coordinates_are_finite;
    const reached_samples_t samples = is_local
                                          ? reached_samples(net, resolution1, resolution2, changed_points)
                                          : all_samples(resolution1, resolution2);
    return evaluate_samples(prepared, samples, resolution1, resolution2, vertices, kernel) && is_local;
}

}  // namespace ulk3d
