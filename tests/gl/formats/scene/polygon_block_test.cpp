#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "formats/scene/point_fields.h"
#include "gl/formats/scene/block_reading.h"
#include "support/failing_mapping.h"
#include "support/gl_context.h"
#include "support/poisoned_stores.h"
#include "support/scene_text.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

using PolygonBlock = gl_test;

constexpr float byte_unit = 0.003921569F;

std::string frames(std::size_t count) {
    return repeated("tangent 1,0,0", count) + repeated("binormal 0,1,0", count) +
           repeated("normal 0,0,1", count);
}

/// A block of one vertex and no element, whose vertex the given lines make.
block_reading_t read_vertex(const std::string& text) {
    return read_polygon("begin polygon_surface,1,0\n" + text + frames(1) + "end\n");
}

vertex_t only_vertex(const block_reading_t& reading) {
    const auto vertices = vertices_of(*reading.entry);
    EXPECT_EQ(vertices.size(), 1U);
    return vertices.empty() ? vertex_t{} : vertices.front();
}

}  // namespace

TEST_F(PolygonBlock, SmallestBlockLoadsWithoutAMessage) {
    const block_reading_t reading = read_polygon(triangle_block() + "behind\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(reading.last_line, "end");
    EXPECT_EQ(reading.next_line, "behind");
    EXPECT_EQ(reading.counter, 10U + 17);
    EXPECT_EQ(reading.entry->polygon.name, "folder/scene.ulk");

    const auto vertices = vertices_of(*reading.entry);
    ASSERT_EQ(vertices.size(), 3U);
    EXPECT_EQ(vertices[1], (vertex_t{{1, 0, 0}, {0.5F, 0.5F, 0.5F, 1.0F}, {0, 0}}));
    EXPECT_EQ(elements_of(*reading.entry), (std::vector<std::uint32_t>{0, 1, 2, restart_mark}));
    for (const frame_t& frame : frames_of(*reading.entry))
        EXPECT_EQ(frame, (frame_t{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST_F(PolygonBlock, LoadCompletionNumbersThePolygons) {
    const block_reading_t reading = read_polygon(triangle_block());
    ASSERT_EQ(reading.entry->polygon.polyidvector.size(), 2U);
    EXPECT_EQ(reading.entry->polygon.polyidvector[0].position, 0U);
}

TEST_F(PolygonBlock, ColorAndTextureCoordinateStayUntilTheyAreSetAgain) {
    const block_reading_t reading = read_polygon(
        "begin polygon_surface,5,0\nposition 1,0,0\ncolor 255,0,256,51\ntexcoord 1/2,2*3\nposition 2,0,0\n"
        "circle 1,0,0\nfcolor 1+1,-1,0.25,3\nsphere 1,0,0\ntexcoord 7\nposition 5,0,0\n" +
        frames(5) + "end\n");
    ASSERT_TRUE(reading.result);
    const auto vertices = vertices_of(*reading.entry);
    const col3a red{255 * byte_unit, 0, 0, 51 * byte_unit};
    const col3a unclamped{2, -1, 0.25F, 3};
    EXPECT_EQ(vertices[0].color, default_color);
    EXPECT_EQ(vertices[0].texcoord, (txc2{0, 0}));
    EXPECT_EQ(vertices[1].color, red);
    EXPECT_EQ(vertices[1].texcoord, (txc2{0.5F, 6}));
    EXPECT_EQ(vertices[2].color, red);
    EXPECT_EQ(vertices[2].texcoord, (txc2{0.5F, 6}));
    EXPECT_EQ(vertices[3].color, unclamped);
    EXPECT_EQ(vertices[4].color, unclamped);
    EXPECT_EQ(vertices[4].texcoord, (txc2{7, 0}));
}

TEST_F(PolygonBlock, ColorsBeforeTheFirstPointArePerBlock) {
    EXPECT_EQ(only_vertex(read_vertex("color 0,0,0,0\nposition 1,2,3\n")).color, (col3a{0, 0, 0, 0}));
    EXPECT_EQ(only_vertex(read_vertex("position 1,2,3\n")).color, default_color);
}

TEST_F(PolygonBlock, PointsHaveThreeForms) {
    EXPECT_EQ(only_vertex(read_vertex("position 1+1,2*3,-(1)\r\n")).position, (pos3{2, 6, -1}));
    EXPECT_EQ(only_vertex(read_vertex("positions 1,2,3\n")).position, (pos3{1, 2, 3}));
    EXPECT_EQ(only_vertex(read_vertex("circle 2,360/8,5\n")).position, circle_point(2, 45, 5));
    EXPECT_EQ(only_vertex(read_vertex("sphere 2,30,15*4\n")).position, sphere_point(2, 30, 60));
}

TEST_F(PolygonBlock, MissingFieldsAreZero) {
    EXPECT_EQ(only_vertex(read_vertex("position 4\n")).position, (pos3{4, 0, 0}));
    EXPECT_EQ(only_vertex(read_vertex("position 4,5\r\n")).position, (pos3{4, 5, 0}));
    EXPECT_EQ(only_vertex(read_vertex("position \n")).position, (pos3{0, 0, 0}));
    EXPECT_EQ(only_vertex(read_vertex("color 255\nposition 4\n")).color, (col3a{255 * byte_unit, 0, 0, 0}));
}

TEST_F(PolygonBlock, NotANumberPassesThroughFramesOnly) {
    const block_reading_t reading = read_polygon(
        "begin polygon_surface,1,0\nposition nan,0,0\ntangent inf,-inf,0\nbinormal 0,0,nan\n"
        "normal nan,0,0\nend\n");
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(only_vertex(reading).position, (pos3{0, 0, 0}));
    EXPECT_EQ(reading.errors,
              "110 \nn: warning: invalid char detect.\n97 \na: warning: invalid char detect.\n"
              "110 \nn: warning: invalid char detect.\n");
    const frame_t frame = frames_of(*reading.entry).front();
    EXPECT_EQ(frame.tangent.x, INFINITY);
    EXPECT_EQ(frame.tangent.y, -INFINITY);
    EXPECT_TRUE(std::isnan(frame.binormal.z));
    EXPECT_TRUE(std::isnan(frame.normal.x));
}

TEST_F(PolygonBlock, FramesArePlainNumbers) {
    const block_reading_t reading = read_polygon(
        "begin polygon_surface,1,0\nposition 0,0,0\ntangent 1+1,2*3,-(1)\nbinormal 1e1,0x10,-.5\n"
        "normal 1/2,3,4\nend\n");
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(frames_of(*reading.entry).front(), (frame_t{{1, 1, 2}, {10, 16, -0.5F}, {1, 2, 3}}));
}

TEST_F(PolygonBlock, ElementsAreUnsignedIntegers) {
    const block_reading_t reading = read_polygon(
        "begin polygon_surface,1,6\nposition 0,0,0\nelement -1\nelement 0xFFFFFFFF\nelement 010\n"
        "element 7 8\nelement x\nelement 4294967296\r\n" +
        frames(1) + "end\n");
    ASSERT_TRUE(reading.result);
    EXPECT_EQ(elements_of(*reading.entry),
              (std::vector<std::uint32_t>{restart_mark, restart_mark, 8, 7, 0, 0}));
}

TEST_F(PolygonBlock, KindsMayBeInterleavedInAnyWay) {
    const block_reading_t reading = read_polygon(
        "begin polygon_surface,2,3\nnormal 0,0,2\nelement 1\ntangent 2,0,0\nposition 1,1,1\nbinormal 0,2,0\n"
        "element 0\nposition 2,2,2\nelement 1\nbinormal 0,3,0\ntangent 3,0,0\nnormal 0,0,3\nend\n");
    ASSERT_TRUE(reading.result) << reading.messages;
    EXPECT_EQ(vertices_of(*reading.entry)[1].position, (pos3{2, 2, 2}));
    EXPECT_EQ(elements_of(*reading.entry), (std::vector<std::uint32_t>{1, 0, 1}));
    EXPECT_EQ(frames_of(*reading.entry)[0], (frame_t{{2, 0, 0}, {0, 2, 0}, {0, 0, 2}}));
    EXPECT_EQ(frames_of(*reading.entry)[1], (frame_t{{3, 0, 0}, {0, 3, 0}, {0, 0, 3}}));
}

TEST_F(PolygonBlock, TextureKeysFillTheTexture) {
    const block_reading_t reading = read_vertex(
        "texture a b.png\r\ntexfilter false,0,false\naniso 1+1\nbumptex b.png\nspecular s.png\n"
        "mercatorsphere true\nrefractfactor 1/2\nposition 0,0,0\n");
    ASSERT_TRUE(reading.result);
    const texture_t& texture = reading.entry->texture;
    EXPECT_EQ(texture.texture, "a b.png");
    EXPECT_EQ(texture.bumpmap, "b.png");
    EXPECT_EQ(texture.specular, "s.png");
    EXPECT_FALSE(texture.mipmap || texture.nearlinear || texture.maglinear);
    EXPECT_TRUE(texture.mercatorsphere);
    EXPECT_EQ(texture.aniso, 2.0F);
    EXPECT_EQ(texture.refractfactor, 0.5F);
}

TEST_F(PolygonBlock, AKeyWithoutAValueIsAMessageAndUsesUpNoSlot) {
    const struct {
        const char* key;
        const char* message;
    } rows[] = {
        {"color", "11: color parm is not set. color\n"},
        {"fcolor", "11: fcolor parm is not set. fcolor\n"},
        {"texcoord", "11: texcoord parm is not set. texcoord\n"},
        {"position", "11: position parm is not set. position\n"},
        {"circle", "11: circle parm is not set. circle\n"},
        {"sphere", "11: sphere parm is not set. sphere\n"},
        {"element", "11: element parm is not set. element\n"},
        {"tangent", "11: tangent parm is not set. tangent\n"},
        {"binormal", "11: binormal parm is not set. binormal\n"},
        {"normal", "11: normal parm is not set. normal\n"},
        {"mipmap", "11: mipmap is not set. mipmap\n"},
        {"resolution", ""},
    };
    for (const auto& row : rows) {
        const block_reading_t reading = read_polygon(std::string("begin polygon_surface,1,1\n") + row.key +
                                                     "\nposition 1,2,3\nelement 9\n" + frames(1) + "end\n");
        EXPECT_TRUE(reading.result) << row.key;
        EXPECT_EQ(reading.messages, row.message);
        EXPECT_EQ(only_vertex(reading), (vertex_t{{1, 2, 3}, default_color, {0, 0}}));
        EXPECT_EQ(elements_of(*reading.entry), (std::vector<std::uint32_t>{9}));
    }
}

TEST_F(PolygonBlock, ResolutionIsAcceptedAndIgnored) {
    const block_reading_t reading = read_vertex("resolution 5,6\nresolution\nposition 0,0,0\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
}

TEST_F(PolygonBlock, OtherLinesAreIllegalCommands) {
    const block_reading_t reading = read_vertex(
        "knot1 0\r\n\r\n# comment\n\n position 1,2,3\nPosition 1,2,3\nweight 1\nbegin polygon_surface,1,1\n"
        "\xff\xfe\nposition 1,2,3\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages,
              "11: illegal command: knot1 0\r\n15: illegal command:  position 1,2,3\n"
              "16: illegal command: Position 1,2,3\n17: illegal command: weight 1\n"
              "18: illegal command: begin polygon_surface,1,1\n19: illegal command: \xff\xfe\n");
}

TEST_F(PolygonBlock, AFullKindEndsTheBlockAtOnce) {
    const struct {
        const char* line;
        const char* message;
    } rows[] = {
        {"position 9,9,9", "22: polygon vertex(2) >= 2 over.\n"},
        {"position", "22: polygon vertex(2) >= 2 over.\n"},
        {"circle 9,9,9", "22: polygon vertex(2) >= 2 over.\n"},
        {"sphere 9,9,9", "22: polygon vertex(2) >= 2 over.\n"},
        {"element 9", "22: polygon element(3) >= 3 over.\n"},
        {"element", "22: polygon element(3) >= 3 over.\n"},
        {"tangent 9,9,9", "22: polygon tangent(2) >= 2 over.\n"},
        {"binormal 9,9,9", "22: polygon binormal(2) >= 2 over.\n"},
        {"normal 9,9,9", "22: polygon normal(2) >= 2 over.\n"},
        {"normal", "22: polygon normal(2) >= 2 over.\n"},
    };
    for (const auto& row : rows) {
        const block_reading_t reading =
            read_polygon("begin polygon_surface,2,3\n" + repeated("position 1,2,3", 2) +
                         repeated("element 0", 3) + frames(2) + row.line + "\nillegal\nend\n");
        EXPECT_FALSE(reading.result) << row.line;
        EXPECT_EQ(reading.messages, row.message);
        EXPECT_EQ(reading.last_line, row.line);
        EXPECT_EQ(reading.entry->polygon.name, "");
        for (const vertex_t& vertex : vertices_of(*reading.entry))
            EXPECT_EQ(vertex.position, (pos3{1, 2, 3}));
    }
}

TEST_F(PolygonBlock, ABlockOfNothingTakesNothing) {
    const block_reading_t empty = read_polygon("begin polygon_surface,0,0\nend\n");
    EXPECT_TRUE(empty.result);
    EXPECT_EQ(empty.messages, "");
    const block_reading_t over = read_polygon("begin polygon_surface,0,0\nelement 1\nend\n");
    EXPECT_FALSE(over.result);
    EXPECT_EQ(over.messages, "11: polygon element(0) >= 0 over.\n");
}

TEST_F(PolygonBlock, EachShortageHasItsMessage) {
    const struct {
        int vertices, elements, tangents, binormals, normals;
        const char* messages;
    } rows[] = {
        {1, 4, 3, 3, 3, ": vertex(1) < 3: too few vertex.\n"},
        {3, 0, 3, 3, 3, ": element(0) < 4: too few element.\n"},
        {3, 4, 2, 3, 3, ": tangent(2) < 3: too few tangent.\n"},
        {3, 4, 3, 2, 3, ": binormal(2) < 3: too few binormal.\n"},
        {3, 4, 3, 3, 0, ": normal(0) < 3: too few normal.\n"},
    };
    for (const auto& row : rows) {
        const auto count = [](int n) { return static_cast<std::size_t>(n); };
        const block_reading_t reading = read_polygon(
            "begin polygon_surface,3,4\n" + repeated("position 1,2,3", count(row.vertices)) +
            repeated("element 0", count(row.elements)) + repeated("tangent 1,0,0", count(row.tangents)) +
            repeated("binormal 1,0,0", count(row.binormals)) + repeated("normal 1,0,0", count(row.normals)) +
            "end\n");
        const int end = 11 + row.vertices + row.elements + row.tangents + row.binormals + row.normals;
        EXPECT_FALSE(reading.result);
        EXPECT_EQ(reading.messages, std::to_string(end) + row.messages);
        EXPECT_EQ(reading.entry->polygon.name, "") << "an incomplete block is not finished";
    }
}

TEST_F(PolygonBlock, AllShortagesAreTold) {
    const block_reading_t reading = read_polygon("begin polygon_surface,3,4\nend\n");
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.messages,
              "11: vertex(0) < 3: too few vertex.\n11: element(0) < 4: too few element.\n"
              "11: tangent(0) < 3: too few tangent.\n11: binormal(0) < 3: too few binormal.\n"
              "11: normal(0) < 3: too few normal.\n");
}

TEST_F(PolygonBlock, SlotsThatTheFileLeavesUnwrittenAreThoseOfNewArrays) {
    const poisoned_stores poison;
    const block_reading_t reading = read_polygon(
        "begin polygon_surface,3,4\nposition 1,2,3\nelement 5\ntangent 1,1,1\ntangent 2,2,2\nnormal "
        "3,3,3\nend\n");
    EXPECT_FALSE(reading.result);
    const auto vertices = vertices_of(*reading.entry);
    EXPECT_EQ(vertices[0].position, (pos3{1, 2, 3}));
    EXPECT_EQ(vertices[1], vertex_t{});
    EXPECT_EQ(vertices[2], vertex_t{});
    EXPECT_EQ(elements_of(*reading.entry),
              (std::vector<std::uint32_t>{5, restart_mark, restart_mark, restart_mark}));
    const auto all = frames_of(*reading.entry);
    EXPECT_EQ(all[0], (frame_t{{1, 1, 1}, {0, 0, 0}, {3, 3, 3}}));
    EXPECT_EQ(all[1], (frame_t{{2, 2, 2}, {0, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(all[2], frame_t{});
}

TEST_F(PolygonBlock, TheEndOfTheFileFailsWithoutAMessage) {
    std::string complete = triangle_block();
    complete.resize(complete.size() - std::string("end\n").size());
    const block_reading_t reading = read_polygon(complete);
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.messages, "");
    const block_reading_t short_one = read_polygon("begin polygon_surface,3,4\nposition 1,2,3");
    EXPECT_FALSE(short_one.result);
    EXPECT_EQ(short_one.messages, "");
}

TEST_F(PolygonBlock, EndNeedsNoLineFeedAndIsAPrefix) {
    std::string text = triangle_block();
    text.pop_back();
    EXPECT_TRUE(read_polygon(text).result);
    EXPECT_TRUE(read_polygon(text + "less").result);
}

TEST_F(PolygonBlock, WithoutACommaItFailsWithoutAMessage) {
    const block_reading_t reading = read_polygon("begin polygon_surface 3 4\nend\n");
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.counter, 10U);
    EXPECT_EQ(reading.next_line, "end");
}

TEST_F(PolygonBlock, CountsAreTheFieldsBehindTheFirstComma) {
    EXPECT_TRUE(
        read_polygon("begin polygon_surface and more,0x1;0\r\nposition 1,2,3\r\n" + frames(1) + "end\n")
            .result);
    EXPECT_EQ(read_polygon("begin polygon_surface,2\nend\n").messages,
              "11: vertex(0) < 2: too few vertex.\n11: tangent(0) < 2: too few tangent.\n"
              "11: binormal(0) < 2: too few binormal.\n11: normal(0) < 2: too few normal.\n");
}

TEST_F(PolygonBlock, AnArrayThatCanNotBeMappedIsAnAllocateError) {
    // Those of the allocation, of the reading, and of the end of the load.
    int failed_readings = 0;
    bool has_failed = true;
    for (int n = 1; has_failed; ++n) {
        const failing_mapping mapping(n);
        const block_reading_t reading = read_polygon(triangle_block());
        has_failed = mapping.has_failed();
        EXPECT_EQ(reading.result, !has_failed) << n;
        EXPECT_EQ(reading.messages.ends_with(": polygon allocate error.\n"), has_failed) << n;
        failed_readings += reading.result ? 0 : 1;
    }
    EXPECT_GT(failed_readings, 3) << "of the vertices, the frames and the elements";
}

TEST_F(PolygonBlock, CountsThatTheFileCanNotReachAreAnAllocateError) {
    for (const char* counts : {"4294967295,4294967295", "-1,-1", "4294967295,0", "0,4294967295",
                               "100000000,3", "3,100000000", "30000,4", "3,100000"}) {
        const block_reading_t reading =
            read_polygon(std::string("begin polygon_surface,") + counts + "\nposition 1,2,3\nend\n");
        EXPECT_FALSE(reading.result) << counts;
        EXPECT_EQ(reading.messages, "10: polygon allocate error.\n") << counts;
        EXPECT_EQ(reading.last_line, std::string("begin polygon_surface,") + counts);
    }
}

TEST_F(PolygonBlock, CountsThatTheFileReachesAreTakenToTheLastByte) {
    // The shortest lines that fill the slots, with no line feed behind the last one.
    constexpr std::size_t vertices = 9000;
    std::string text = "begin polygon_surface,9000,9000\n" + repeated("circle ", vertices) +
                       repeated("element ", vertices) + repeated("tangent ", vertices) +
                       repeated("binormal ", vertices) + repeated("normal ", vertices);
    text.pop_back();
    EXPECT_EQ(read_polygon(text).messages, "");
    text.pop_back();
    EXPECT_EQ(read_polygon(text).messages, "10: polygon allocate error.\n");
}

TEST_F(PolygonBlock, OfNoVertexIsNotWritten) {
    const model_entry_t empty(model_kind_t::polygon);
    EXPECT_EQ(written_polygon(empty), "");
    EXPECT_EQ(written_polygon(
                  *read_polygon("begin polygon_surface,0,3\nelement 0\nelement 1\nelement 2\nend\n").entry),
              "");
}

TEST_F(PolygonBlock, IsWrittenWhole) {
    const block_reading_t reading = read_polygon(
        "begin polygon_surface,4,5\nposition 1/3,0,-0.5\nfcolor 0.5,0.501,0.5,1\ntexcoord 0.25,1000000\n"
        "position 1,0,0\ncolor 255,0,0,255\nposition 0,1,0\nposition 1,1,1234567\nelement 0\nelement 1\n"
        "element 2\nelement -1\nelement 4294967294\n" +
        repeated("tangent 1,0,0", 4) + repeated("binormal 0,nan,inf", 4) + repeated("normal 0,0,1", 4) +
        "texture t.png\nend\n");
    ASSERT_TRUE(reading.result) << reading.messages;
    std::string expected =
        "begin polygon_surface,4,5\r\nrefractfactor 0\r\ntexture t.png\r\nmipmap true\r\nnearlinear true\r\n"
        "maglinear true\r\naniso 1\r\nmercatorsphere false\r\ntexcoord 0,0\r\nposition 0.333333,0,-0.5\r\n"
        "texcoord 0.25,1e+06\r\nposition 1,0,0\r\ncolor 255,0,0,255\r\ntexcoord 0.25,1e+06\r\n"
        "position 0,1,0\r\ntexcoord 0.25,1e+06\r\nposition 1,1,1.23457e+06\r\nelement 0\r\nelement 1\r\n"
        "element 2\r\nelement -1\r\nelement 4294967294\r\n";
    for (int i = 0; i < 4; ++i)
        expected += "tangent 1,0,0\r\nbinormal 0,nan,inf\r\nnormal 0,0,1\r\n";
    EXPECT_EQ(written_polygon(*reading.entry), expected + "end\r\n");
}

TEST_F(PolygonBlock, AColorOfTheDefaultBytesIsGoneAfterASave) {
    const block_reading_t reading = read_vertex("color 128,128,128,255\nposition 0,0,0\n");
    EXPECT_EQ(only_vertex(reading).color.r, 0.501960832F);
    const std::string text = written_polygon(*reading.entry);
    EXPECT_EQ(text.find("color"), std::string::npos);
    EXPECT_EQ(only_vertex(read_polygon(text)).color, default_color);
}
