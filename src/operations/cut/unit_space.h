#pragma once

#include <optional>

#include "model/math/records.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// The box of the finite vertices that the strips refer to; empty for a mesh without any.
std::optional<box3> box_of(const strip_mesh_t& mesh);

/// The smallest box around two.
box3 box_around(const box3& a, const box3& b);

/// Moves the middle of a box to the origin and scales it by a power of two until its longest side is above
/// one half and at most one. The tolerance of the cut then means the same for parts of all sizes, and
/// wherever they lie; without it, parts of a millimetre or far from the origin are cut in the wrong places.
class unit_space_t {
  public:
    explicit unit_space_t(const box3& box);

    pos3 to_unit(const pos3& p) const {
        return {to_unit(p.x, middle[0]), to_unit(p.y, middle[1]), to_unit(p.z, middle[2])};
    }
    pos3 from_unit(const pos3& p) const {
        return {from_unit(p.x, middle[0]), from_unit(p.y, middle[1]), from_unit(p.z, middle[2])};
    }

    float to_unit_length(float length) const { return static_cast<float>(length * scale); }

    /// The box, given in the models' own coordinates, with room on all sides; `room` is in unit coordinates.
    box3 widened(const box3& box, double room) const;

  private:
    float to_unit(float v, double m) const { return static_cast<float>((double{v} - m) * scale); }
    float from_unit(float v, double m) const { return static_cast<float>(double{v} / scale + m); }

    double middle[3];
    double scale = 1;
};

}  // namespace ulk3d
