#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "render/gl/element_array.h"

namespace ulk3d {

/// The place of a polygon in the strips.
struct polygon_place_t {
    std::uint32_t position = restart_mark;  ///< index into the elements of the triangle's first element
    bool flipped = false;                   ///< an even triangle of its strip: first two vertices swapped
    bool operator==(const polygon_place_t&) const = default;
};

/// The places of polygons, by polygon id.
///
/// The ids of a mesh are as many as one strip of all its elements would have; restart marks use some of them
/// up. Polygons are numbered from 0 on, so the ids that are left over come last. These have no place and take
/// no memory: in a mesh of single triangles they are three of four.
class polygon_places_t {
  public:
    polygon_places_t() = default;
    /// `count` ids, none of which has a place yet.
    explicit polygon_places_t(std::size_t count) : ids(count) {
        places.reserve(count);  // the system gives only as much of it as is written
    }

    /// Gives the next id its place.
    void number(const polygon_place_t& place) {
        assert(places.size() < ids && "there are no more polygons than ids");
        places.push_back(place);
    }
    void clear() { *this = {}; }

    std::size_t size() const { return ids; }
    bool empty() const { return ids == 0; }
    /// The place of an id, which must be below `size()`.
    polygon_place_t operator[](std::size_t id) const {
        return id < places.size() ? places[id] : polygon_place_t{};
    }

  private:
    std::size_t ids = 0;
    std::vector<polygon_place_t> places;
};

}  // namespace ulk3d
