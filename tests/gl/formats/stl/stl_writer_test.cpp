#include "formats/stl/stl_writer.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "formats/stl/stl_reader.h"
#include "gl/formats/scene/block_reading.h"
#include "model/math/vectors.h"
#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/failing_stores.h"
#include "support/gl_context.h"
#include "support/locale_scope.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"
#include "support/stl_bytes.h"
#include "utils/files/byte_output.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

/// The corners of a unit square, a fifth point off its plane, and one far away.
const std::vector<pos3> places = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 0, 1}, {9, 9, 9}};

std::unique_ptr<model_entry_t> model_of(const std::vector<std::uint32_t>& elements) {
    auto entry = std::make_unique<model_entry_t>(model_kind_t::polygon);
    build_polygon(entry->polygon, vertices_at(places), elements);
    entry->polygon.name = "kept";
    return entry;
}

using corners_t = std::array<std::uint32_t, 3>;

class StlWriter : public gl_test {
  protected:
    std::string save(const model_entry_t& entry) {
        const std::string path = folder.path("saved.stl");
        EXPECT_TRUE(save_stl_model(path.c_str(), entry));
        return read_file(path);
    }

    /// The triangles that strips are written as, by the places of their corners in `places`.
    std::vector<corners_t> unrolled(const std::vector<std::uint32_t>& elements) {
        std::vector<corners_t> all;
        for (const stl_triangle_t& triangle : stl_triangles(save(*model_of(elements)))) {
            corners_t corners{};
            for (int i = 0; i < 3; ++i) {
                const pos3 corner = i == 0 ? triangle.a : i == 1 ? triangle.b : triangle.c;
                corners[static_cast<std::size_t>(i)] =
                    static_cast<std::uint32_t>(std::ranges::find(places, corner) - places.begin());
            }
            all.push_back(corners);
        }
        return all;
    }

    temporary_folder_t folder;
};

/// The one triangle of these corners as it is written.
stl_triangle_t written(const pos3& a, const pos3& b, const pos3& c) {
    const dir3 normal = face_normal(a, b, c);
    const float size = length(normal);
    return {size == 0 ? dir3{} : normal * (1 / size), a, b, c};
}

}  // namespace

TEST_F(StlWriter, PutsTheBytesInThePlacesOfTheFormat) {
    const std::string bytes = save(*model_of({0, 1, 2}));
    std::string expected("\x00\x00\x00\x00\x00\x00\x00\x80\x00\x00\x80\x3f", 12);  // the normal 0 -0 1
    expected += std::string(12, '\0');
    expected += std::string("\x00\x00\x80\x3f\x00\x00\x00\x00\x00\x00\x00\x00", 12);  // 1 0 0
    expected += std::string("\x00\x00\x00\x00\x00\x00\x80\x3f\x00\x00\x00\x00", 12);  // 0 1 0
    expected += std::string(2, '\0');
    EXPECT_EQ(bytes.substr(80), std::string("\x01\x00\x00\x00", 4) + expected);
}

TEST_F(StlWriter, AStripOfFourIsTwoTrianglesThatTurnTheSameWay) {
    EXPECT_EQ(unrolled({0, 1, 2, 3, mark}), (std::vector<corners_t>{{0, 1, 2}, {2, 1, 3}}));
    for (const stl_triangle_t& triangle : stl_triangles(save(*model_of({0, 1, 2, 3, mark}))))
        EXPECT_EQ(triangle.normal, (dir3{0, 0, 1}));
}

TEST_F(StlWriter, UnrollsStripsByTheOneRule) {
    const struct {
        std::vector<std::uint32_t> elements;
        std::vector<corners_t> triangles;
    } rows[] = {
        {{}, {}},
        {{mark}, {}},
        {{0, 1}, {}},
        {{0, 1, mark, 2}, {}},
        {{0, 1, mark, 2, 3, mark, 4}, {}},
        {{0, 1, 2}, {{0, 1, 2}}},
        {{0, 1, 2, 3, 4}, {{0, 1, 2}, {2, 1, 3}, {2, 3, 4}}},
        {{0, 1, 2, 3, 4, 5}, {{0, 1, 2}, {2, 1, 3}, {2, 3, 4}, {4, 3, 5}}},
        {{mark, mark, 0, 1, 2, mark, mark, 3, 4, 5, mark}, {{0, 1, 2}, {3, 4, 5}}},
        {{0, 1, 2, 3, mark, 1, 2, 3, 4}, {{0, 1, 2}, {2, 1, 3}, {1, 2, 3}, {3, 2, 4}}},
        {{0, 0, 0, 1}, {{0, 0, 0}, {0, 0, 1}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(unrolled(row.elements), row.triangles) << row.elements.size();
}

TEST_F(StlWriter, AnIndexAtOrAboveTheVertexCountEndsTheStrip) {
    const auto count = static_cast<std::uint32_t>(places.size());
    for (const std::uint32_t stray : {count, count + 1, 0x7fffffffU, 0xfffffffeU, mark}) {
        EXPECT_EQ(unrolled({0, 1, 2, 3, stray, 1, 2, 3}),
                  (std::vector<corners_t>{{0, 1, 2}, {2, 1, 3}, {1, 2, 3}}))
            << stray;
        EXPECT_EQ(unrolled({0, 1, stray, 2, 3, stray}), (std::vector<corners_t>{})) << stray;
    }
}

TEST_F(StlWriter, NormalsAreOfUnitLengthAndFollowTheWinding) {
    const auto triangles = stl_triangles(save(*model_of({4, 1, 3, mark, 3, 1, 4, mark, 5, 0, 4})));
    ASSERT_EQ(triangles.size(), 3U);
    EXPECT_EQ(triangles[0], written(places[4], places[1], places[3]));
    EXPECT_EQ(triangles[1], written(places[3], places[1], places[4]));
    EXPECT_EQ(triangles[2], written(places[5], places[0], places[4]));
    for (const stl_triangle_t& triangle : triangles)
        EXPECT_NEAR(length(triangle.normal), 1, 1e-6);
}

TEST_F(StlWriter, ADegenerateTriangleHasAZeroNormal) {
    const auto triangles = stl_triangles(save(*model_of({0, 0, 1, mark, 0, 3, 5, mark, 2, 2, 2})));
    ASSERT_EQ(triangles.size(), 3U);
    EXPECT_EQ(triangles[0].normal, (dir3{0, 0, 0}));
    EXPECT_EQ(triangles[2].normal, (dir3{0, 0, 0}));
}

TEST_F(StlWriter, NotANumberIsWrittenAsItIs) {
    model_entry_t entry(model_kind_t::polygon);
    build_polygon(entry.polygon, vertices_at({{NAN, 0, 0}, {INFINITY, 0, 0}, {0, -INFINITY, 0}}), {0, 1, 2});
    const auto triangles = stl_triangles(save(entry));
    ASSERT_EQ(triangles.size(), 1U);
    EXPECT_TRUE(std::isnan(triangles[0].a.x));
    EXPECT_TRUE(std::isnan(triangles[0].normal.x));
    EXPECT_EQ(triangles[0].b.x, INFINITY);
    EXPECT_EQ(triangles[0].c.y, -INFINITY);
}

TEST_F(StlWriter, AModelWithoutElementsIsAFileOf84Bytes) {
    model_entry_t vertices_only(model_kind_t::polygon);
    ASSERT_TRUE(vertices_only.polygon.allocate(3, 0));
    model_entry_t nothing(model_kind_t::polygon);
    ASSERT_TRUE(nothing.polygon.allocate(0, 0));
    for (const model_entry_t* entry : {&vertices_only, &nothing}) {
        const captured_stream errors(std::cerr);
        const std::string bytes = save(*entry);
        EXPECT_EQ(bytes.size(), 84U);
        EXPECT_EQ(bytes.substr(80), std::string(4, '\0'));
        EXPECT_EQ(errors.text(), "");
    }
}

TEST_F(StlWriter, AModelWithoutBuffersIsOneToo) {
    const captured_stream errors(std::cerr);
    EXPECT_EQ(save(model_entry_t(model_kind_t::nurbs)).size(), 84U);
    EXPECT_EQ(errors.text(), "array buffer is not allocated.\nelement object is not allocated.\n");
}

TEST_F(StlWriter, TheHeaderIsThePathCutTo80Bytes) {
    const auto entry = model_of({});
    const std::string prefix = folder.path("x");
    for (const std::size_t size :
         {std::size_t{50}, std::size_t{79}, std::size_t{80}, std::size_t{81}, std::size_t{200}}) {
        ASSERT_LT(prefix.size() + 4, size);
        const std::string path = prefix + std::string(size - prefix.size() - 4, 'n') + ".stl";
        ASSERT_EQ(path.size(), size);
        ASSERT_TRUE(save_stl_model(path.c_str(), *entry));
        std::string expected = path.substr(0, 80);
        expected.resize(80, '\0');
        EXPECT_EQ(read_file(path).substr(0, 80), expected) << size;
    }
}

TEST_F(StlWriter, TruncatesWhatWasThere) {
    folder.write("saved.stl", std::string(10'000, 'x'));
    EXPECT_EQ(save(*model_of({0, 1, 2})).size(), 134U);
}

TEST_F(StlWriter, AListIsOneFileOfAllItsTrianglesInOrder) {
    model_list_t models;
    models.push_back(model_of({0, 1, 2, 3}));
    models.push_back(model_of({}));
    models.push_back(model_of({1, 4, 3}));
    const std::string path = folder.path("saved.stl");
    ASSERT_TRUE(save_stl_models(path.c_str(), models));
    EXPECT_EQ(stl_triangles(read_file(path)),
              (std::vector<stl_triangle_t>{written(places[0], places[1], places[2]),
                                           written(places[2], places[1], places[3]),
                                           written(places[1], places[4], places[3])}));
    EXPECT_EQ(models.front()->polygon.name, "kept");

    ASSERT_TRUE(save_stl_models(path.c_str(), {}));
    EXPECT_EQ(read_file(path).size(), 84U);
}

TEST_F(StlWriter, ANurbsModelIsWrittenAsItsTessellation) {
    const block_reading_t patch = read_nurbs(patch_block());
    const auto triangles = stl_triangles(save(*patch.entry));
    ASSERT_EQ(triangles.size(), 2U * 32 * 32);
    for (const stl_triangle_t& triangle : triangles)
        ASSERT_NEAR(std::fabs(triangle.normal.z), 1, 1e-5);
    EXPECT_EQ(patch.entry->nurbs.name, "folder/scene.ulk");
}

TEST_F(StlWriter, ManyTrianglesPassThroughTheBuffer) {
    std::vector<pos3> corners;
    std::vector<std::uint32_t> strip;
    for (std::uint32_t i = 0; i < 20'002; ++i) {
        corners.push_back(
            {static_cast<float>(i), static_cast<float>(i % 2), std::sin(static_cast<float>(i))});
        strip.push_back(i);
    }
    model_entry_t entry(model_kind_t::polygon);
    build_polygon(entry.polygon, vertices_at(corners), strip);
    const counted_mappings mappings;
    const auto triangles = stl_triangles(save(entry));
    // The elements once for the count, and both arrays for the triangles.
    EXPECT_EQ(mappings.count(), 3);
    ASSERT_EQ(triangles.size(), 20'000U);
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const std::size_t first = i + i % 2, second = i + 1 - i % 2;
        ASSERT_EQ(triangles[i], written(corners[first], corners[second], corners[i + 2])) << i;
    }
}

TEST_F(StlWriter, WriteTrianglesTellsTheirNumber) {
    const auto entry = model_of({0, 1, 2, 3, mark, 1, 4, 3});
    const std::string path = folder.path("records");
    libutils::byte_output output(path.c_str(), libutils::fifo_t::needs_reader);
    EXPECT_EQ(write_stl_triangles(output, entry->polygon), 3U);
    EXPECT_EQ(write_stl_triangles(output, model_of({0, 1})->polygon), 0U);
    ASSERT_TRUE(output.complete());
    EXPECT_EQ(read_file(path), stl_record(written(places[0], places[1], places[2])) +
                                   stl_record(written(places[2], places[1], places[3])) +
                                   stl_record(written(places[1], places[4], places[3])));
}

TEST_F(StlWriter, TriangleNormalIsNotNormalised) {
    EXPECT_EQ(triangle_normal({0, 0, 0}, {2, 0, 0}, {0, 3, 0}), (dir3{0, 0, 6}));
    EXPECT_EQ(triangle_normal({0, 3, 0}, {2, 0, 0}, {0, 0, 0}), (dir3{0, 0, -6}));
}

TEST_F(StlWriter, APipeTakesTheFileAsTheCountIsKnownAtItsFirstByte) {
    const std::string fifo = folder.path("fifo.stl");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const int reader = ::open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    model_list_t models;
    models.push_back(model_of({0, 1, 2, 3}));
    models.push_back(model_of({1, 4, 3, mark, 0}));
    ASSERT_TRUE(save_stl_models(fifo.c_str(), models));
    std::string bytes(1000, ' ');
    const ssize_t got = ::read(reader, bytes.data(), bytes.size());
    ::close(reader);
    ASSERT_EQ(got, 84 + 3 * 50);
    std::uint32_t count = 0;
    std::memcpy(&count, bytes.data() + 80, sizeof count);
    EXPECT_EQ(count, 3U);
}

TEST_F(StlWriter, TheFormerFileIsKeptUntilAllTrianglesAreWritten) {
    const std::string path = folder.write("saved.stl", "former");
    const auto entry = model_of({0, 1, 2});
    const captured_stream errors(std::cerr);
    {
        const index_span taken(entry->polygon.elements);
        EXPECT_FALSE(save_stl_model(path.c_str(), *entry));
        while (glGetError() != GL_NO_ERROR) {
        }
    }
    EXPECT_EQ(read_file(path + "~"), "former");
    EXPECT_NE(errors.text().find(path + ": not saved; the former file is " + path + "~\n"),
              std::string::npos);
}

TEST_F(StlWriter, FailsWhenNotAllBytesReachTheFile) {
    model_list_t models;
    models.push_back(model_of({0, 1, 2}));
    const captured_stream errors(std::cerr);
    for (const std::string& path :
         {folder.path("missing/saved.stl"), folder.path(""), std::string("/dev/full"), std::string()}) {
        EXPECT_FALSE(save_stl_model(path.c_str(), *models.front())) << path;
        EXPECT_FALSE(save_stl_models(path.c_str(), models)) << path;
        EXPECT_FALSE(save_stl_models(path.c_str(), {})) << path;
        EXPECT_FALSE(save_stl_ascii(path.c_str(), models)) << path;
    }
    EXPECT_EQ(errors.text(), "");
}

TEST_F(StlWriter, FailsWhenTheVerticesAreNotAtHand) {
    const auto entry = model_of({0, 1, 2});
    {
        const failing_stores no_memory(1);
        ASSERT_TRUE(entry->polygon.vertices.extend(1000));
        while (glGetError() != GL_NO_ERROR) {
        }
    }
    EXPECT_FALSE(save_stl_model(folder.path("saved.stl").c_str(), *entry));
    model_list_t models;
    models.push_back(model_of({0, 1, 2}));
    const captured_stream errors(std::cerr);
    {
        const index_span taken(models.front()->polygon.elements);
        EXPECT_FALSE(save_stl_ascii(folder.path("saved.txt").c_str(), models));
    }
    EXPECT_NE(errors.text(), "");
    while (glGetError() != GL_NO_ERROR) {
    }
}

TEST_F(StlWriter, TheAsciiFormLineByLine) {
    model_list_t models;
    models.push_back(model_of({0, 1, 2, 3, mark}));
    const std::string path = folder.path("text");
    ASSERT_TRUE(save_stl_ascii(path.c_str(), models));
    EXPECT_EQ(read_file(path), "solid " + path +
                                   "\r\n"
                                   "facet normal 0.000000e+00 -0.000000e+00 1.000000e+00\r\n"
                                   "  outer loop\r\n"
                                   "    vertex 0.000000e+00 0.000000e+00 0.000000e+00\r\n"
                                   "    vertex 1.000000e+00 0.000000e+00 0.000000e+00\r\n"
                                   "    vertex 0.000000e+00 1.000000e+00 0.000000e+00\r\n"
                                   "  endloop\r\n"
                                   "endfacet\r\n"
                                   "facet normal -0.000000e+00 0.000000e+00 1.000000e+00\r\n"
                                   "  outer loop\r\n"
                                   "    vertex 0.000000e+00 1.000000e+00 0.000000e+00\r\n"
                                   "    vertex 1.000000e+00 0.000000e+00 0.000000e+00\r\n"
                                   "    vertex 1.000000e+00 1.000000e+00 0.000000e+00\r\n"
                                   "  endloop\r\n"
                                   "endfacet\r\n"
                                   "endsolid \r\n");
}

TEST_F(StlWriter, TheAsciiFormRoundsToSixDigitsBehindThePoint) {
    model_list_t models;
    models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    build_polygon(
        models.back()->polygon,
        vertices_at({{-0.0F, 1.0F / 3, 1234567.5F}, {-1e-10F, 1e30F, 0}, {NAN, INFINITY, -INFINITY}}),
        {0, 1, 2});
    const std::string path = folder.path("text");
    ASSERT_TRUE(save_stl_ascii(path.c_str(), models));
    EXPECT_NE(read_file(path).find("    vertex -0.000000e+00 3.333333e-01 1.234568e+06\r\n"
                                   "    vertex -1.000000e-10 1.000000e+30 0.000000e+00\r\n"
                                   "    vertex nan inf -inf\r\n"),
              std::string::npos);
}

TEST_F(StlWriter, TheAsciiFormOfNothingIsTwoLines) {
    const std::string path = folder.path("text");
    ASSERT_TRUE(save_stl_ascii(path.c_str(), {}));
    EXPECT_EQ(read_file(path), "solid " + path + "\r\nendsolid \r\n");
}

TEST_F(StlWriter, DoesNotDependOnTheLocale) {
    model_list_t models;
    models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    build_polygon(models.back()->polygon, vertices_at({{0.5F, 1234567, 0}, {0, 0, 0.25F}, {3, 1e-5F, 1}}),
                  {0, 1, 2});
    const std::string binary_path = folder.path("file.stl"), ascii_path = folder.path("file.txt");
    std::string binary, ascii;
    for (const char* name : file_locales) {
        const locale_scope_t scope(name);
        if (!scope.is_set())
            continue;
        ASSERT_TRUE(save_stl_models(binary_path.c_str(), models));
        ASSERT_TRUE(save_stl_ascii(ascii_path.c_str(), models));
        if (binary.empty()) {
            binary = read_file(binary_path);
            ascii = read_file(ascii_path);
            EXPECT_NE(ascii.find("    vertex 5.000000e-01 1.234567e+06 0.000000e+00\r\n"), std::string::npos);
        }
        EXPECT_EQ(read_file(binary_path), binary) << name;
        EXPECT_EQ(read_file(ascii_path), ascii) << name;
    }
}

TEST_F(StlWriter, WhatItWritesIsReadBackTriangleByTriangle) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> coordinate(-100, 100);
    std::vector<stl_triangle_t> triangles;
    for (int i = 0; i < 500; ++i) {
        const auto point = [&] { return pos3{coordinate(random), coordinate(random), coordinate(random)}; };
        const pos3 a = point(), b = point(), c = i % 10 == 0 ? a : point();
        triangles.push_back(written(a, b, c));
    }
    scene_t scene;
    ASSERT_TRUE(load_stl(folder.write("first.stl", stl_file(triangles)).c_str(), scene));
    EXPECT_EQ(vertices_of(scene.models.front()->polygon).size(), 1500U);
    EXPECT_EQ(stl_triangles(save(*scene.models.front())), triangles);
}
