#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "model/math/records.h"
#include "model/vertex.h"

namespace ulk3d {

/// Tells of triangles, by their vertices, whether their boxes meet a box. On which sides of it each vertex
/// lies is found once (the outcodes of line clipping).
class reach_codes_t {
  public:
    reach_codes_t(std::span<const vertex_t> vertices, const box3& reach);

    /// False only when all three vertices are beyond the same side of the box.
    bool may_meet(std::uint32_t a, std::uint32_t b, std::uint32_t c) const {
        return (codes[a] & codes[b] & codes[c]) == 0;
    }

  private:
    std::vector<std::uint8_t> codes;  ///< a bit for each side
};

}  // namespace ulk3d
