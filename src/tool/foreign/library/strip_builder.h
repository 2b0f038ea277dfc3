#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace ulktool {

using corners_t = std::array<std::uint32_t, 3>;

/// Puts triangles into strips in the order in which they come: a triangle that lies on the last edge of the
/// one before it, as the two halves of a square do, goes on with its strip, any other begins a new one. Each
/// keeps its winding, and its place among the others; which corner comes first may change.
class strip_builder_t {
  public:
    void add(const corners_t& triangle);

    /// The elements of all triangles (model/polygon/strip_walk.h). Each strip ends in a restart mark.
    std::vector<std::uint32_t> finish();

  private:
    void begin_strip(const corners_t& triangle);
    /// Goes on with the strip if it can.
    bool continue_strip(const corners_t& triangle);

    std::vector<std::uint32_t> elements;
    std::size_t strip_size = 0;  ///< elements of the last strip, 0 before the first
};

}  // namespace ulktool
