#pragma once

#include <cstdint>

#include "model/matrix.h"
#include "model/nurbs/basis.h"
#include "model/vertex.h"

namespace ulk3d {

/// The tables of a rational B-spline surface, laid out as in nurbs_t. Not owned.
template <typename P>
struct nurbs_net_t {
    std::uint64_t count1, count2;
    std::uint64_t order1, order2;
    const matrix_t<float>& knot1;
    const matrix_t<float>& knot2;
    const matrix_t<float>& weight;
    const matrix_t<P>& points;
};

/// The surface at one place: the weighted mean of all control points, each with the factor basis(i, u) *
/// weight * basis(j, v), summed row by row in single precision.
///
/// P is a plain record of floats, all of which are interpolated alike; there is one instantiation, for
/// control_point_t. The factors may sum to 0 (within `eps`) outside the span of the knots: the corners of the
/// surface are then the corner points and its edges the curves of the outer rows and columns; any other place
/// prints a line on the standard error stream and gives not-a-number or huge values.
template <typename P>
P nurbs_surface(std::uint64_t count1, std::uint64_t count2, std::uint64_t order1, std::uint64_t order2,
                float u, float v, const matrix_t<float>& knot1, const matrix_t<float>& knot2,
                const matrix_t<float>& weight, const matrix_t<P>& points);

/// The same in one direction. Where the factors sum to 0 the result is not-a-number.
template <typename P>
P nurbs_curve(std::uint64_t count, std::uint64_t order, float t, knot_view_t knots,
              strided_view_t<float> weights, strided_view_t<P> points);

/// What `nurbs_surface` returns at (u, v) for factors that sum to `denominator`, which is 0 within `eps`, and
/// weighted points that sum to `sums`. A net without points gives zeros at corners and edges.
template <typename P>
P nurbs_surface_without_span(const nurbs_net_t<P>& net, float u, float v, const P& sums, float denominator);

extern template control_point_t nurbs_surface(std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t,
                                              float, float, const matrix_t<float>&, const matrix_t<float>&,
                                              const matrix_t<float>&, const matrix_t<control_point_t>&);
extern template control_point_t nurbs_curve(std::uint64_t, std::uint64_t, float, knot_view_t,
                                            strided_view_t<float>, strided_view_t<control_point_t>);
extern template control_point_t nurbs_surface_without_span(const nurbs_net_t<control_point_t>&, float, float,
                                                           const control_point_t&, float);

}  // namespace ulk3d
