#include "tool/tidy/tidy_polygon.h"

#include <gtest/gtest.h>

#include "support/cut_meshes.h"
#include "support/failing_mapping.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"
#include "support/triangle_soup.h"

namespace {

using namespace ulk3d;
using namespace ulktool;
using namespace ulk_test;

constexpr tidy_options_t weld{.weld_tolerance = 0, .most_triangles = {}, .smooth_degrees = {}};

class TidyPolygon : public gl_test {
  protected:
    void build(const strip_mesh_t& mesh) {
        build_polygon(polygon, mesh.vertices, mesh.elements, mesh.frames);
        polygon.name = "part.stl";
    }
    strip_mesh_t mesh() const { return {vertices_of(polygon), frames_of(polygon), elements_of(polygon)}; }

    polygon_t polygon;
};

TEST_F(TidyPolygon, PutsTheNewMeshInPlaceOfTheOld) {
    const strip_mesh_t soup = soup_of(sphere({0, 0, 0}, 1, 2));
    build(soup);
    select_polygons(polygon, {3, 5});
    polygon.select(7);
    const tidied_t tidied = tidy_polygon(polygon, weld);
    EXPECT_EQ(tidied.failure, "");
    EXPECT_EQ(tidied.before.vertices, 960U);
    EXPECT_EQ(tidied.after.vertices, 162U);
    EXPECT_EQ(tidied.after.triangles, 320U);
    EXPECT_EQ(tidied.after.bytes, 162U * 72 + 4 * polygon.element_count());
    EXPECT_EQ(surface_of(mesh()), surface_of(soup));
    EXPECT_EQ(polygon.vertex_count(), 162U);
    EXPECT_EQ(polygon.name, "part.stl");
    EXPECT_TRUE(polygon.selectpolygons().empty());
    EXPECT_EQ(polygon.selection, std::vector<bool>(162));
    // The polygons can be selected by their numbers.
    EXPECT_NE(polygon.polyidvector[319].position, mark);
    EXPECT_EQ(polygon.polyidvector[320].position, mark);
    polygon.selectpolygon(0);
    EXPECT_EQ(selectelems_of(polygon)[0], elements_of(polygon)[0]);
}

TEST_F(TidyPolygon, WithoutTrianglesItStays) {
    EXPECT_EQ(tidy_polygon(polygon, weld).failure, "") << "never allocated";
    build_polygon(polygon, vertices_at({{1, 2, 3}, {1, 2, 3}}), {});
    EXPECT_EQ(tidy_polygon(polygon, weld).after.vertices, 2U);
    EXPECT_EQ(polygon.vertex_count(), 2U);
    const std::vector<std::uint32_t> elements{0, 1, 1, mark, 0, 1, 9};
    build_polygon(polygon, vertices_at({{1, 2, 3}, {1, 2, 3}}), elements);
    const tidied_t tidied = tidy_polygon(polygon, weld);
    EXPECT_EQ(tidied.failure, "");
    EXPECT_EQ(tidied.after.vertices, 2U);
    EXPECT_EQ(elements_of(polygon), elements);
}

TEST_F(TidyPolygon, ThatWouldLoseAllTrianglesFailsAndStays) {
    const strip_mesh_t ball = sphere({0, 0, 0}, 1, 1);
    build(ball);
    const strip_mesh_t before = mesh();
    tidy_options_t coarse = weld;
    coarse.weld_tolerance = 10;
    // The colours of this ball differ from place to place.
    EXPECT_EQ(tidy_polygon(polygon, coarse).failure, "");
    build(soup_of(ball));
    const strip_mesh_t soup = mesh();
    EXPECT_EQ(tidy_polygon(polygon, coarse).failure, "no triangle would be left");
    EXPECT_EQ(mesh(), soup);
}

TEST_F(TidyPolygon, ThatCanNotBeMappedFails) {
    build(soup_of(sphere({0, 0, 0}, 1, 1)));
    const strip_mesh_t before = mesh();
    for (const int failing : {1, 2, 3}) {
        const failing_mapping mappings(failing);
        testing::internal::CaptureStderr();
        EXPECT_EQ(tidy_polygon(polygon, weld).failure, "there is not enough memory");
        testing::internal::GetCapturedStderr();
    }
    EXPECT_EQ(mesh(), before);
}

}  // namespace
