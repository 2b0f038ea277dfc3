#pragma once

#include <assimp/scene.h>

#include <string>
#include <vector>

#include "model/math/records.h"

namespace ulktool {

/// What the points of a mesh get besides what it has of its own.
struct mesh_surface_t {
    ulk3d::col3a color;             ///< of points without a colour
    bool tints_points = false;      ///< whether colours of points are multiplied by `color`
    std::string picture;            ///< the colour map's name; empty for none
    unsigned int coordinates = 0;   ///< which of the mesh's texture coordinates the map goes by
    bool may_share_corners = true;  ///< whether corners that the file shares may come as separate vertices
};

/// Finds the surfaces of the meshes of one file.
class mesh_surfaces_t {
  public:
    explicit mesh_surfaces_t(const std::string& path);

    /// Adds a line to `lines` for each map that is not carried.
    mesh_surface_t surface_of(const aiScene& scene, const aiMesh& mesh,
                              std::vector<std::string>& lines) const;

  private:
    bool is(const char* ending) const;
    bool is_gltf() const { return is(".gltf") || is(".glb"); }
    /// Whether the file says how the mesh looks; else the material is one that the library has made up.
    bool has_material(const aiScene& scene, const aiMesh& mesh) const;
    std::string picture_of(const aiScene& scene, const aiMaterial& material,
                           std::vector<std::string>& lines) const;

    std::string path;
    std::string folder;
};

}  // namespace ulktool
