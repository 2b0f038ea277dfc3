#include <assimp/scene.h>
#include <gtest/gtest.h>

#include <assimp/Importer.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "model/polygon/strip_walk.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"
#include "tool/foreign/foreign_scenes.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

/// A corner of a triangle, as a file has it.
struct corner_t {
    std::array<float, 3> position, normal;
    std::array<float, 4> color;
    std::array<float, 2> coordinate;
    bool operator==(const corner_t&) const = default;
};

/// The corners of all triangles of the models, in order. The first corner of a triangle is that with the
/// smallest coordinates, as a format may begin with any.
std::vector<corner_t> turned(std::vector<corner_t> corners) {
    for (auto first = corners.begin(); first != corners.end(); first += 3)
        std::rotate(
            first,
            std::min_element(first, first + 3,
                             [](const corner_t& a, const corner_t& b) { return a.position < b.position; }),
            first + 3);
    return corners;
}

std::vector<corner_t> corners_of(const polygon_t& polygon) {
    const std::vector<vertex_t> vertices = vertices_of(polygon);
    const std::vector<frame_t> frames = frames_of(polygon);
    std::vector<corner_t> corners;
    walk_strips(elements_of(polygon), vertices.size(), [&](const strip_triangle_t& triangle) {
        for (const std::uint32_t c : {triangle.a, triangle.b, triangle.c}) {
            const vertex_t& v = vertices[c];
            const dir3& n = frames[c].normal;
            corners.push_back({{v.position.x, v.position.y, v.position.z},
                               {n.x, n.y, n.z},
                               {v.color.r, v.color.g, v.color.b, v.color.a},
                               {v.texcoord.s, v.texcoord.t}});
        }
    });
    return turned(corners);
}

/// What the library reads from a file, of which no code of ours is part.
struct file_t {
    std::vector<corner_t> corners;
    std::string picture;
    aiColor4D diffuse;
    unsigned int meshes = 0;
    std::vector<unsigned int> first_corners;  ///< of each triangle
};

file_t read(const std::string& path) {
    Assimp::Importer importer;
    const aiScene* const scene = importer.ReadFile(path, 0);
    file_t file;
    if (scene == nullptr) {
        ADD_FAILURE() << importer.GetErrorString();
        return file;
    }
    file.meshes = scene->mNumMeshes;
    for (unsigned int i = 0; i < scene->mNumMeshes; ++i) {
        const aiMesh& mesh = *scene->mMeshes[i];
        const aiMaterial& material = *scene->mMaterials[mesh.mMaterialIndex];
        aiString picture;
        material.GetTexture(aiTextureType_DIFFUSE, 0, &picture);
        material.Get(AI_MATKEY_COLOR_DIFFUSE, file.diffuse);
        file.picture = picture.C_Str();
        for (unsigned int f = 0; f < mesh.mNumFaces; ++f) {
            EXPECT_EQ(mesh.mFaces[f].mNumIndices, 3U);
            file.first_corners.push_back(mesh.mFaces[f].mIndices[0]);
            for (unsigned int k = 0; k < 3; ++k) {
                const unsigned int c = mesh.mFaces[f].mIndices[k];
                const aiVector3D &p = mesh.mVertices[c], &n = mesh.mNormals[c];
                const aiColor4D color = mesh.mColors[0] != nullptr ? mesh.mColors[0][c] : file.diffuse;
                const aiVector3D t =
                    mesh.mTextureCoords[0] != nullptr ? mesh.mTextureCoords[0][c] : aiVector3D();
                file.corners.push_back(
                    {{p.x, p.y, p.z}, {n.x, n.y, n.z}, {color.r, color.g, color.b, color.a}, {t.x, t.y}});
            }
        }
    }
    file.corners = turned(file.corners);
    return file;
}

class ExportScene : public gl_test {
  protected:
    /// A bent ribbon of `count` squares, coloured and with a map. Colours are whole bytes.
    model_entry_t& add_ribbon(std::uint32_t count, float size = 1) {
        std::vector<vertex_t> vertices;
        std::vector<frame_t> frames;
        std::vector<std::uint32_t> elements;
        for (std::uint32_t i = 0; i < 2 * (count + 1); ++i) {
            const float x = static_cast<float>(i / 2) / 3, y = static_cast<float>(i % 2);
            vertices.push_back({{x * size, y * size, x * x * size},
                                {static_cast<float>(i) / 255, y, static_cast<float>(250 - i) / 255, 1},
                                {x / 2, y * 0.75F}});
            frames.push_back({{1, 0, 0}, {0, 1, 0}, i % 2 == 0 ? dir3{0, 0, 1} : dir3{0.6F, 0, 0.8F}});
            elements.push_back(i);
        }
        model_entry_t& entry =
            *scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
        build_polygon(entry.polygon, vertices, elements, frames);
        return entry;
    }

    bool write(const std::string& name) {
        std::ostringstream told;
        const bool done = ulktool::export_scene(scene, folder.path(name), told);
        log = told.str();
        return done;
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path("")))
            names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }

    temporary_folder_t folder;
    scene_t scene;
    std::string log;
};

class ExportFormats : public ExportScene, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, ExportFormats, testing::Values("a.obj", "a.ply", "a.gltf", "a.glb"),
                         [](const auto& row) { return std::string(row.param).substr(2); });

void expect_near(const std::vector<corner_t>& got, const std::vector<corner_t>& expected) {
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        EXPECT_EQ(got[i].position, expected[i].position);
        EXPECT_EQ(got[i].normal, expected[i].normal);
        EXPECT_EQ(got[i].coordinate, expected[i].coordinate);
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_NEAR(got[i].color[k], expected[i].color[k], 1e-6F);
    }
}

TEST_P(ExportFormats, CarryPositionsNormalsColoursCoordinatesAndTheMap) {
    model_entry_t& entry = add_ribbon(9);
    entry.texture.texture = "maps/my wood.png";
    ASSERT_TRUE(write(GetParam())) << log;
    EXPECT_EQ(log, "");
    const file_t file = read(folder.path(GetParam()));
    expect_near(file.corners, corners_of(entry.polygon));
    EXPECT_EQ(file.picture, "maps/my wood.png");
}

TEST_P(ExportFormats, ComeBackAsTheModelThatWasWritten) {
    model_entry_t& entry = add_ribbon(9);
    ASSERT_TRUE(write(GetParam())) << log;
    scene_t again;
    std::ostringstream told;
    ASSERT_TRUE(ulktool::import_scene(again, folder.path(GetParam()), told)) << told.str();
    ASSERT_EQ(again.models.size(), 1U);
    const polygon_t& polygon = again.models.front()->polygon;
    EXPECT_EQ(polygon.vertex_count(), entry.polygon.vertex_count());
    expect_near(corners_of(polygon), corners_of(entry.polygon));
}

TEST_P(ExportFormats, KeepMeshesThatAreTiny) {
    // Its corners differ in nothing but their positions, and lie closer together than the distance within
    // which the library joins vertices.
    model_entry_t& entry = add_ribbon(9, 1e-7F);
    std::vector<vertex_t> vertices = vertices_of(entry.polygon);
    for (vertex_t& vertex : vertices)
        vertex = {vertex.position, {1, 0, 0, 1}, {}};
    build_polygon(entry.polygon, vertices, elements_of(entry.polygon),
                  std::vector<frame_t>(vertices.size(), new_vertex_frame));
    ASSERT_TRUE(write(GetParam())) << log;
    const std::vector<corner_t> got = read(folder.path(GetParam())).corners;
    const std::vector<corner_t> expected = corners_of(entry.polygon);
    ASSERT_EQ(got.size(), expected.size());
    // The library's reader of texts loses the last bits of small numbers.
    for (std::size_t i = 0; i < got.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(got[i].position[k], expected[i].position[k], 1e-6F * expected[i].position[k]);
}

TEST_P(ExportFormats, AreTheSameInEveryLocale) {
    add_ribbon(3);
    ASSERT_TRUE(write(GetParam()));
    std::stringstream plain, comma;
    plain << std::ifstream(folder.path(GetParam()), std::ios::binary).rdbuf();
    const std::string former = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    const bool is_written = write(GetParam());
    std::setlocale(LC_ALL, former.c_str());
    ASSERT_TRUE(is_written);
    comma << std::ifstream(folder.path(GetParam()), std::ios::binary).rdbuf();
    EXPECT_EQ(comma.str(), plain.str());
}

TEST_P(ExportFormats, AModelOfOneColourKeepsIt) {
    model_entry_t& entry = *scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    std::vector<vertex_t> vertices = vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    for (vertex_t& vertex : vertices)
        vertex.color = {0.2F, 0.4F, 1, 0.6F};
    build_polygon(entry.polygon, vertices, {0, 1, 2});
    ASSERT_TRUE(write(GetParam())) << log;
    EXPECT_EQ(log, "");
    scene_t again;
    std::ostringstream told;
    ASSERT_TRUE(ulktool::import_scene(again, folder.path(GetParam()), told)) << told.str();
    expect_near(corners_of(again.models.front()->polygon), corners_of(entry.polygon));
}

TEST_P(ExportFormats, TrianglesWithoutAPlaceAreToldAndLeftOut) {
    model_entry_t& entry = *scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    const float infinite = std::numeric_limits<float>::infinity();
    build_polygon(entry.polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {infinite, 1, 0}}),
                  {0, 1, 2, 3});
    ASSERT_TRUE(write(GetParam())) << log;
    EXPECT_EQ(log, "model 0: 1 triangles with positions that are not finite, left out\n");
    EXPECT_EQ(read(folder.path(GetParam())).corners.size(), 3U);
}

TEST_P(ExportFormats, ASceneWithoutTrianglesIsNotWritten) {
    scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    EXPECT_FALSE(write(GetParam()));
    EXPECT_EQ(log, "model 0: no triangles, left out\nthe scene has no triangles\n");
    EXPECT_TRUE(files().empty());
}

TEST_P(ExportFormats, AFileThatCanNotBeWrittenTakesAllBack) {
    add_ribbon(2);
    std::filesystem::create_directory(folder.path(GetParam()));
    EXPECT_FALSE(write(GetParam()));
    EXPECT_EQ(files(), std::vector<std::string>{GetParam()});
}

TEST_F(ExportScene, AFileBesideThatCanNotBeWrittenIsAFailureToo) {
    add_ribbon(2);
    folder.write("a.obj", "former");
    std::filesystem::create_directory(folder.path("a.mtl"));
    EXPECT_FALSE(write("a.obj"));
    std::stringstream former;
    former << std::ifstream(folder.path("a.obj")).rdbuf();
    EXPECT_EQ(former.str(), "former");
    EXPECT_EQ(files(), (std::vector<std::string>{"a.mtl", "a.obj"}));
}

TEST_F(ExportScene, MaterialsAndBuffersLieBesideTheFile) {
    add_ribbon(2);
    ASSERT_TRUE(write("a.obj") && write("b.gltf") && write("c.glb") && write("d.ply"));
    EXPECT_EQ(files(), (std::vector<std::string>{"a.mtl", "a.obj", "b.bin", "b.gltf", "c.glb", "d.ply"}));
}

TEST_F(ExportScene, WhatAFormatDoesNotCarryIsTold) {
    model_entry_t& first = add_ribbon(2);
    first.texture.texture = "a.png";
    first.texture.bumpmap = "dents.png";
    first.texture.specular = "shine.png";
    add_ribbon(2);
    scene.environment.cubetex = "sky.png";
    EXPECT_TRUE(write("a.obj"));
    EXPECT_EQ(
        log,
        "model 0: bumpmap dents.png, not carried by OBJ\nmodel 0: specular shine.png, not carried by OBJ\n"
        "environment sky.png, not carried by OBJ\n");
    EXPECT_EQ(read(folder.path("a.obj")).meshes, 2U);
    EXPECT_TRUE(write("a.ply"));
    EXPECT_EQ(
        log,
        "model 0: bumpmap dents.png, not carried by PLY\nmodel 0: specular shine.png, not carried by PLY\n"
        "model 0: texture a.png, not carried by PLY, which has one for all models\n"
        "environment sky.png, not carried by PLY\n2 models, one in PLY\n");
    EXPECT_EQ(read(folder.path("a.ply")).corners.size(), 24U);
}

TEST_F(ExportScene, ColoursInPlyAreTheNearestBytes) {
    model_entry_t& entry = *scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    std::vector<vertex_t> vertices = vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    for (vertex_t& vertex : vertices)
        vertex.color = {0.5F, 0.999F, -1, 2};
    build_polygon(entry.polygon, vertices, {0, 1, 2});
    ASSERT_TRUE(write("a.ply"));
    EXPECT_EQ(read(folder.path("a.ply")).corners[0].color, (std::array<float, 4>{128.F / 255, 1, 0, 1}));
}

TEST_F(ExportScene, NeighboursInGltfAreNoPartsOfOnePolygon) {
    // The library says of its files that triangles with one first corner, one behind the other, are such.
    add_ribbon(9);
    ASSERT_TRUE(write("a.glb"));
    const std::vector<unsigned int> corners = read(folder.path("a.glb")).first_corners;
    EXPECT_EQ(corners.size(), 18U);
    EXPECT_EQ(std::ranges::adjacent_find(corners), corners.end());
}

TEST_F(ExportScene, OpacityOfPointsIsToldWhereItIsLost) {
    model_entry_t& entry = add_ribbon(2);
    std::vector<vertex_t> vertices = vertices_of(entry.polygon);
    vertices[0].color.a = 0.5F;
    build_polygon(entry.polygon, vertices, elements_of(entry.polygon), frames_of(entry.polygon));
    EXPECT_TRUE(write("a.obj"));
    EXPECT_EQ(log, "model 0: opacity of points, not carried by OBJ\n");
    EXPECT_TRUE(write("a.glb"));
    EXPECT_EQ(log, "");
}

}  // namespace
