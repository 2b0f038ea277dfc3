#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ulk3d {

/// The units of the maps of a surface, as the solid program samples them.
enum class map_unit_t : std::uint32_t { color = 0, bump = 1, specular = 2, cube = 3 };

/// One-pixel textures for surfaces whose pictures could not be loaded: an empty unit samples black, and the
/// solid program, which always samples its maps, would show such a surface unlit. White colour, a flat
/// normal, full specular strength. The cube map needs none: black is what an environment without a picture
/// shows.
///
/// Owns its GL names. `init` and `bind` need a current context; the destructor does nothing without one.
class neutral_maps_t {
  public:
    neutral_maps_t() = default;
    ~neutral_maps_t();
    neutral_maps_t(const neutral_maps_t&) = delete;
    neutral_maps_t& operator=(const neutral_maps_t&) = delete;

    void init();

    /// Binds the map of `unit`, which must be the active one, unless a texture is bound there already.
    /// Returns whether it did; then `unbind` it after the draw, at the same active unit.
    bool bind(map_unit_t unit) const;
    static void unbind();

  private:
    std::array<std::uint32_t, 3> ids{};
};

}  // namespace ulk3d
