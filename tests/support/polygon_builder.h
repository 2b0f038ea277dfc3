#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "model/polygon/polygon.h"

namespace ulk_test {

/// The restart mark under a name that is short enough for tables.
inline constexpr std::uint32_t mark = ulk3d::restart_mark;

/// A white vertex at a place.
ulk3d::vertex_t vertex_at(float x, float y, float z);

/// White vertices at the places.
std::vector<ulk3d::vertex_t> vertices_at(const std::vector<ulk3d::pos3>& places);

/// Makes `polygon` one of these vertices and strips, all normals zero before its load is completed: every
/// triangle has its default frame. Fails the test when it can not be allocated.
void build_polygon(ulk3d::polygon_t& polygon, const std::vector<ulk3d::vertex_t>& vertices,
                   const std::vector<std::uint32_t>& elements);

/// The same with given frames for the first vertices; the others have zero ones.
void build_polygon(ulk3d::polygon_t& polygon, const std::vector<ulk3d::vertex_t>& vertices,
                   const std::vector<std::uint32_t>& elements, const std::vector<ulk3d::frame_t>& frames);

/// Selects these polygons and no others.
void select_polygons(ulk3d::polygon_t& polygon, const std::set<std::uint32_t>& ids);

/// What stands in the buffers: records in use.
std::vector<ulk3d::vertex_t> vertices_of(const ulk3d::polygon_t& polygon);
std::vector<ulk3d::frame_t> frames_of(const ulk3d::polygon_t& polygon);
std::vector<std::uint32_t> elements_of(const ulk3d::polygon_t& polygon);
std::vector<std::uint32_t> selectelems_of(const ulk3d::polygon_t& polygon);
std::vector<float> pointsizes_of(const ulk3d::modeling_t& model);

}  // namespace ulk_test
