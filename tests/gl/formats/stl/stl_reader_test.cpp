#include "formats/stl/stl_reader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "gl/formats/scene/block_reading.h"
#include "model/math/vectors.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/failing_mapping.h"
#include "support/failing_stores.h"
#include "support/gl_context.h"
#include "support/locale_scope.h"
#include "support/poisoned_stores.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"
#include "support/stl_bytes.h"
#include "support/watched_stores.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

struct stl_reading_t {
    bool result = false;
    scene_t scene;
    std::string errors;

    const model_entry_t& model() const { return *scene.models.back(); }
    const polygon_t& polygon() const { return model().polygon; }
};

class StlReader : public gl_test {
  protected:
    stl_reading_t load_path(const std::string& path) {
        stl_reading_t reading;
        const captured_stream errors(std::cerr);
        reading.result = load_stl(path.c_str(), reading.scene);
        reading.errors = errors.text();
        return reading;
    }
    stl_reading_t load(const std::string& bytes) { return load_path(folder.write("model.stl", bytes)); }

    temporary_folder_t folder;
};

/// The bits of a position, which tell also one NaN from another.
std::array<std::uint32_t, 3> bits_of(const pos3& p) {
    return {std::bit_cast<std::uint32_t>(p.x), std::bit_cast<std::uint32_t>(p.y),
            std::bit_cast<std::uint32_t>(p.z)};
}

}  // namespace

TEST_F(StlReader, TakesThePlacesOfTheBytesFromTheFormat) {
    // The header, a count of 1, the normal, three corners and the attribute, written out.
    std::string bytes(80, 'h');
    bytes += std::string("\x01\x00\x00\x00", 4);
    bytes += std::string("\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff", 12);
    bytes += std::string("\x00\x00\x80\x3f\x00\x00\x00\x40\x00\x00\x40\x40", 12);  // 1 2 3
    bytes += std::string("\x00\x00\x80\x40\x00\x00\xa0\x40\x00\x00\xc0\x40", 12);  // 4 5 6
    bytes += std::string("\x00\x00\xe0\x40\x00\x00\x00\x41\x00\x00\x00\xbf", 12);  // 7 8 -0.5
    bytes += std::string("\xff\xff", 2);
    const stl_reading_t reading = load(bytes);
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(positions_of(reading.polygon()), (std::vector<pos3>{{1, 2, 3}, {4, 5, 6}, {7, 8, -0.5F}}));
}

TEST_F(StlReader, AppendsOnePolygonModelNamedByThePath) {
    stl_reading_t reading;
    reading.scene.models.push_back(std::make_unique<model_entry_t>(model_kind_t::nurbs));
    reading.scene.environment.cubetex = "sky.png";
    const std::string path = folder.write("model.stl", stl_file({flat_triangle(), flat_triangle(1)}));
    ASSERT_TRUE(load_stl(path.c_str(), reading.scene));
    ASSERT_EQ(reading.scene.models.size(), 2U);
    EXPECT_EQ(reading.model().kind, model_kind_t::polygon);
    EXPECT_EQ(reading.polygon().name, path);
    EXPECT_EQ(reading.model().texture.texture, "");
    EXPECT_EQ(reading.scene.environment.cubetex, "sky.png");
}

TEST_F(StlReader, EachTriangleHasItsOwnVerticesAndAStripOfItsOwn) {
    const stl_reading_t reading = load(stl_file({flat_triangle(), flat_triangle(), flat_triangle(2)}));
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(positions_of(reading.polygon()), (std::vector<pos3>{{0, 0, 0},
                                                                  {1, 0, 0},
                                                                  {0, 1, 0},
                                                                  {0, 0, 0},
                                                                  {1, 0, 0},
                                                                  {0, 1, 0},
                                                                  {0, 0, 2},
                                                                  {1, 0, 2},
                                                                  {0, 1, 2}}));
    EXPECT_EQ(elements_of(reading.polygon()),
              (std::vector<std::uint32_t>{0, 1, 2, mark, 3, 4, 5, mark, 6, 7, 8, mark}));
    EXPECT_EQ(reading.errors, "");
}

TEST_F(StlReader, ColorsAndTextureCoordinatesAreTheDefaultOnes) {
    const stl_reading_t reading = load(stl_file({flat_triangle()}));
    for (const vertex_t& vertex : vertices_of(reading.polygon())) {
        EXPECT_EQ(vertex.color, (col3a{0.5F, 0.5F, 0.5F, 1.0F}));
        EXPECT_EQ(vertex.texcoord, (txc2{0, 0}));
    }
}

TEST_F(StlReader, FramesFollowTheCorners) {
    const pos3 a{1, 2, 3}, b{4, 0.5F, 2}, c{-2, 3, 7};
    const stl_reading_t reading = load(stl_file({{{0, 0, 1}, a, b, c}}));
    const dir3 u = normalize(b - a), v = normalize(c - a), n = normalize(cross(u, v));
    const frame_t expected{v, cross(v, n), n};
    EXPECT_EQ(frames_of(reading.polygon()), (std::vector<frame_t>{expected, expected, expected}));
    // Of a triangle at right angles the numbers are plain.
    const frame_t flat{{0, 1, 0}, {1, 0, 0}, {0, 0, 1}};
    EXPECT_EQ(frames_of(load(stl_file({flat_triangle()})).polygon()),
              (std::vector<frame_t>{flat, flat, flat}));
}

TEST_F(StlReader, ANormalThatDisagreesWithTheWindingIsDropped) {
    stl_triangle_t turned = flat_triangle();
    std::swap(turned.b, turned.c);
    const stl_reading_t reading = load(stl_file({turned}));
    for (const frame_t& frame : frames_of(reading.polygon()))
        EXPECT_EQ(frame.normal, (dir3{0, 0, -1}));
}

TEST_F(StlReader, HeaderAndAttributesCountForNothing) {
    std::vector<stl_triangle_t> triangles{flat_triangle(), flat_triangle(1)};
    const auto plain = vertices_of(load(stl_file(triangles)).polygon());
    triangles[0].attribute = 65535;
    triangles[1].attribute = 7;
    std::string bytes = stl_file(triangles);
    for (std::size_t i = 0; i < 80; ++i)
        bytes[i] = static_cast<char>(0xff - i);
    EXPECT_EQ(vertices_of(load(bytes).polygon()), plain);
    // A header that begins like a text file's first line is a header all the same.
    bytes.replace(0, 6, "solid ");
    EXPECT_EQ(vertices_of(load(bytes).polygon()), plain);
}

TEST_F(StlReader, DegenerateTrianglesHaveZeroNormals) {
    const pos3 p{1, 1, 1}, q{2, 2, 2}, r{4, 4, 4};
    const stl_reading_t reading = load(stl_file({{{0, 0, 1}, p, p, p}, {{0, 0, 1}, p, q, r}, {{}, p, p, q}}));
    ASSERT_TRUE(reading.result);
    for (const frame_t& frame : frames_of(reading.polygon())) {
        EXPECT_EQ(frame.normal, (dir3{0, 0, 0}));
        EXPECT_EQ(frame.binormal, (dir3{0, 0, 0}));
    }
    // The completion of every load gives a triangle without a normal its default tangent, along b - c.
    EXPECT_EQ(frames_of(reading.polygon())[0].tangent, (dir3{0, 0, 0}));
    EXPECT_EQ(frames_of(reading.polygon())[3].tangent, normalize(q - r));
    EXPECT_EQ(frames_of(reading.polygon())[8].tangent, normalize(p - q));
}

TEST_F(StlReader, NotANumberAndInfinityPassThroughBitByBit) {
    const pos3 strange{std::bit_cast<float>(0x7fc12345U), -INFINITY, std::bit_cast<float>(0xffc00001U)};
    const pos3 smallest{-0.0F, std::numeric_limits<float>::denorm_min(), std::numeric_limits<float>::max()};
    const stl_reading_t reading = load(stl_file({{{}, strange, smallest, {0, 0, 0}}, flat_triangle()}));
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(bits_of(positions_of(reading.polygon())[0]), bits_of(strange));
    EXPECT_EQ(bits_of(positions_of(reading.polygon())[1]), bits_of(smallest));
    EXPECT_TRUE(std::isnan(frames_of(reading.polygon())[0].normal.x));
    EXPECT_EQ(frames_of(reading.polygon())[3].normal, (dir3{0, 0, 1}));
}

TEST_F(StlReader, ThePolygonsAreNumbered) {
    stl_reading_t reading = load(stl_file({flat_triangle(), flat_triangle(1)}));
    reading.scene.models.back()->polygon.selectpolygon(1);
    const auto selected = selectelems_of(reading.polygon());
    ASSERT_EQ(selected.size(), 18U);
    EXPECT_EQ((std::vector<std::uint32_t>(selected.begin(), selected.begin() + 6)),
              (std::vector<std::uint32_t>{mark, mark, mark, 3, 4, 5}));
}

TEST_F(StlReader, AFileCutAnywhereGivesTheTrianglesWhoseCornersAreThere) {
    const std::vector<stl_triangle_t> triangles{flat_triangle(), flat_triangle(1), flat_triangle(2)};
    const std::string whole = stl_file(triangles);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const stl_reading_t reading = load(whole.substr(0, size));
        ASSERT_TRUE(reading.result) << size;
        // 84 bytes come first; 48 of the 50 of a triangle are its normal and its corners.
        std::size_t expected = 0;
        while (expected < 3 && size >= 84 + 50 * expected + 48)
            ++expected;
        ASSERT_EQ(reading.polygon().vertex_count(), 3 * expected) << size;
        ASSERT_EQ(reading.polygon().element_count(), 4 * expected) << size;
        const std::vector<pos3> positions = positions_of(reading.polygon());
        for (std::size_t t = 0; t < expected; ++t) {
            ASSERT_EQ(positions[3 * t], triangles[t].a) << size;
            ASSERT_EQ(positions[3 * t + 1], triangles[t].b) << size;
            ASSERT_EQ(positions[3 * t + 2], triangles[t].c) << size;
        }
        ASSERT_EQ(reading.errors, "") << size;
    }
}

TEST_F(StlReader, AnEmptyFileIsAnEmptyMesh) {
    for (const std::string& bytes : {std::string(), std::string(80, ' '), stl_file({})}) {
        const stl_reading_t reading = load(bytes);
        EXPECT_TRUE(reading.result);
        ASSERT_EQ(reading.scene.models.size(), 1U);
        EXPECT_EQ(reading.polygon().vertex_count(), 0U);
        EXPECT_EQ(reading.polygon().element_count(), 0U);
        EXPECT_EQ(reading.errors, "");
    }
}

TEST_F(StlReader, ACountBeyondTheEndOfTheFileGivesWhatIsThere) {
    // Three or four times some of these is a small number in 32 bits, or none at all.
    for (const std::uint32_t count :
         {3U, 1000U, 0x10000000U, 0x40000000U, 0x40000001U, 0x55555555U, 0x55555556U, 0x7fffffffU,
          0x80000000U, 0xaaaaaaabU, 0xc0000000U, 0xffffffffU}) {
        const stl_reading_t reading = load(stl_file({flat_triangle(), flat_triangle(1)}, count));
        ASSERT_TRUE(reading.result) << count;
        EXPECT_EQ(elements_of(reading.polygon()), (std::vector<std::uint32_t>{0, 1, 2, mark, 3, 4, 5, mark}))
            << count;
        EXPECT_EQ(reading.errors, "") << count;
    }
}

TEST_F(StlReader, WhatFollowsTheLastTriangleIsNotRead) {
    for (const std::uint32_t count : {0U, 1U}) {
        const stl_reading_t reading = load(stl_file({flat_triangle(), flat_triangle(1)}, count));
        ASSERT_TRUE(reading.result);
        EXPECT_EQ(reading.polygon().vertex_count(), 3 * count);
        EXPECT_EQ(reading.polygon().element_count(), 4 * count);
    }
}

TEST_F(StlReader, WhatFollowsTheLastTriangleOfALaterBlockIsNotRead) {
    const stl_reading_t reading = load(stl_file(std::vector(9000, flat_triangle()), 4097));
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(reading.polygon().vertex_count(), 3U * 4097);
    EXPECT_EQ(positions_of(reading.polygon()).back(), flat_triangle().c);
}

TEST_F(StlReader, ATextIsTakenForWhatItsBytesMean) {
    std::string text = "solid model\n";
    for (int i = 0; i < 2; ++i)
        text +=
            "facet normal 0 0 1\n  outer loop\n    vertex 0 0 0\n    vertex 1 0 0\n    vertex 0 1 0\n"
            "  endloop\nendfacet\n";
    text += "endsolid model\n";
    const stl_reading_t reading = load(text);
    ASSERT_TRUE(reading.result);
    // The count is a huge one: letters. There are as many triangles as the text has room for.
    ASSERT_EQ(reading.polygon().vertex_count(), 3 * ((text.size() - 84 + 2) / 50));
    pos3 first;
    std::memcpy(&first, text.data() + 84 + 12, sizeof first);
    EXPECT_EQ(bits_of(positions_of(reading.polygon())[0]), bits_of(first));
    // A text too short for one triangle is an empty mesh.
    EXPECT_EQ(load("solid\nendsolid\n").polygon().vertex_count(), 0U);
}

TEST_F(StlReader, MoreTrianglesThanOneBlockOfTheFileComeInOrder) {
    std::vector<stl_triangle_t> triangles;
    for (int i = 0; i < 9001; ++i)
        triangles.push_back(flat_triangle(static_cast<float>(i)));
    std::string bytes = stl_file(triangles);
    bytes.resize(bytes.size() - 2);
    const counted_mappings mappings;
    const stl_reading_t reading = load(bytes);
    EXPECT_LT(mappings.count(), 40);
    ASSERT_TRUE(reading.result);
    const std::vector<pos3> positions = positions_of(reading.polygon());
    const std::vector<frame_t> frames = frames_of(reading.polygon());
    const std::vector<std::uint32_t> elements = elements_of(reading.polygon());
    ASSERT_EQ(positions.size(), 3 * triangles.size());
    ASSERT_EQ(elements.size(), 4 * triangles.size());
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        const auto first = static_cast<std::uint32_t>(3 * t);
        ASSERT_EQ(positions[3 * t], triangles[t].a);
        ASSERT_EQ(positions[3 * t + 1], triangles[t].b);
        ASSERT_EQ(positions[3 * t + 2], triangles[t].c);
        ASSERT_EQ(frames[3 * t + 2].normal, (dir3{0, 0, 1}));
        ASSERT_EQ(elements[4 * t], first);
        ASSERT_EQ(elements[4 * t + 1], first + 1);
        ASSERT_EQ(elements[4 * t + 2], first + 2);
        ASSERT_EQ(elements[4 * t + 3], mark);
    }
}

TEST_F(StlReader, LeavesNothingOfWhatStoodInNewBuffers) {
    const poisoned_stores poison;
    const stl_reading_t reading = load(stl_file({flat_triangle()}));
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(vertices_of(reading.polygon())[2], (vertex_t{{0, 1, 0}, {0.5F, 0.5F, 0.5F, 1.0F}, {0, 0}}));
    EXPECT_EQ(frames_of(reading.polygon())[2], (frame_t{{0, 1, 0}, {1, 0, 0}, {0, 0, 1}}));
    EXPECT_EQ(pointsizes_of(reading.polygon()), (std::vector<float>{3, 3, 3}));
}

TEST_F(StlReader, WithoutMemoryTheLoadFailsAndLeavesItsModel) {
    const failing_stores no_memory(1);
    const stl_reading_t reading = load(stl_file({flat_triangle()}));
    EXPECT_FALSE(reading.result);
    const std::string told = "buffer_t::MapBufferRange(): ptr is NULL.\narray pointer is NULL.\n";
    EXPECT_EQ(reading.errors.substr(0, told.size()), told);
    EXPECT_EQ(reading.scene.models.size(), 1U);
    while (glGetError() != GL_NO_ERROR) {
    }
}

TEST_F(StlReader, WithoutOneOfItsArraysMappedTheLoadFails) {
    // Those of the allocation, of the reading, and of the end of the load.
    int failed_loads = 0;
    bool has_failed = true;
    for (int n = 1; has_failed; ++n) {
        const failing_mapping mapping(n);
        const bool is_loaded = load(stl_file({flat_triangle()})).result;
        has_failed = mapping.has_failed();
        EXPECT_EQ(is_loaded, !has_failed) << n;
        failed_loads += is_loaded ? 0 : 1;
    }
    EXPECT_GT(failed_loads, 3) << "of the vertices, the frames and the elements";
}

TEST_F(StlReader, AFileLargerThanMemoryIsRefusedBeforeItIsRead) {
    // 200 GB of zeros that take no room on the disk: as many triangles as a count can say.
    const std::string path = folder.write("model.stl", stl_file({}, 0xffffffffU));
    std::filesystem::resize_file(path, std::uintmax_t{84} + std::uintmax_t{0xffffffffU} * 50);
    const stl_reading_t reading = load_path(path);
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.errors, "vertices.allocate() failed.\n");
}

TEST_F(StlReader, APathThatCanNotBeOpenedFailsWithoutAModel) {
    const std::string fifo = folder.path("fifo.stl");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    std::filesystem::create_directory(folder.path("folder.stl"));
    for (const std::string& path : {folder.path("missing.stl"), folder.path("folder.stl"), fifo,
                                    std::string("/dev/zero"), std::string()}) {
        const stl_reading_t reading = load_path(path);
        EXPECT_FALSE(reading.result) << path;
        EXPECT_TRUE(reading.scene.models.empty()) << path;
        EXPECT_EQ(reading.errors, "") << path;
    }
}

TEST_F(StlReader, DoesNotDependOnTheLocale) {
    const std::string bytes = stl_file({{{0, 0, 1}, {0.5F, 1234.5F, 0}, {1, 0, 1e6F}, {0, 1, -0.25F}}});
    const std::vector<vertex_t> expected = vertices_of(load(bytes).polygon());
    for (const char* name : file_locales) {
        const locale_scope_t scope(name);
        if (scope.is_set()) {
            EXPECT_EQ(vertices_of(load(bytes).polygon()), expected) << name;
        }
    }
}

/// Another program may shorten the file after its size was asked for.
TEST_F(StlReader, WhatAFileLosesWhileItIsReadIsAsAllocated) {
    const std::string path =
        folder.write("shrinking.stl", stl_file({flat_triangle(), flat_triangle(1), flat_triangle(2)}));
    stl_reading_t reading;
    {
        const poisoned_stores garbage;
        // Arrays are made when the size is known, and filled after that.
        const watched_stores shrinking([&path](GLsizeiptr) {
            std::filesystem::resize_file(path, 84 + 60);
            return true;
        });
        reading = load_path(path);
    }
    ASSERT_TRUE(reading.result);
    const polygon_t& polygon = reading.polygon();
    ASSERT_EQ(polygon.vertex_count(), 9U);
    EXPECT_EQ(elements_of(polygon),
              (std::vector<std::uint32_t>{0, 1, 2, mark, mark, mark, mark, mark, mark, mark, mark, mark}));
    const std::vector<vertex_t> vertices = vertices_of(polygon);
    const std::vector<frame_t> frames = frames_of(polygon);
    EXPECT_NE(vertices[1], vertex_t{});
    for (std::size_t i = 3; i < vertices.size(); ++i) {
        EXPECT_EQ(vertices[i], vertex_t{}) << i;
        EXPECT_EQ(frames[i], frame_t{}) << i;
    }
}
