#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "model/math/vectors.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"
#include "tool/foreign/foreign_scenes.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

struct import_t {
    bool result = false;
    scene_t scene;
    std::string log;     ///< what the function tells
    std::string errors;  ///< what else is printed, such as that a picture is missing

    const model_entry_t& model(std::size_t index = 0) const {
        return **std::next(scene.models.begin(), static_cast<std::ptrdiff_t>(index));
    }
    const polygon_t& polygon(std::size_t index = 0) const { return model(index).polygon; }
};

class ImportScene : public gl_test {
  protected:
    import_t import(const std::string& name, const std::string& bytes) {
        import_t read;
        std::ostringstream log;
        const captured_stream errors(std::cerr);
        read.result = ulktool::import_scene(read.scene, folder.write(name, bytes), log);
        read.log = log.str();
        read.errors = errors.text();
        return read;
    }

    temporary_folder_t folder;
};

template <typename Value>
void append(std::string& bytes, const Value& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

const std::string square = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";
const std::vector<pos3> square_corners{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

TEST_F(ImportScene, AnObjSquareIsAStripWithTheCornersOfTheFile) {
    const import_t read = import("a.obj", square + "f 1 2 3 4\n");
    ASSERT_TRUE(read.result) << read.log;
    ASSERT_EQ(read.scene.models.size(), 1U);
    EXPECT_EQ(read.model().kind, model_kind_t::polygon);
    EXPECT_EQ(positions_of(read.polygon()), square_corners);
    EXPECT_EQ(elements_of(read.polygon()).size(), 5U);
    EXPECT_EQ(vertices_of(read.polygon())[0].color, default_color);
    EXPECT_EQ(frames_of(read.polygon())[0].normal, (dir3{0, 0, 1}));
    EXPECT_EQ(read.log, "");
    EXPECT_EQ(read.errors, "");
    EXPECT_EQ(read.polygon().name, folder.path("a.obj"));
}

TEST_F(ImportScene, ObjIndicesMayCountFromTheEnd) {
    const import_t read = import("a.obj", square + "f -4 -3 -2\nf -4 -2 -1\n");
    ASSERT_TRUE(read.result) << read.log;
    EXPECT_EQ(positions_of(read.polygon()), square_corners);
    EXPECT_EQ(elements_of(read.polygon()), (std::vector<std::uint32_t>{1, 2, 0, 3, mark}));
}

TEST_F(ImportScene, ACornerIsSharedOnlyWhereAllAgrees) {
    const import_t read =
        import("a.obj", square + "vt 0 0\nvt 1 0\nvt 1 1\nvt 0.5 0.5\nf 1/1 2/2 3/3\nf 1/1 3/4 4/2\n");
    ASSERT_TRUE(read.result) << read.log;
    EXPECT_EQ(vertices_of(read.polygon()).size(), 5U);
    EXPECT_EQ(vertices_of(read.polygon())[2].texcoord, (txc2{1, 1}));
    EXPECT_EQ(vertices_of(read.polygon())[3].texcoord, (txc2{0.5F, 0.5F}));
}

TEST_F(ImportScene, EachMaterialIsAModelInItsColour) {
    folder.write("a.mtl", "newmtl red\nKd 1 0 0\nnewmtl glass\nKd 0 0 1\nd 0.5\nmap_Kd maps\\sky.png\n");
    const import_t read =
        import("a.obj", "mtllib a.mtl\n" + square + "usemtl red\nf 1 2 3\nusemtl glass\nf 1 3 4\n");
    ASSERT_TRUE(read.result) << read.log;
    ASSERT_EQ(read.scene.models.size(), 2U);
    EXPECT_EQ(vertices_of(read.polygon(0))[0].color, (col3a{1, 0, 0, 1}));
    EXPECT_EQ(vertices_of(read.polygon(1))[0].color, (col3a{0, 0, 1, 0.5F}));
    EXPECT_EQ(read.model(0).texture.texture, "");
    EXPECT_EQ(read.model(1).texture.texture, "maps/sky.png");
}

TEST_F(ImportScene, OtherMapsAreTold) {
    folder.write("a.mtl", "newmtl a\nmap_Bump dents.png\nmap_Ks shine.png\n");
    const import_t read = import("a.obj", "mtllib a.mtl\n" + square + "usemtl a\nf 1 2 3\n");
    EXPECT_TRUE(read.result);
    EXPECT_EQ(read.log, "model 0: bump map dents.png left out\nmodel 0: specular map shine.png left out\n");
}

TEST_F(ImportScene, PointsAndLinesAreToldAndLeftOut) {
    const import_t read = import("a.obj", square + "f 1 2 3\nl 1 2\np 1\n");
    ASSERT_TRUE(read.result);
    EXPECT_EQ(elements_of(read.polygon()).size(), 4U);
    EXPECT_EQ(read.log, "2 faces left out: points, lines and corners that do not exist\n");
}

TEST_F(ImportScene, TrianglesWithoutAPlaceAreToldAndLeftOut) {
    const import_t read = import("a.obj", "v nan 0 0\n" + square + "v 0 inf 0\nf 2 3 4\nf 1 2 3\nf 2 3 6\n");
    ASSERT_TRUE(read.result);
    EXPECT_EQ(positions_of(read.polygon()), (std::vector<pos3>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}));
    EXPECT_EQ(read.log, "model 0: 2 triangles left out: positions that are not finite\n");
}

TEST_F(ImportScene, AFileWithoutTrianglesDoesNotLoad) {
    for (const auto& [name, bytes] : {std::pair{"a.obj", square + "l 1 2\n"}, {"b.obj", std::string()}}) {
        const import_t read = import(name, bytes);
        EXPECT_FALSE(read.result);
        EXPECT_NE(read.log, "");
    }
}

TEST_F(ImportScene, AFileThatIsNotThereDoesNotLoad) {
    scene_t scene;
    std::ostringstream log;
    EXPECT_FALSE(ulktool::import_scene(scene, folder.path("none.obj"), log));
    EXPECT_EQ(log.str(), folder.path("none.obj") + ": file open error.\n");
}

constexpr const char* ply_header =
    " 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
    "property uchar red\nproperty uchar green\nproperty uchar blue\nproperty uchar alpha\n"
    "element face 1\nproperty list uchar int vertex_indices\nend_header\n";

TEST_F(ImportScene, APlyTextHasItsColoursInBytes) {
    const import_t read =
        import("a.ply", std::string("ply\nformat ascii") + ply_header +
                            "0 0 0 255 0 0 255\n1 0 0 0 255 0 255\n0 1 0 0 0 255 51\n3 0 1 2\n");
    ASSERT_TRUE(read.result) << read.log;
    const std::vector<vertex_t> vertices = vertices_of(read.polygon());
    ASSERT_EQ(vertices.size(), 3U);
    EXPECT_EQ(vertices[0].color, (col3a{1, 0, 0, 1}));
    EXPECT_EQ(vertices[2].color, (col3a{0, 0, 1, 0.2F}));
    EXPECT_EQ(elements_of(read.polygon()), (std::vector<std::uint32_t>{0, 1, 2, mark}));
}

template <typename Value>
void append_ordered(std::string& bytes, Value value, bool big_end_first) {
    std::string word;
    append(word, value);
    bytes += big_end_first ? std::string(word.rbegin(), word.rend()) : word;
}

TEST_F(ImportScene, BinaryPlyFilesHaveEitherOrderOfBytes) {
    for (const bool big_end_first : {false, true}) {
        std::string bytes =
            std::string("ply\nformat binary_") + (big_end_first ? "big" : "little") + "_endian" + ply_header;
        for (const pos3& p : {pos3{0.5F, 0, 0}, pos3{1, 0, 0.25F}, pos3{0, 1, -2}}) {
            for (const float coordinate : {p.x, p.y, p.z})
                append_ordered(bytes, coordinate, big_end_first);
            bytes += std::string("\xFF\0\0\xFF", 4);
        }
        bytes += '\3';
        for (const std::int32_t corner : {2, 0, 1})
            append_ordered(bytes, corner, big_end_first);
        const import_t read = import("a.ply", bytes);
        ASSERT_TRUE(read.result) << read.log;
        EXPECT_EQ(positions_of(read.polygon()), (std::vector<pos3>{{0.5F, 0, 0}, {1, 0, 0.25F}, {0, 1, -2}}));
        EXPECT_EQ(vertices_of(read.polygon())[1].color, (col3a{1, 0, 0, 1}));
        EXPECT_EQ(elements_of(read.polygon()), (std::vector<std::uint32_t>{2, 0, 1, mark}));
    }
}

TEST_F(ImportScene, ATextStlFileIsSingleTrianglesLikeABinaryOne) {
    std::string text = "solid two\n";
    for (int z = 0; z < 2; ++z)
        text += "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 " +
                std::to_string(z) + "\nendloop\nendfacet\n";
    const import_t read = import("a.stl", text + "endsolid two\n");
    ASSERT_TRUE(read.result) << read.log;
    EXPECT_EQ(vertices_of(read.polygon()).size(), 6U);
    EXPECT_EQ(elements_of(read.polygon()), (std::vector<std::uint32_t>{0, 1, 2, mark, 3, 4, 5, mark}));
    EXPECT_EQ(vertices_of(read.polygon())[0].color, default_color);
}

/// A glTF file whose buffer, in the file "a.bin" beside it, begins with the corners of a triangle, their
/// normals and texture coordinates.
class ImportGltf : public ImportScene {
  protected:
    ImportGltf() {
        std::string bytes;
        for (const float number : {0.F, 0.F, 0.F, 1.F, 0.F, 0.F, 0.F, 1.F, 0.F})
            append(bytes, number);
        for (int corner = 0; corner < 3; ++corner)
            for (const float number : {0.F, 0.F, 1.F})
                append(bytes, number);
        for (const float number : {0.F, 0.F, 1.F, 0.F, 0.25F, 0.75F})
            append(bytes, number);
        for (const float number : {1.F, 0.F, 0.F, 1.F, 0.F, 0.5F, 0.F, 1.F, 0.F, 0.F, 1.F, 0.5F})
            append(bytes, number);
        folder.write("a.bin", bytes);
    }

    import_t import_nodes(const std::string& nodes, const std::string& primitives,
                          const std::string& more = "") {
        return import("a.gltf", R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[)" +
                                    nodes + R"(],"meshes":[{"primitives":[)" + primitives +
                                    R"(]}],"buffers":[{"uri":"a.bin","byteLength":144}],"bufferViews":[
            {"buffer":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":36},
            {"buffer":0,"byteOffset":72,"byteLength":24},{"buffer":0,"byteOffset":96,"byteLength":48}],
            "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]},
            {"bufferView":1,"componentType":5126,"count":3,"type":"VEC3"},
            {"bufferView":2,"componentType":5126,"count":3,"type":"VEC2"},
            {"bufferView":3,"componentType":5126,"count":3,"type":"VEC4"}])" +
                                    more + "}");
    }

    static constexpr const char* bare = R"({"attributes":{"POSITION":0}})";
    static constexpr const char* whole = R"({"attributes":{"POSITION":0,"NORMAL":1,"TEXCOORD_0":2}})";
};

TEST_F(ImportGltf, ANodeMovesItsMesh) {
    const import_t read = import_nodes(
        R"({"mesh":0,"translation":[10,0,0],"rotation":[0,0,0.70710678,0.70710678],"scale":[2,2,2]})", whole);
    ASSERT_TRUE(read.result) << read.log;
    const std::vector<pos3> positions = positions_of(read.polygon());
    EXPECT_NEAR(positions[1].x, 10, 1e-5F);
    EXPECT_NEAR(positions[1].y, 2, 1e-5F);
    EXPECT_NEAR(positions[2].x, 8, 1e-5F);
    EXPECT_EQ(frames_of(read.polygon())[0].normal, (dir3{0, 0, 1}));
}

TEST_F(ImportGltf, NodesOfNodesAreApplied) {
    const import_t read = import_nodes(
        R"({"children":[1],"scale":[2,1,1]},{"mesh":0,"matrix":[1,0,0,0, 0,1,0,0, 0,0,1,0, 3,0,5,1]})", bare);
    ASSERT_TRUE(read.result) << read.log;
    EXPECT_EQ(positions_of(read.polygon()), (std::vector<pos3>{{6, 0, 5}, {8, 0, 5}, {6, 1, 5}}));
}

TEST_F(ImportGltf, AMeshInTwoPlacesIsTwoModels) {
    const import_t read =
        import_nodes(R"({"children":[1,2]},{"mesh":0},{"mesh":0,"translation":[0,0,3]})", bare);
    ASSERT_TRUE(read.result) << read.log;
    ASSERT_EQ(read.scene.models.size(), 2U);
    EXPECT_EQ(positions_of(read.polygon(0))[1], (pos3{1, 0, 0}));
    EXPECT_EQ(positions_of(read.polygon(1))[1], (pos3{1, 0, 3}));
}

TEST_F(ImportGltf, EachPrimitiveIsAModel) {
    EXPECT_EQ(import_nodes(R"({"mesh":0})", std::string(bare) + "," + whole).scene.models.size(), 2U);
}

TEST_F(ImportGltf, AMirroredMeshStillLooksWhereItsNormalsPoint) {
    const import_t read = import_nodes(R"({"mesh":0,"scale":[-1,1,1]})", whole);
    ASSERT_TRUE(read.result) << read.log;
    EXPECT_EQ(frames_of(read.polygon())[0].normal, (dir3{0, 0, 1}));
    const std::vector<pos3> p = positions_of(read.polygon());
    const std::vector<std::uint32_t> e = elements_of(read.polygon());
    EXPECT_GT(face_normal(p[e[0]], p[e[1]], p[e[2]]).z, 0);
}

TEST_F(ImportGltf, ANormalStaysSquareToASurfaceThatIsStretched) {
    // The triangle is turned to stand on its side, x = -y, and stretched along x.
    const import_t read = import_nodes(
        R"({"children":[1],"scale":[3,1,1]},{"mesh":0,"rotation":[0,0.38268343,0,0.92387953]})", whole);
    ASSERT_TRUE(read.result) << read.log;
    const std::vector<pos3> p = positions_of(read.polygon());
    const dir3 expected = normalize(face_normal(p[0], p[1], p[2]));
    const dir3 normal = frames_of(read.polygon())[0].normal;
    EXPECT_NEAR(dot(normal, expected), 1, 1e-6F);
    EXPECT_NEAR(length(normal), 1, 1e-6F);
}

TEST_F(ImportGltf, MapsCountFromTheBottom) {
    const import_t read = import_nodes(R"({"mesh":0})", whole);
    ASSERT_TRUE(read.result) << read.log;
    const std::vector<vertex_t> vertices = vertices_of(read.polygon());
    EXPECT_EQ(vertices[0].texcoord, (txc2{0, 1}));
    EXPECT_EQ(vertices[2].texcoord, (txc2{0.25F, 0.25F}));
}

TEST_F(ImportGltf, TheMaterialTintsTheColoursOfPoints) {
    const std::string materials =
        R"(,"materials":[{"pbrMetallicRoughness":{"baseColorFactor":[0.5,1,1,1],"baseColorTexture":{"index":0}}}],
        "textures":[{"source":0}],"images":[{"uri":"maps/my%20wood.png"}])";
    folder.write("my wood.png", "no picture");
    const import_t read =
        import_nodes(R"({"mesh":0})", R"({"attributes":{"POSITION":0,"COLOR_0":3},"material":0})", materials);
    ASSERT_TRUE(read.result) << read.log;
    EXPECT_EQ(vertices_of(read.polygon())[0].color, (col3a{0.5F, 0, 0, 1}));
    EXPECT_EQ(vertices_of(read.polygon())[2].color, (col3a{0, 0, 1, 0.5F}));
    const import_t plain =
        import_nodes(R"({"mesh":0})", R"({"attributes":{"POSITION":0},"material":0})", materials);
    EXPECT_EQ(vertices_of(plain.polygon())[0].color, (col3a{0.5F, 1, 1, 1}));
    EXPECT_EQ(vertices_of(import_nodes(R"({"mesh":0})", bare).polygon())[0].color, default_color);
}

TEST_F(ImportGltf, APictureWithinTheFileIsTold) {
    const import_t read =
        import_nodes(R"({"mesh":0})", R"({"attributes":{"POSITION":0},"material":0})",
                     R"(,"materials":[{"pbrMetallicRoughness":{"baseColorTexture":{"index":0}}}],
        "textures":[{"source":0}],"images":[{"bufferView":0,"mimeType":"image/png"}])");
    ASSERT_TRUE(read.result) << read.log;
    EXPECT_EQ(read.model().texture.texture, "");
    EXPECT_EQ(read.log, "model 0: colour map left out: its picture lies within the file\n");
}

TEST_F(ImportScene, AFileThatCrashesTheLibraryDoesNotLoad) {
    // The library reads the list of 255 corners beyond the end of the text.
    const import_t read =
        import("a.ply",
               "ply\nformat ascii 1.0\nelement vertex 1\nproperty list uchar int x\n"
               "element face 1\nproperty list uchar int vertex_indices\nend_header\n255 0 0\n255");
    EXPECT_FALSE(read.result);
    EXPECT_EQ(std::ranges::count(read.log, '\n'), 1) << read.log;
}

TEST_F(ImportScene, AFileForWhichTheLibraryWouldWaitForEverEndsTooEarly) {
    const import_t read =
        import("a.ply", "ply\nformat binary_little_endian 1.0\nelement vertex 4\nproperty float x\n");
    EXPECT_FALSE(read.result);
    EXPECT_EQ(read.log, "the file ends too early\n");
}

TEST_F(ImportScene, DamagedFilesEndInOneLine) {
    const std::string obj = square + "vt 0 0\nvn 0 0 1\nf 1/1/1 2/1/1 3/1/1\n";
    for (std::size_t size = 0; size < obj.size(); size += 5) {
        const import_t read = import("a.obj", obj.substr(0, size));
        if (!read.result) {
            EXPECT_EQ(std::ranges::count(read.log, '\n'), 1) << read.log;
        }
    }
}

}  // namespace
