#include "tool/tidy/tidy_mesh.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/cut_meshes.h"
#include "support/triangle_soup.h"

namespace {

using namespace ulk3d;
using namespace ulktool;
using namespace ulk_test;

constexpr tidy_options_t nothing{.weld_tolerance = {}, .most_triangles = {}, .smooth_degrees = {}};
constexpr tidy_options_t weld{.weld_tolerance = 0, .most_triangles = {}, .smooth_degrees = {}};
constexpr std::uint32_t mark = restart_mark;

strip_mesh_t tidied(const strip_mesh_t& mesh, const tidy_options_t& options) {
    taken_mesh_t taken = take_mesh({mesh.vertices, mesh.frames, mesh.elements}, options);
    return tidy_mesh(taken, options);
}

mesh_counts_t counts_of(const strip_mesh_t& mesh) {
    return count_mesh({mesh.vertices, mesh.frames, mesh.elements});
}

/// White vertices with frames that tell them apart.
strip_mesh_t mesh_at(const std::vector<pos3>& places, std::vector<std::uint32_t> elements) {
    strip_mesh_t mesh{{}, {}, std::move(elements)};
    for (const pos3& place : places) {
        mesh.vertices.push_back({place, {1, 1, 1, 1}, {}});
        mesh.frames.push_back({{1, 0, 0}, {0, 1, 0}, {0, 0, static_cast<float>(mesh.frames.size())}});
    }
    return mesh;
}

TEST(TidyMesh, ASphereOfSingleTrianglesIsWholeAgain) {
    const strip_mesh_t ball = sphere({0.5F, 1, 2}, 0.75F, 4);
    const strip_mesh_t soup = soup_of(ball);
    const strip_mesh_t tidy = tidied(soup, weld);
    EXPECT_EQ(tidy.vertices.size(), ball.vertices.size());
    EXPECT_EQ(surface_of(tidy), surface_of(soup));
    EXPECT_TRUE(is_watertight(tidy));
    EXPECT_FALSE(is_watertight(soup));
    const mesh_counts_t before = counts_of(soup), after = counts_of(tidy);
    EXPECT_EQ(before.triangles, 5120U);
    EXPECT_EQ(before.strips, 5120U);
    EXPECT_EQ(before.bytes, 5120U * (3 * 72 + 16));
    EXPECT_EQ(after.triangles, 5120U);
    EXPECT_LE(4 * after.strips, after.triangles);
    EXPECT_LT(2 * after.bytes, before.bytes);
}

TEST(TidyMesh, WeldedFramesAreTheMeanOfTheirTriangles) {
    const strip_mesh_t tidy = tidied(soup_of(sphere({0, 0, 0}, 1, 4)), weld);
    for (std::size_t n = 0; n < tidy.vertices.size(); ++n)
        EXPECT_GT(dot(tidy.frames[n].normal, tidy.vertices[n].position), 0.999F);
}

TEST(TidyMesh, FramesThatAgreeStay) {
    strip_mesh_t soup = soup_of(box({-1, -1, -1}, {1, 1, 1}));
    const frame_t same{{0, 2, 0}, {0, 0, 3}, {4, 0, 0}};
    std::ranges::fill(soup.frames, same);
    const strip_mesh_t tidy = tidied(soup, weld);
    EXPECT_EQ(tidy.frames, std::vector<frame_t>(8, same));
}

TEST(TidyMesh, OnlyFramesThatDifferAreMadeAnew) {
    // Two triangles with an edge in common; at one of its ends the frames agree.
    strip_mesh_t mesh =
        mesh_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 0}, {1, 0, 0}, {1, 1, 0}}, {0, 1, 2, mark, 3, 4, 5});
    mesh.frames[4] = mesh.frames[1];
    const strip_mesh_t tidy = tidied(mesh, weld);
    ASSERT_EQ(tidy.vertices.size(), 4U);
    EXPECT_EQ(tidy.frames[0], mesh.frames[0]);
    EXPECT_EQ(tidy.frames[1], mesh.frames[1]);
    EXPECT_EQ(tidy.frames[2], new_vertex_frame);
    EXPECT_EQ(tidy.frames[3], mesh.frames[5]);
}

TEST(TidyMesh, WithoutAnOptionOnlyTheStripsAreMade) {
    const strip_mesh_t soup = soup_of(sphere({0, 0, 0}, 1, 2));
    const strip_mesh_t tidy = tidied(soup, nothing);
    EXPECT_EQ(tidy.vertices, soup.vertices);
    EXPECT_EQ(tidy.frames, soup.frames);
    EXPECT_EQ(surface_of(tidy), surface_of(soup));

    const strip_mesh_t ball = sphere({0, 0, 0}, 1, 2);
    const strip_mesh_t stripped = tidied(ball, nothing);
    EXPECT_EQ(stripped.vertices, ball.vertices);
    EXPECT_EQ(surface_of(stripped), surface_of(ball));
    EXPECT_LT(counts_of(stripped).strips * 3, counts_of(ball).strips);
}

TEST(TidyMesh, StripsThatAreGoodEnoughStay) {
    // A sheet with a strip for each row, which are fewer than the library makes.
    constexpr std::uint32_t cells = 20;
    strip_mesh_t mesh = sheet(cells, 1, [](float x, float) { return x * x; });
    mesh.elements.clear();
    for (std::uint32_t row = 0; row < cells; ++row) {
        for (std::uint32_t column = 0; column <= cells; ++column)
            for (const std::uint32_t above : {1U, 0U})
                mesh.elements.push_back((row + above) * (cells + 1) + column);
        if (row + 1 < cells)
            mesh.elements.push_back(mark);
    }
    EXPECT_EQ(tidied(mesh, nothing), mesh);
    EXPECT_EQ(tidied(mesh, weld), mesh);
}

TEST(TidyMesh, EmptyTrianglesAndUnusedVerticesGo) {
    const strip_mesh_t mesh =
        mesh_at({{9, 9, 9}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 0}, {8, 8, 8}},
                {mark, 1, 2, 3, mark, 1, 1, 2, mark, 3, 2, 4, mark, 5, mark, 6, 4000000000, 0, 1, mark});
    const strip_mesh_t tidy = tidied(mesh, nothing);
    EXPECT_EQ(tidy.elements, (std::vector<std::uint32_t>{0, 1, 2}));
    EXPECT_EQ(tidy.vertices, (std::vector{mesh.vertices[1], mesh.vertices[2], mesh.vertices[3]}));
    EXPECT_EQ(tidy.frames, (std::vector{mesh.frames[1], mesh.frames[2], mesh.frames[3]}));
}

TEST(TidyMesh, TrianglesThatWeldingEmptiesGo) {
    const strip_mesh_t mesh = mesh_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 0.125F, 0}}, {0, 1, 2, 3});
    EXPECT_EQ(counts_of(tidied(mesh, weld)).triangles, 2U);
    tidy_options_t coarse = weld;
    coarse.weld_tolerance = 0.125;
    const strip_mesh_t tidy = tidied(mesh, coarse);
    EXPECT_EQ(tidy.elements, (std::vector<std::uint32_t>{0, 1, 2}));
    EXPECT_EQ(tidy.vertices.size(), 3U);
}

TEST(TidyMesh, WithoutTrianglesNothingIsLeft) {
    EXPECT_EQ(tidied({}, weld), strip_mesh_t{});
    EXPECT_EQ(tidied(mesh_at({{0, 0, 0}}, {0, mark, 7}), weld), strip_mesh_t{});
    tidy_options_t all = weld;
    all.smooth_degrees = 30;
    all.most_triangles = 1;
    EXPECT_EQ(tidied(mesh_at({{0, 0, 0}, {1, 1, 1}}, {0, 1, 1, 0}), all), strip_mesh_t{});
}

TEST(TidyMesh, StepsFollowEachOther) {
    tidy_options_t all = weld;
    all.most_triangles = 300;
    all.smooth_degrees = 60;
    const strip_mesh_t tidy = tidied(soup_of(sphere({0, 0, 0}, 1, 3)), all);
    EXPECT_LE(counts_of(tidy).triangles, 300U);
    EXPECT_GT(counts_of(tidy).triangles, 250U);
    EXPECT_TRUE(is_watertight(tidy));
    for (std::size_t n = 0; n < tidy.vertices.size(); ++n)
        EXPECT_GT(dot(tidy.frames[n].normal, tidy.vertices[n].position), 0.98F);
}

TEST(TidyMesh, OnceMoreChangesNothing) {
    const std::vector<strip_mesh_t> meshes{soup_of(sphere({1, 2, 3}, 1, 3)),
                                           soup_of(box({-1, 0, 1}, {2, 3, 5})),
                                           soup_of(torus({0, 0, 0}, 2, 0.5F, 30, 9)),
                                           shaken(soup_of(sphere({0, 0, 0}, 1, 3)), 0.01F, 1),
                                           sphere({0, 0, 0}, 1, 3),
                                           shaken(sphere({0, 0, 0}, 1, 3), 0.05F, 2)};
    for (const strip_mesh_t& mesh : meshes)
        for (const std::optional<double> tolerance :
             {std::optional<double>(), std::optional(0.0), std::optional(0.05)})
            for (const std::optional<double> angle :
                 {std::optional<double>(), std::optional(0.0), std::optional(12.0), std::optional(180.0)})
                for (const std::optional<std::size_t> most :
                     {std::optional<std::size_t>(), std::optional<std::size_t>(200)}) {
                    const tidy_options_t options{tolerance, most, angle};
                    const strip_mesh_t once = tidied(mesh, options);
                    EXPECT_EQ(tidied(once, options), once)
                        << "mesh " << &mesh - meshes.data() << ", weld " << tolerance.value_or(-1)
                        << ", smooth " << angle.value_or(-1) << ", simplify " << most.value_or(0);
                }
}

TEST(TidyMesh, AnyTrianglesComeOutOfIt) {
    std::mt19937 random(11);
    const auto up_to = [&random](std::uint32_t last) {
        return std::uniform_int_distribution<std::uint32_t>(0, last)(random);
    };
    int compared = 0;
    for (int round = 0; round < 4000; ++round) {
        // Few places, so that edges have many triangles and triangles lie on one another.
        strip_mesh_t mesh;
        const std::uint32_t vertices = 3 + up_to(40), elements = up_to(150), size = up_to(3);
        for (std::uint32_t n = 0; n < vertices; ++n) {
            const auto coordinate = [&] { return static_cast<float>(up_to(size)); };
            mesh.vertices.push_back({{coordinate(), coordinate(), coordinate()}, {}, {coordinate(), 0}});
            mesh.frames.push_back(new_vertex_frame);
        }
        for (std::uint32_t n = 0; n < elements; ++n)
            mesh.elements.push_back(up_to(vertices + 2));
        tidy_options_t options = nothing;
        if (up_to(1) == 1)
            options.weld_tolerance = up_to(2) * 0.5;
        if (up_to(1) == 1)
            options.most_triangles = 1 + up_to(20);
        if (up_to(1) == 1)
            options.smooth_degrees = up_to(180);
        const strip_mesh_t once = tidied(mesh, options);
        // Where the surface could not stay whole with so few triangles, new edges may let it get further.
        if (counts_of(once).triangles <= options.most_triangles.value_or(elements)) {
            ++compared;
            EXPECT_TRUE(tidied(once, options) == once) << round;
        }
        if (!options.weld_tolerance && !options.most_triangles) {
            std::vector<triangle_bits_t> before = surface_of(mesh);
            std::erase_if(before, [](const triangle_bits_t& t) {
                return t[0] == t[1] || t[1] == t[2] || t[2] == t[0];
            });
            EXPECT_EQ(surface_of(once), before) << round;
        }
    }
    EXPECT_GT(compared, 3000);
}

TEST(TidyMesh, NumbersThatAreNoneDoNoHarm) {
    const float nan = std::numeric_limits<float>::quiet_NaN(),
                infinity = std::numeric_limits<float>::infinity();
    for (const float odd : {nan, infinity, -infinity, 3e38F, -3e38F, 1e-45F}) {
        strip_mesh_t soup = soup_of(sphere({0, 0, 0}, 1, 2));
        for (std::size_t n = 0; n < soup.vertices.size(); n += 17) {
            soup.vertices[n].position.y = odd;
            soup.vertices[n].texcoord.s = odd;
            soup.frames[n].normal.x = odd;
        }
        const tidy_options_t all{.weld_tolerance = 0.01, .most_triangles = 100, .smooth_degrees = 30};
        const strip_mesh_t tidy = tidied(soup, all);
        EXPECT_GT(counts_of(tidy).triangles, 0U);
        for (const std::uint32_t element : tidy.elements)
            EXPECT_TRUE(element < tidy.vertices.size() || element == mark);
    }
}

}  // namespace
