// The text of arrays as they stand in GL.

#include "formats/record_text.h"

#include <iostream>

#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class ModelText : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        std::vector<vertex_t> vertices = vertices_at({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
        vertices[1].color = {0.25F, 0.5F, 0.75F, 1};
        vertices[2].texcoord = {0.125F, 0.625F};
        build_polygon(polygon, vertices, {0, 1, 2, mark, 2, 1, 0},
                      {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                       {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
                       {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}});
    }

    polygon_t polygon;
};

TEST_F(ModelText, EveryAttributeOfAVertexHasItsText) {
    EXPECT_EQ(member_text(polygon.vertices, 0), "1,2,3\n4,5,6\n7,8,9\n");
    EXPECT_EQ(member_text(polygon.vertices, 1), "1,1,1,1\n0.25,0.5,0.75,1\n1,1,1,1\n");
    EXPECT_EQ(member_text(polygon.vertices, 2), "0,0\n0,0\n0.125,0.625\n");
    EXPECT_EQ(member_text(polygon.vertices, 3), "");
    EXPECT_EQ(member_text(polygon.normals, 0), "1,0,0\n0,1,0\n0,0,1\n");
    EXPECT_EQ(member_text(polygon.normals, 1), "0,1,0\n0,0,1\n1,0,0\n");
    EXPECT_EQ(member_text(polygon.normals, 2), "0,0,1\n1,0,0\n0,1,0\n");
}

TEST_F(ModelText, IsStoredWhereItCameFrom) {
    store_member_text(polygon.vertices, 1, "0,0,0,0.5\n");
    store_member_text(polygon.normals, 2, "3,2,1\n");
    EXPECT_EQ(vertices_of(polygon)[0].color, (col3a{0, 0, 0, 0.5F}));
    EXPECT_EQ(vertices_of(polygon)[0].position, (pos3{1, 2, 3}));
    EXPECT_EQ(frames_of(polygon)[0].normal, (dir3{3, 2, 1}));
    EXPECT_EQ(frames_of(polygon)[0].tangent, (dir3{1, 0, 0}));
}

TEST_F(ModelText, StripsAreAnIndexOnEachLine) {
    EXPECT_EQ(index_text(polygon.elements), "0\n1\n2\n-1\n2\n1\n0\n");
    store_index_text(polygon.elements, "2\n0x1\n");
    EXPECT_EQ(elements_of(polygon), (std::vector<std::uint32_t>{2, 1, 2, mark, 2, 1, 0}));
}

TEST_F(ModelText, StoredStripsLeaveTheNumbersOfThePolygonsAndTheirMarks) {
    ASSERT_EQ(polygon.polyidvector.size(), 5U);
    polygon.selectpolygon(0);
    store_index_text(polygon.elements, "2\n1\n0\n");
    EXPECT_EQ(selectelems_of(polygon)[0], 0U);
    EXPECT_EQ(polygon.polyidvector[1].position, 4U);
    polygon.afterload(nullptr);
    EXPECT_EQ(selectelems_of(polygon)[0], 2U);
}

TEST_F(ModelText, IndicesBeyondTheVerticesDrawAndAreKept) {
    store_index_text(polygon.elements, "0\n1\n2\n1000000\n2\n4294967294\n0\n");
    polygon.draw();
    EXPECT_EQ(index_text(polygon.elements), "0\n1\n2\n1000000\n2\n4294967294\n0\n");
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ModelText, AModelWithoutArraysHasNoText) {
    polygon_t empty;
    captured_stream messages(std::cerr);
    EXPECT_EQ(member_text(empty.vertices, 0), "");
    EXPECT_EQ(index_text(empty.elements), "");
    store_member_text(empty.vertices, 0, "1,2,3\n");
    store_index_text(empty.elements, "1\n");
}

}  // namespace
