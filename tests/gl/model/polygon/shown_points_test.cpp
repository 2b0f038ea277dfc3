#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <random>

#include "gl/model/polygon/vertex_recorder.h"
#include "model/math/matrices.h"
#include "render/models/glnurbs.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/polygon_builder.h"
#include "support/watched_stores.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

using numbers = std::vector<std::int32_t>;

/// Triangles on a coarse grid, which share no vertices but many places, in two colours.
std::vector<vertex_t> random_triangles(std::mt19937& random, std::size_t triangles) {
    const auto place = [&] {
        return static_cast<float>(std::uniform_int_distribution<int>(-5, 5)(random)) / 5.5F;
    };
    std::vector<vertex_t> vertices;
    for (std::size_t i = 0; i < 3 * triangles; ++i) {
        const float red = static_cast<float>(random() % 2);
        vertices.push_back({{place(), place(), 0}, {red, 1, 0.5F, 1}, {}});
    }
    return vertices;
}

struct ShownPoints : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        drawn.emplace();
    }
    numbers shown() {
        return ids_of(drawn->record(GL_POINTS, [this] { EXPECT_TRUE(polygon.showpoints()); }));
    }
    std::optional<vertex_recorder> drawn;
    polygon_t polygon;
    const std::vector<vertex_t> two_places_twice = vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 0, 0}, {1, 0, 0}});
};

TEST_F(ShownPoints, AreTheLastAtEachPlace) {
    build_polygon(polygon, two_places_twice, {});
    EXPECT_EQ(shown(), (numbers{2, 3}));
}

TEST_F(ShownPoints, AreAllWhereFewShareTheirPlaces) {
    build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}), {});
    EXPECT_EQ(shown(), (numbers{0, 1, 2}));
}

TEST_F(ShownPoints, HaveTheirSizes) {
    build_polygon(polygon, two_places_twice, {});
    ASSERT_TRUE(polygon.select(0));
    ASSERT_TRUE(polygon.select(2));
    for (const drawn_vertex_t& point :
         drawn->record(GL_POINTS, [this] { EXPECT_TRUE(polygon.showpoints()); }))
        EXPECT_EQ(point.second, point.id == 2 ? 5.0F : 3.0F);
}

TEST_F(ShownPoints, FollowMovesAndMarks) {
    build_polygon(polygon, vertices_at(std::vector<pos3>(6)), {});
    EXPECT_EQ(shown(), (numbers{5}));
    array_span<vertex_t>(polygon.vertices)[1].position.x = 1;
    EXPECT_EQ(shown(), (numbers{1, 5}));
    ASSERT_TRUE(polygon.select(0));
    EXPECT_EQ(shown(), (numbers{0, 1, 5}));
    ASSERT_TRUE(polygon.clearselection());
    EXPECT_EQ(shown(), (numbers{1, 5}));
    const vertex_t moved = vertex_at(0, 2, 0);
    ASSERT_TRUE(polygon.vertices.write_one(2, &moved));
    EXPECT_EQ(shown(), (numbers{1, 2, 5}));
}

TEST_F(ShownPoints, FollowTheCountOfVertices) {
    build_polygon(polygon, two_places_twice, {});
    EXPECT_EQ(shown(), (numbers{2, 3}));
    ASSERT_TRUE(polygon.extend(8, 0));
    EXPECT_EQ(shown(), (numbers{2, 3, 7})) << "new vertices have no colour";
    ASSERT_TRUE(polygon.extend(2, 0));
    EXPECT_EQ(shown(), (numbers{0, 1}));
}

TEST_F(ShownPoints, AreExchangedWithTheMesh) {
    build_polygon(polygon, two_places_twice, {});
    EXPECT_EQ(shown(), (numbers{2, 3}));
    polygon_t other;
    build_polygon(other, vertices_at({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}}), {});
    polygon.swap(other);
    EXPECT_EQ(shown(), (numbers{3}));
    polygon.swap(other);
    EXPECT_EQ(shown(), (numbers{2, 3}));
}

TEST_F(ShownPoints, AreForgottenWithTheMesh) {
    build_polygon(polygon, two_places_twice, {});
    EXPECT_EQ(shown(), (numbers{2, 3}));
    polygon.clear();
    build_polygon(polygon, vertices_at({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}}), {});
    EXPECT_EQ(shown(), (numbers{3}));
    polygon.clear();
    EXPECT_EQ(shown(), numbers{});
}

TEST_F(ShownPoints, AreNotLookedForAgainWhileNothingIsWritten) {
    build_polygon(polygon, two_places_twice, {});
    ASSERT_EQ(shown().size(), 2U);
    const counted_mappings mappings;
    EXPECT_TRUE(polygon.showpoints());
    EXPECT_EQ(mappings.count(), 0);
}

TEST_F(ShownPoints, AreAllWithoutMemoryForTheirList) {
    build_polygon(polygon, two_places_twice, {});
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(polygon.drawpoints());
    const watched_stores no_memory([](GLsizeiptr) { return false; });
    EXPECT_EQ(shown(), (numbers{0, 1, 2, 3}));
    EXPECT_NE(errors.text(), "");
}

TEST_F(ShownPoints, FailWithTheLinesOfADrawWithoutMemoryForTheSizes) {
    build_polygon(polygon, two_places_twice, {});
    const captured_stream errors(std::cerr);
    const watched_stores no_memory([](GLsizeiptr) { return false; });
    EXPECT_FALSE(polygon.drawpoints());
    const std::string of_all = errors.text();
    EXPECT_FALSE(polygon.showpoints());
    EXPECT_EQ(errors.text(), of_all + of_all);
    glGetError();
}

/// The picture of the points, drawn with the program that the views draw them with.
class point_picture {
  public:
    point_picture() {
        EXPECT_TRUE(glnurbs.init(nullptr));
        glEnable(GL_PROGRAM_POINT_SIZE);
        glDisable(GL_DEPTH_TEST);
    }
    ~point_picture() { glDisable(GL_PROGRAM_POINT_SIZE); }

    rgba_picture_t of(const std::function<void()>& draw) const {
        target.bind();
        glClear(GL_COLOR_BUFFER_BIT);
        draw();
        return target.read_pixels();
    }

    glnurbs_t glnurbs;

  private:
    const render_target_t target{64, 48};
};

TEST_F(ShownPoints, GiveThePixelsOfAllPoints) {
    std::mt19937 random(3);
    const point_picture picture;
    for (int round = 0; round < 100; ++round) {
        polygon_t mesh;
        build_polygon(mesh, random_triangles(random, 10 + random() % 200), {});
        for (std::size_t i = random() % 60; i-- > 0;)
            mesh.select(random() % mesh.vertex_count());
        const mtx3w turn = rotation(static_cast<float>(random() % 90), {0.6F, 0.8F, 0});
        const rgba_picture_t shown_ones =
            picture.of([&] { picture.glnurbs.draw_points(mesh, mtx_identity, turn); });
        const rgba_picture_t all = picture.of([&] {
            picture.glnurbs.program.use();
            static_cast<void>(mesh.drawpoints());
            program_t::unuse();
        });
        ASSERT_EQ(shown_ones.pixels, all.pixels) << "round " << round;
    }
}

}  // namespace
