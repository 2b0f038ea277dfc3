#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/scene.h"
#include "tool/pictures/scene_pictures.h"

namespace ulktool {

/// The sizes of meshes, of one or of several.
struct mesh_counts_t {
    std::uint64_t vertices = 0, elements = 0, triangles = 0;

    mesh_counts_t& operator+=(const mesh_counts_t& other);
};

/// The net of a NURBS model, first along its rows and then along its columns.
struct net_summary_t {
    std::uint64_t points[2], order[2], resolution[2];
};

struct model_summary_t {
    std::optional<net_summary_t> net;  ///< none in a polygon model
    mesh_counts_t mesh;                ///< of what is drawn
    ulk3d::pos3 low, high;             ///< the box
    std::vector<scene_picture_t> pictures;
};

/// What stands in a scene, apart from its points.
struct scene_summary_t {
    std::string environment;  ///< the name of its cube map; empty for none
    std::vector<model_summary_t> models;

    mesh_counts_t mesh() const;
};

/// Describes a scene that was loaded from `path`. A GL context must be current.
scene_summary_t summary_of(const ulk3d::scene_t& scene, const std::string& path);

/// The triangles that a mesh is drawn with.
std::uint64_t count_triangles(const ulk3d::polygon_t& polygon);

}  // namespace ulktool
