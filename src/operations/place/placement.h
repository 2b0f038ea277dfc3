#pragma once

#include <array>
#include <optional>
#include <vector>

#include "model/math/records.h"

namespace ulk3d {

/// A position in double precision.
using position_t = std::array<double, 3>;

/// A change of place, in the order in which its parts were added. Positions go through all of it in double
/// precision and are rounded once in the end. What changes nothing, such as a turn by 0 or 360 degrees,
/// leaves every bit as it is, and turns by right angles are exact.
class placement_t {
  public:
    void move(const position_t& by);
    /// Turns about the x axis, then the y axis, then the z axis through the origin. Positive angles turn
    /// counter-clockwise for someone whom the axis points at.
    void turn(const position_t& degrees);
    /// Multiplies all distances from the origin. `factor` is positive, so that nothing is mirrored.
    void scale(double factor);

    /// Whether there is anything that changes positions.
    bool is_identity() const { return parts.empty(); }
    /// Whether there is anything that changes directions.
    bool has_turns() const;

    position_t of(const pos3& position) const;
    /// Directions are turned, and keep their lengths.
    dir3 of(const dir3& direction) const;

  private:
    struct part_t {
        enum class kind_t { move, turn, scale } kind;
        std::size_t axis = 0;          ///< of a turn
        std::array<double, 3> values;  ///< distances; cosine and sine; a factor
    };
    static position_t after(const part_t& part, position_t p);

    std::vector<part_t> parts;
};

/// Rounds to single precision.
constexpr pos3 rounded(const position_t& p) {
    return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])};
}

}  // namespace ulk3d
