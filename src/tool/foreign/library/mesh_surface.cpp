#include "tool/foreign/library/mesh_surface.h"

#include <array>
#include <cmath>

#include "model/vertex.h"
#include "tool/foreign/foreign_picture.h"
#include "utils/text/paths.h"
#include "utils/text/strings.h"

namespace ulktool {

namespace {

constexpr ulk3d::col3a white{1, 1, 1, 1};

/// Maps that are told, as they are not carried: their pictures mean other things there than here.
struct other_map_t {
    aiTextureType type;
    const char* name;
};
constexpr std::array<other_map_t, 5> other_maps{{{aiTextureType_HEIGHT, "bump map"},
                                                 {aiTextureType_NORMALS, "normal map"},
                                                 {aiTextureType_SPECULAR, "specular map"},
                                                 {aiTextureType_OPACITY, "opacity map"},
                                                 {aiTextureType_EMISSIVE, "emission map"}}};

std::string name_of_map(const aiMaterial& material, aiTextureType type) {
    aiString name;
    return material.GetTexture(type, 0, &name) == aiReturn_SUCCESS ? name.C_Str() : "";
}

ulk3d::col3a color_of(const aiMaterial& material, const ulk3d::col3a& otherwise) {
    aiColor4D color;
    if (material.Get(AI_MATKEY_COLOR_DIFFUSE, color) != aiReturn_SUCCESS)
        return otherwise;
    float opacity = 1;
    // A colour of three numbers has the opacity 1 here.
    if (material.Get(AI_MATKEY_OPACITY, opacity) == aiReturn_SUCCESS && color.a == 1)
        color.a = opacity;
    const bool is_finite =
        std::isfinite(color.r) && std::isfinite(color.g) && std::isfinite(color.b) && std::isfinite(color.a);
    return is_finite ? ulk3d::col3a{color.r, color.g, color.b, color.a} : otherwise;
}

unsigned int coordinates_of(const aiMaterial& material, aiTextureType type) {
    int channel = 0;
    material.Get(AI_MATKEY_UVWSRC(type, 0), channel);
    return channel > 0 && channel < AI_MAX_NUMBER_OF_TEXTURECOORDS ? static_cast<unsigned int>(channel) : 0;
}

}  // namespace

mesh_surfaces_t::mesh_surfaces_t(const std::string& file_path)
    : path(file_path), folder(libutils::view_path(path).folder()) {}

bool mesh_surfaces_t::is(const char* ending) const {
    return libutils::has_extension(path, ending) == 0;
}

bool mesh_surfaces_t::has_material(const aiScene& scene, const aiMesh& mesh) const {
    if (mesh.mMaterialIndex >= scene.mNumMaterials || is(".stl") || is(".ply") || is(".off"))
        return false;
    // The reader of glTF puts the material of meshes that have none behind the others.
    if (is_gltf())
        return mesh.mMaterialIndex + 1 < scene.mNumMaterials;
    return std::string(scene.mMaterials[mesh.mMaterialIndex]->GetName().C_Str()) != AI_DEFAULT_MATERIAL_NAME;
}

std::string mesh_surfaces_t::picture_of(const aiScene& scene, const aiMaterial& material,
                                        std::vector<std::string>& lines) const {
    for (const other_map_t& map : other_maps)
        if (const std::string name = name_of_map(material, map.type); !name.empty())
            lines.push_back(std::string(map.name) + " " + name + " left out");
    std::string name = name_of_map(material, aiTextureType_DIFFUSE);
    if (name.empty())
        return name;
    if (scene.GetEmbeddedTexture(name.c_str()) != nullptr) {
        lines.push_back("colour map left out: its picture lies within the file");
        return {};
    }
    std::string picture = name_of_foreign_picture(name, folder);
    if (picture.empty())
        lines.push_back("colour map left out: its name is no name of a file");
    return picture;
}

mesh_surface_t mesh_surfaces_t::surface_of(const aiScene& scene, const aiMesh& mesh,
                                           std::vector<std::string>& lines) const {
    mesh_surface_t surface;
    surface.color = ulk3d::default_color;
    surface.may_share_corners = !is(".stl");
    if (mesh.mMaterialIndex >= scene.mNumMaterials)
        return surface;
    const aiMaterial& material = *scene.mMaterials[mesh.mMaterialIndex];
    surface.picture = picture_of(scene, material, lines);
    surface.coordinates = coordinates_of(material, aiTextureType_DIFFUSE);
    if (has_material(scene, mesh)) {
        surface.color = color_of(material, surface.color);
        surface.tints_points = is_gltf();
    } else if (!surface.picture.empty()) {
        // A map is multiplied by the colour of the points: it shows as it is on white ones.
        surface.color = white;
    }
    return surface;
}

}  // namespace ulktool
