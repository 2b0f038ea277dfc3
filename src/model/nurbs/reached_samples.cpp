#include "model/nurbs/reached_samples.h"

#include <algorithm>
#include <limits>

namespace ulk3d {
namespace {

/// The first sample for whose parameter `holds` is true, given that it stays true after it.
template <typename Holds>
std::uint32_t first_sample(std::uint32_t resolution, Holds holds) {
    std::uint32_t begin = 0;
    for (std::uint32_t end = resolution; begin < end;) {
        const std::uint32_t middle = begin + (end - begin) / 2;
        if (holds(sample_parameter(middle, resolution)))
            end = middle;
        else
            begin = middle + 1;
    }
    return begin;
}

/// The samples whose parameters lie between the least and the greatest of these knots. A not-a-number bounds
/// no interval: functions of order 1 that rest on it are 0.
sample_range_t samples_between(std::span<const float> knots, std::uint32_t resolution) {
    float low = std::numeric_limits<float>::infinity();
    float high = -low;
    for (const float knot : knots) {
        if (knot < low)
            low = knot;
        if (knot > high)
            high = knot;
    }
    const std::uint32_t begin = first_sample(resolution, [low](float t) { return t >= low; });
    const std::uint32_t end = first_sample(resolution, [high](float t) { return t > high; });
    return begin < end ? sample_range_t{begin, end} : sample_range_t{0, 0};
}

void include(sample_range_t& range, const sample_range_t& other) {
    if (range.begin == range.end)
        range = other;
    else
        range = {std::min(range.begin, other.begin), std::max(range.end, other.end)};
}

}  // namespace

reached_samples_t reached_samples(const nurbs_net_t<control_point_t>& net, std::uint32_t resolution1,
                                  std::uint32_t resolution2, std::span<const std::uint64_t> points) {
    reached_samples_t reached(resolution2, {0, 0});
    for (const std::uint64_t point : points) {
        const std::uint64_t row = point / net.count1;
        const std::uint64_t column = point % net.count1;
        const sample_range_t columns =
            samples_between(net.knot1.row(row).subspan(column, net.order1 + 1), resolution1);
        const sample_range_t rows =
            samples_between(net.knot2.row(column).subspan(row, net.order2 + 1), resolution2);
        if (columns.size() == 0)
            continue;
        for (std::uint32_t r = rows.begin; r < rows.end; ++r)
            include(reached[r], columns);
    }
    return reached;
}

reached_samples_t all_samples(std::uint32_t resolution1, std::uint32_t resolution2) {
    return reached_samples_t(resolution2, {0, resolution1});
}

}  // namespace ulk3d
