#include <cmath>
#include <vector>

#include "model/math/vectors.h"
#include "model/nurbs/nurbs.h"

namespace ulk3d {
namespace {

constexpr float counter_movement = 0.25F;

float ratio(std::uint64_t part, std::uint64_t whole) {
    return static_cast<float>(part) / static_cast<float>(whole);
}

/// How much of the opposite movement reaches each of `count` columns: nearly all of it next to the dented
/// one, none at the borders.
std::vector<float> column_weights(std::uint64_t count, std::uint64_t dented) {
    std::vector<float> weights(count);
    for (std::uint64_t j = 0; j < count; ++j) {
        if (j < dented)
            weights[j] = bell(ratio(dented - j, dented) - 1);
        else if (j == dented)
            weights[j] = 1;
        else
            weights[j] = bell(ratio(j - dented, count - dented) - 1);
    }
    return weights;
}

/// The same for one row. The two sides differ on purpose: towards the first row the movement falls off like a
/// cosine, towards the last one it rises.
float row_weight(std::uint64_t count, std::uint64_t dented, std::uint64_t row) {
    if (row < dented)
        return std::cos(ratio(dented - row, dented) * 3.1415927F * 0.5F);
    return bell(ratio(count - row, count - dented) - 1);
}

}  // namespace

void nurbs_t::dent(std::uint64_t column, std::uint64_t row, const dir3& delta) {
    if (column >= count1 || row >= count2)
        return;
    const std::vector<float> weights = column_weights(count1, column);
    for (std::uint64_t i = 0; i < count2; ++i) {
        const auto moved = points.row(i);
        for (std::uint64_t j = 0; j < count1; ++j) {
            if (i != row)
                moved[j].position += -delta * weights[j] * row_weight(count2, row, i) * counter_movement;
            else if (j != column)
                moved[j].position += -delta * weights[j] * counter_movement;
            else
                moved[j].position += delta;
        }
    }
    uploadpoints();
}

}  // namespace ulk3d
