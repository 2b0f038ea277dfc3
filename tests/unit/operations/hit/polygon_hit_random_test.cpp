#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "model/math/projections.h"
#include "operations/hit/polygon_hit.h"
#include "support/plain_polygon_hit.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

/// Two not-a-numbers are the same: which one an operation hands on is not laid down.
bool is_same(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

bool is_same(const pos3& a, const pos3& b) {
    return is_same(a.x, b.x) && is_same(a.y, b.y) && is_same(a.z, b.z);
}

bool is_same(const hit_map_t& a, const hit_map_t& b) {
    return std::ranges::equal(a, b, [](const auto& left, const auto& right) {
        const hit_t& l = left.second;
        const hit_t& r = right.second;
        return is_same(left.first, right.first) && is_same(l.point, r.point) &&
               l.polygon_id == r.polygon_id &&
               std::ranges::equal(l.vertices, r.vertices, [](const vertex_t& p, const vertex_t& q) {
                   return is_same(p.position, q.position);
               });
    });
}

/// Scenes of the kinds that a pick meets, and of those that it should never meet.
class scenes_t {
  public:
    explicit scenes_t(unsigned seed) : random(seed) {}

    bool one_in(unsigned n) { return random() % n == 0; }
    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }
    template <std::size_t N>
    float one_of(const float (&values)[N]) {
        return values[random() % N];
    }

    /// `oddity`: one in that many is a value at the edge of what floats are; 0 for none.
    float coordinate(unsigned oddity) {
        static constexpr float odd[] = {infinity, -infinity, nan, 0, -0.0F, 3e38F, -3e38F, 1e-40F, 1e20F};
        static constexpr float round[] = {-1, -0.5F, -0.25F, 0, 0.25F, 0.5F, 1};
        if (oddity != 0 && one_in(oddity))
            return one_of(odd);
        return one_in(2) ? one_of(round) : between(-1.5F, 1.5F);
    }

    std::vector<vertex_t> vertices(std::size_t count, unsigned oddity) {
        std::vector<pos3> places(count);
        for (pos3& place : places)
            place = {coordinate(oddity), coordinate(oddity), coordinate(oddity)};
        return vertices_at(places);
    }

    std::vector<std::uint32_t> strips(std::size_t count, std::size_t vertex_count) {
        std::vector<std::uint32_t> indices(count);
        for (std::uint32_t& index : indices)
            index = one_in(9) ? mark : static_cast<std::uint32_t>(random() % (vertex_count + 1));
        return indices;
    }

    edge_lines_t lines(unsigned oddity) {
        if (one_in(4)) {
            edge_lines_t any{};
            for (edge_line_t& line : any)
                line = {coordinate(oddity), coordinate(oddity), coordinate(oddity), coordinate(oddity)};
            return any;
        }
        const float x = coordinate(0), y = coordinate(0);
        const float w = one_of({0.0F, 0.003F, 0.25F, 0.5F, 1e-7F}), h = one_of({0.0F, 0.003F, 0.25F, 1e-7F});
        return {{{0, -1, y + h}, {0, 1, -(y - h)}, {1, 0, -(x - w)}, {-1, 0, x + w}}};
    }

    mtx3w view(unsigned oddity) {
        if (one_in(3))
            return mtx_identity;
        mtx3w m = rotation(between(-180, 180), {1, 2, 3}) * translation({0, 0, one_of({0.0F, -1.0F, -3.0F})});
        if (oddity != 0 && one_in(4))
            m[random() % 16] = coordinate(oddity);
        return m;
    }

    mtx3w perspective() {
        switch (random() % 3) {
            case 0:
                return mtx_identity;
            case 1:
                return ortho_matrix({-2, 2, -1, 1, -1, 1});
            default:
                return frustum_matrix({-0.1, 0.1, -0.05, 0.05, 0.1, 1000.1});
        }
    }

  private:
    std::mt19937 random;
};

void compare_with_plain(unsigned seed, unsigned scene_count, unsigned oddity) {
    scenes_t scenes(seed);
    unsigned hit_count = 0;
    for (unsigned i = 0; i < scene_count; ++i) {
        const auto vertices = scenes.vertices(12, oddity);
        const auto strips = scenes.strips(24, vertices.size());
        const auto lines = scenes.lines(oddity);
        const mtx3w perspective = scenes.perspective();
        const mtx3w view = scenes.view(oddity);
        hit_map_t plain_hits, hits;
        const bool plain_hit = plain_polygon_hit(plain_hits, vertices, strips, lines, perspective, view);
        ASSERT_EQ(polygon_hit(hits, vertices, strips, lines, perspective, view), plain_hit)
            << "seed " << seed << ", scene " << i;
        ASSERT_TRUE(is_same(hits, plain_hits)) << "seed " << seed << ", scene " << i;
        hit_count += plain_hit;
    }
    // Neither hits alone nor misses alone were compared.
    EXPECT_GT(hit_count, scene_count / 20);
    EXPECT_LT(hit_count, scene_count - scene_count / 20);
}

TEST(PolygonHitAgainstPlain, OrdinaryScenes) {
    compare_with_plain(1, 8000, 0);
}

TEST(PolygonHitAgainstPlain, ScenesWithAFewOddValues) {
    compare_with_plain(2, 8000, 40);
}

TEST(PolygonHitAgainstPlain, ScenesOfOddValues) {
    compare_with_plain(3, 8000, 12);
}

/// Crossings with an earlier line can fall, by rounding or because an infinite corner makes them no numbers,
/// on the inner side of a line that all corners are outside of. Such a triangle hits.
TEST(PolygonHitAgainstPlain, TriangleThatIsOutsideOfALaterLineCanHit) {
    const edge_lines_t lines{{{0, -1, 0}, {0, 1, 1}, {1, 0, 1}, {-1, 0, 1}}};
    // The first corner's x overflows on the way to the window.
    const mtx3w view = scale(1e10F, 1, 1);
    const auto vertices = vertices_at({{-3e38F, 0, 0.5F}, {-2, 1, 0.5F}, {-3, 1, 0.5F}});
    const std::vector<std::uint32_t> strips{0, 1, 2};
    for (const vertex_t& vertex : vertices)
        ASSERT_LT(dehomogenize(vec_times_mtx(homogenize(vertex.position), view)).x + 1, 0);
    hit_map_t plain_hits, hits;
    ASSERT_TRUE(plain_polygon_hit(plain_hits, vertices, strips, lines, mtx_identity, view));
    EXPECT_TRUE(polygon_hit(hits, vertices, strips, lines, mtx_identity, view));
    EXPECT_TRUE(is_same(hits, plain_hits));
}

/// More vertices than are looked at in one go, and a count that is no multiple of anything.
TEST(PolygonHitAgainstPlain, LargeMesh) {
    scenes_t scenes(4);
    const auto vertices = scenes.vertices(1037, 0);
    const auto strips = scenes.strips(9001, vertices.size());
    for (int i = 0; i < 20; ++i) {
        const auto lines = scenes.lines(0);
        const mtx3w view = scenes.view(0);
        const mtx3w perspective = scenes.perspective();
        hit_map_t plain_hits, hits;
        EXPECT_EQ(polygon_hit(hits, vertices, strips, lines, perspective, view),
                  plain_polygon_hit(plain_hits, vertices, strips, lines, perspective, view));
        EXPECT_TRUE(is_same(hits, plain_hits)) << i;
    }
}

}  // namespace
