#include "model/nurbs/nurbs_evaluate.h"

#include <array>
#include <bit>
#include <iostream>
#include <string>

#include "model/math/tolerance.h"
#include "utils/text/numbers.h"

namespace ulk3d {
namespace {

template <typename P>
using floats_of = std::array<float, sizeof(P) / sizeof(float)>;

/// The sum of weighted records and the sum of their factors.
template <typename P>
struct weighted_sum_t {
    floats_of<P> sums{};
    float denominator = 0;

    void add(float factor, const P& point) {
        const auto floats = std::bit_cast<floats_of<P>>(point);
        for (std::size_t n = 0; n < sums.size(); ++n)
            sums[n] += factor * floats[n];
        denominator += factor;
    }
    P mean() const {
        const float scale = 1 / denominator;
        floats_of<P> result;
        for (std::size_t n = 0; n < sums.size(); ++n)
            result[n] = sums[n] * scale;
        return std::bit_cast<P>(result);
    }
};

/// The curve of one row of the net.
template <typename P>
P row_curve(const nurbs_net_t<P>& net, std::uint64_t row, float u) {
    return nurbs_curve<P>(net.count1, net.order1, u, {net.knot1.row(row).data()},
                          {net.weight.row(row).data()}, {net.points.row(row).data()});
}

/// The curve of one column of the net.
template <typename P>
P column_curve(const nurbs_net_t<P>& net, std::uint64_t column, float v) {
    return nurbs_curve<P>(net.count2, net.order2, v, {net.knot2.row(column).data()},
                          {net.weight.data.data() + column, net.weight.columns},
                          {net.points.data.data() + column, net.points.columns});
}

void report_unreached(float u, float v) {
    std::string line = "nurbs_surface(): is not reached point reached. u=";
    libutils::append_number(line, u);
    line += ", v=";
    libutils::append_number(line, v);
    line += '\n';
    std::cerr << line;
}

}  // namespace

template <typename P>
P nurbs_surface_without_span(const nurbs_net_t<P>& net, float u, float v, const P& sums, float denominator) {
    if (u == 0 || u == 1 || v == 0 || v == 1) {
        if (net.count1 == 0 || net.count2 == 0)
            return P{};
        const std::uint64_t last_row = net.count2 - 1;
        const std::uint64_t last_column = net.count1 - 1;
        if ((u == 0 || u == 1) && (v == 0 || v == 1))
            return net.points.row(v == 0 ? 0 : last_row)[u == 0 ? 0 : last_column];
        if (u == 0 || u == 1)
            return column_curve(net, u == 0 ? 0 : last_column, v);
        return row_curve(net, v == 0 ? 0 : last_row, u);
    }
    report_unreached(u, v);
    auto result = std::bit_cast<floats_of<P>>(sums);
    for (float& value : result)
        value /= denominator;
    return std::bit_cast<P>(result);
}

template <typename P>
P nurbs_surface(std::uint64_t count1, std::uint64_t count2, std::uint64_t order1, std::uint64_t order2,
                float u, float v, const matrix_t<float>& knot1, const matrix_t<float>& knot2,
                const matrix_t<float>& weight, const matrix_t<P>& points) {
    weighted_sum_t<P> sum;
    for (std::uint64_t j = 0; j < count2; ++j) {
        for (std::uint64_t i = 0; i < count1; ++i) {
            const float along_row = basis(i, order1, u, {knot1.row(j).data()});
            const float along_column = basis(j, order2, v, {knot2.row(i).data()});
            sum.add(along_row * weight.row(j)[i] * along_column, points.row(j)[i]);
        }
    }
    if (!f_eq(sum.denominator, 0))
        return sum.mean();
    const nurbs_net_t<P> net{count1, count2, order1, order2, knot1, knot2, weight, points};
    return nurbs_surface_without_span(net, u, v, std::bit_cast<P>(sum.sums), sum.denominator);
}

template <typename P>
P nurbs_curve(std::uint64_t count, std::uint64_t order, float t, knot_view_t knots,
              strided_view_t<float> weights, strided_view_t<P> points) {
    weighted_sum_t<P> sum;
    for (std::uint64_t i = 0; i < count; ++i)
        sum.add(basis(i, order, t, knots) * weights[i], points[i]);
    return sum.mean();
}

template control_point_t nurbs_surface(std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, float,
                                       float, const matrix_t<float>&, const matrix_t<float>&,
                                       const matrix_t<float>&, const matrix_t<control_point_t>&);
template control_point_t nurbs_curve(std::uint64_t, std::uint64_t, float, knot_view_t, strided_view_t<float>,
                                     strided_view_t<control_point_t>);
template control_point_t nurbs_surface_without_span(const nurbs_net_t<control_point_t>&, float, float,
                                                    const control_point_t&, float);

}  // namespace ulk3d
