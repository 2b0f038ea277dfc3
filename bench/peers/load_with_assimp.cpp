#include <assimp/scene.h>
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>

#include <string_view>

#include "load_way.h"

/// assimp without any of its later steps. From STL: three vertices with the file's normal for each triangle.
/// From OBJ: the same three, with position, normal and texture coordinate, and indices.
namespace {

Assimp::Importer& importer() {
    static auto* const the_importer = new Assimp::Importer;
    return *the_importer;
}

}  // namespace

void prepare_to_load() {
    importer();
}

bool load_file(const char* path) {
    return importer().ReadFile(path, 0) != nullptr;
}

bool save_file(const char* path) {
    const char* const binary_stl = "stlb";
    const char* const form = std::string_view(path).ends_with(".stl") ? binary_stl : "obj";
    return Assimp::Exporter().Export(importer().GetScene(), form, path) == aiReturn_SUCCESS;
}

std::uint64_t triangles_loaded() {
    std::uint64_t count = 0;
    const aiScene& scene = *importer().GetScene();
    for (unsigned n = 0; n < scene.mNumMeshes; ++n)
        count += scene.mMeshes[n]->mNumFaces;
    return count;
}
