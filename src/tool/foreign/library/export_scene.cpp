#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <exception>
#include <memory>
#include <ostream>
#include <string_view>
#include <vector>

#include "tool/foreign/foreign_scenes.h"
#include "tool/foreign/library/exported_model.h"
#include "tool/foreign/library/output_files.h"
#include "tool/foreign/library/written_formats.h"

namespace ulktool {

namespace {

/// A scene in which the library takes its own changes for done. Before it writes, it would make one vertex of
/// those that lie closer to each other than 0.00001, whatever the size of the model, and one mesh of several.
std::unique_ptr<aiScene> scene_without_changes() {
    constexpr std::string_view any_mesh = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvn 0 0 1\nf 1//1 2//1 3//1\n";
    constexpr unsigned int changes = aiProcess_JoinIdenticalVertices | aiProcess_SortByPType |
                                     aiProcess_Triangulate | aiProcess_GenSmoothNormals |
                                     aiProcess_PreTransformVertices;
    Assimp::Importer importer;
    if (importer.ReadFileFromMemory(any_mesh.data(), any_mesh.size(), changes, "obj") == nullptr)
        return nullptr;
    std::unique_ptr<aiScene> scene(importer.GetOrphanedScene());
    // Joined vertices would be taken apart first.
    scene->mFlags &= ~static_cast<unsigned int>(AI_SCENE_FLAGS_NON_VERBOSE_FORMAT);
    return scene;
}

template <typename Item>
void replace(Item**& items, unsigned int& count, std::vector<std::unique_ptr<Item>>& with) {
    for (unsigned int i = 0; i < count; ++i)
        const std::unique_ptr<Item> old(items[i]);
    const std::unique_ptr<Item*[]> old_list(items);
    count = static_cast<unsigned int>(with.size());
    items = new Item*[with.size()];
    std::ranges::transform(with, items, [](std::unique_ptr<Item>& item) { return item.release(); });
}

/// A node for each mesh, below one for the scene.
std::unique_ptr<aiNode> nodes_of(std::span<aiMesh* const> meshes) {
    auto root = std::make_unique<aiNode>("scene");
    std::vector<aiNode*> children;
    for (unsigned int index = 0; index < meshes.size(); ++index) {
        auto node = std::make_unique<aiNode>(meshes[index]->mName.C_Str());
        node->mNumMeshes = 1;
        node->mMeshes = new unsigned int[1]{index};
        children.push_back(node.release());
    }
    root->addChildren(static_cast<unsigned int>(children.size()), children.data());
    return root;
}

/// True when all models have the same colour map, or none.
bool share_a_picture(const ulk3d::model_list_t& models) {
    return std::ranges::all_of(
        models, [&](const auto& entry) { return entry->texture.texture == models.front()->texture.texture; });
}

/// The scene as the library writes it; null when it has no triangle.
std::unique_ptr<aiScene> exported_scene(const ulk3d::scene_t& scene, const written_format_t& format,
                                        std::ostream& log) {
    const bool carries_pictures = format.has_materials || share_a_picture(scene.models);
    std::vector<std::unique_ptr<aiMesh>> meshes;
    std::vector<std::unique_ptr<aiMaterial>> materials;
    std::size_t index = 0;
    for (const auto& entry : scene.models) {
        const std::string name = "model " + std::to_string(index++);
        exported_model_t model = exported_model(*entry, name, format, carries_pictures, log);
        if (!model.mesh) {
            log << name << ": no triangles, left out\n";
            continue;
        }
        if (!carries_pictures && !entry->texture.texture.empty())
            log << name << ": texture " << entry->texture.texture << ", not carried by " << format.name
                << ", which has one for all models\n";
        model.mesh->mMaterialIndex = static_cast<unsigned int>(materials.size());
        meshes.push_back(std::move(model.mesh));
        materials.push_back(std::move(model.material));
    }
    if (!scene.environment.cubetex.empty())
        log << "environment " << scene.environment.cubetex << ", not carried by " << format.name << '\n';
    if (meshes.empty())
        return nullptr;
    if (!format.has_materials && meshes.size() > 1)
        log << std::to_string(meshes.size()) << " models, one in " << format.name << '\n';
    std::unique_ptr<aiScene> exported = scene_without_changes();
    if (!exported)
        throw std::bad_alloc();
    replace(exported->mMeshes, exported->mNumMeshes, meshes);
    replace(exported->mMaterials, exported->mNumMaterials, materials);
    const std::unique_ptr<aiNode> old_root(exported->mRootNode);
    exported->mRootNode = nodes_of({exported->mMeshes, exported->mNumMeshes}).release();
    return exported;
}

/// Writes the files. False when the library, or the system, could not.
bool write_files(const aiScene& scene, const written_format_t& format, const std::string& path) {
    auto owned_files = std::make_unique<output_files_t>(path);
    output_files_t& files = *owned_files;
    Assimp::Exporter exporter;
    exporter.SetIOHandler(owned_files.release());
    const std::string name = path.substr(path.rfind('/') + 1);
    return exporter.Export(&scene, format.library_name, name) == aiReturn_SUCCESS && files.publish();
}

}  // namespace

bool export_scene(const ulk3d::scene_t& scene, const std::string& path, std::ostream& log) {
    const written_format_t* const format = written_format_of(path);
    try {
        const std::unique_ptr<aiScene> exported = exported_scene(scene, *format, log);
        if (!exported)
            log << "the scene has no triangles\n";
        return exported && write_files(*exported, *format, path);
    } catch (const std::exception&) {
        // Memory has run out, or the library can not write the scene.
        return false;
    }
}

}  // namespace ulktool
