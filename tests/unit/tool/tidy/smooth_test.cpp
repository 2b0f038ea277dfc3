#include "tool/tidy/smooth.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <tuple>

#include "support/cut_meshes.h"
#include "support/triangle_soup.h"

namespace {

using namespace ulk3d;
using namespace ulktool;
using namespace ulk_test;

triangle_mesh_t triangles_of(const strip_mesh_t& mesh) {
    triangle_mesh_t triangles{mesh.vertices, mesh.frames, {}};
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& triangle) {
        triangles.triangles.push_back({triangle.a, triangle.b, triangle.c});
    });
    return triangles;
}

triangle_mesh_t smoothed(triangle_mesh_t mesh, double degrees) {
    smooth(mesh, degrees);
    return mesh;
}

/// A box with eight vertices and no texture coordinates.
triangle_mesh_t plain_box() {
    triangle_mesh_t mesh = triangles_of(box({-1, -1, -1}, {1, 1, 1}));
    for (vertex_t& vertex : mesh.vertices)
        vertex = {vertex.position, default_color, {}};
    return mesh;
}

using vector_t = std::array<double, 3>;

vector_t wide(const pos3& p) {
    return {p.x, p.y, p.z};
}
vector_t minus(const vector_t& a, const vector_t& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
double product(const vector_t& a, const vector_t& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
vector_t cross_product(const vector_t& a, const vector_t& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
vector_t unit(const vector_t& a) {
    const double size = std::sqrt(product(a, a));
    return {a[0] / size, a[1] / size, a[2] / size};
}

vector_t plain_face_normal(const triangle_mesh_t& mesh, const triangle_corners_t& corners) {
    const auto at = [&](std::size_t n) { return wide(mesh.vertices[corners[n]].position); };
    return unit(cross_product(minus(at(1), at(0)), minus(at(2), at(0))));
}

/// The normal at a corner by the plainest rule: from triangle to triangle over each flat edge at its place.
vector_t plain_normal(const triangle_mesh_t& mesh, std::size_t triangle, std::size_t corner, double degrees) {
    const pos3 place = mesh.vertices[mesh.triangles[triangle][corner]].position;
    const auto touches = [&](std::size_t t, const pos3& p) {
        return std::ranges::any_of(mesh.triangles[t],
                                   [&](std::uint32_t v) { return mesh.vertices[v].position == p; });
    };
    std::set<std::size_t> group{triangle};
    for (std::size_t size = 0; size != group.size();) {
        size = group.size();
        for (const std::size_t member : std::set(group))
            for (std::size_t other = 0; other < mesh.triangles.size(); ++other) {
                int shared = 0;
                for (const std::uint32_t v : mesh.triangles[member])
                    shared += touches(other, mesh.vertices[v].position) ? 1 : 0;
                const double cosine = product(plain_face_normal(mesh, mesh.triangles[member]),
                                              plain_face_normal(mesh, mesh.triangles[other]));
                if (shared == 2 && touches(other, place) &&
                    cosine > std::cos(degrees * std::numbers::pi / 180))
                    group.insert(other);
            }
    }
    vector_t sum{};
    for (const std::size_t member : group) {
        std::vector<vector_t> rays;
        for (const std::uint32_t v : mesh.triangles[member])
            if (mesh.vertices[v].position != place)
                rays.push_back(unit(minus(wide(mesh.vertices[v].position), wide(place))));
        const double angle = std::acos(product(rays[0], rays[1]));
        const vector_t normal = plain_face_normal(mesh, mesh.triangles[member]);
        for (std::size_t axis = 0; axis < 3; ++axis)
            sum[axis] += angle * normal[axis];
    }
    return unit(sum);
}

void expect_near(const dir3& v, const vector_t& w) {
    EXPECT_NEAR(v.x, w[0], 2e-6);
    EXPECT_NEAR(v.y, w[1], 2e-6);
    EXPECT_NEAR(v.z, w[2], 2e-6);
}

void expect_right_handed(const frame_t& frame) {
    EXPECT_NEAR(length(frame.tangent), 1, 1e-6);
    EXPECT_NEAR(length(frame.normal), 1, 1e-6);
    EXPECT_NEAR(dot(frame.tangent, frame.normal), 0, 1e-6);
    const dir3 binormal = cross(frame.normal, frame.tangent);
    EXPECT_NEAR(length(frame.binormal - binormal), 0, 1e-6);
}

TEST(Smooth, NormalsEqualAPlainReference) {
    for (const strip_mesh_t& mesh :
         {shaken(sphere({0, 0, 0}, 1, 1), 0.15F, 1), shaken(box({0, 0, 0}, {1, 2, 3}), 0.4F, 2),
          soup_of(shaken(sphere({0, 0, 0}, 1, 1), 0.15F, 3)),
          shaken(torus({0, 0, 0}, 2, 1, 8, 5), 0.3F, 4)}) {
        const triangle_mesh_t before = triangles_of(mesh);
        for (const double degrees : {0.0, 45.0, 180.0}) {
            const triangle_mesh_t after = smoothed(before, degrees);
            ASSERT_EQ(after.triangles.size(), before.triangles.size());
            for (std::size_t t = 0; t < before.triangles.size(); ++t)
                for (std::size_t n = 0; n < 3; ++n) {
                    const std::uint32_t vertex = after.triangles[t][n];
                    EXPECT_EQ(after.vertices[vertex], before.vertices[before.triangles[t][n]]);
                    expect_near(after.frames[vertex].normal, plain_normal(before, t, n, degrees));
                }
        }
    }
}

TEST(Smooth, EdgesOfACubeAreSharpAt30DegreesAndSmoothAt100) {
    const triangle_mesh_t sharp = smoothed(plain_box(), 30);
    EXPECT_EQ(sharp.vertices.size(), 24U);
    for (const triangle_corners_t& corners : sharp.triangles) {
        const dir3 normal = sharp.frames[corners[0]].normal;
        EXPECT_EQ(std::fabs(normal.x) + std::fabs(normal.y) + std::fabs(normal.z), 1.0F);
        EXPECT_EQ(sharp.frames[corners[1]].normal, normal);
        EXPECT_EQ(sharp.frames[corners[2]].normal, normal);
        EXPECT_GT(dot(normal, sharp.vertices[corners[0]].position), 0.999F) << "outward";
    }
    EXPECT_EQ(smoothed(plain_box(), 90).vertices.size(), 24U) << "an edge of 90 degrees is not flatter";

    const triangle_mesh_t round = smoothed(plain_box(), 100);
    EXPECT_EQ(round.vertices.size(), 8U);
    const float third = 1 / std::sqrt(3.0F);
    for (std::size_t n = 0; n < 8; ++n) {
        const pos3& p = round.vertices[n].position;
        expect_near(round.frames[n].normal, {p.x * third, p.y * third, p.z * third});
    }
}

TEST(Smooth, VerticesKeepTheirOrderAndCopiesStandTogether) {
    const triangle_mesh_t before = plain_box(), after = smoothed(before, 30);
    for (std::size_t n = 0; n < 24; ++n)
        EXPECT_EQ(after.vertices[n], before.vertices[n / 3]);
}

TEST(Smooth, FramesWithoutTextureCoordinatesAreRightHanded) {
    for (const triangle_mesh_t& mesh : {plain_box(), triangles_of(soup_of(sphere({0, 0, 0}, 1, 3)))})
        for (const double degrees : {0.0, 60.0, 180.0})
            for (const frame_t& frame : smoothed(mesh, degrees).frames)
                expect_right_handed(frame);
    // As the default frame looks to the front.
    const triangle_mesh_t square = triangles_of(soup_of(sheet(1, 1, [](float, float) { return 0.0F; })));
    for (const frame_t& frame : smoothed(square, 30).frames)
        EXPECT_EQ(frame, new_vertex_frame);
}

/// A wavy sheet whose texture coordinates are turned by 90 degrees: s grows with y, t against x.
triangle_mesh_t textured_sheet() {
    triangle_mesh_t mesh =
        triangles_of(sheet(8, 2, [](float x, float y) { return 0.2F * std::sin(3 * x) * std::cos(2 * y); }));
    for (vertex_t& vertex : mesh.vertices)
        vertex.texcoord = {vertex.position.y, -vertex.position.x};
    return mesh;
}

TEST(Smooth, TangentsFollowTheTextureCoordinates) {
    const triangle_mesh_t mesh = smoothed(textured_sheet(), 60);
    EXPECT_EQ(mesh.vertices.size(), 81U);
    for (const frame_t& frame : mesh.frames) {
        expect_right_handed(frame);
        EXPECT_GT(frame.tangent.y, 0.8F);
        EXPECT_LT(std::fabs(frame.tangent.x), 0.2F);
        EXPECT_LT(frame.binormal.x, -0.8F);
    }
}

TEST(Smooth, AMirroredMapHasItsOwnVerticesAndLeftHandedFrames) {
    triangle_mesh_t mesh = textured_sheet();
    for (vertex_t& vertex : mesh.vertices)
        vertex.texcoord = {std::fabs(vertex.position.x), vertex.position.y};
    mesh = smoothed(mesh, 60);
    EXPECT_EQ(mesh.vertices.size(), 81U + 9U) << "those on the line in the middle twice";
    std::map<std::tuple<float, float>, std::set<std::tuple<float, float, float>>> normals;
    for (std::size_t n = 0; n < mesh.vertices.size(); ++n) {
        const auto& [position, color, texcoord] = mesh.vertices[n];
        const auto& [tangent, binormal, normal] = mesh.frames[n];
        EXPECT_GT(binormal.y, 0.8F) << "t grows with y on both sides";
        EXPECT_GT(std::fabs(tangent.x), 0.8F);
        normals[{position.x, position.y}].insert({normal.x, normal.y, normal.z});
        EXPECT_TRUE(position.x == 0 || (tangent.x > 0) == (position.x > 0));
    }
    for (const auto& [place, seen] : normals)
        EXPECT_EQ(seen.size(), 1U) << "the surface itself has no seam";
}

TEST(Smooth, ASeamInTheTextureIsNoEdge) {
    // Two squares side by side that share no vertex, as their texture coordinates differ.
    triangle_mesh_t mesh;
    mesh.vertices = {{{-1, 0, 0.25F}, default_color, {0, 0}},    {{0, 0, 0}, default_color, {1, 0}},
                     {{0, 1, 0}, default_color, {1, 1}},         {{0, 0, 0}, default_color, {0.5F, 0}},
                     {{1, 0, 0.25F}, default_color, {0.75F, 0}}, {{0, 1, 0}, default_color, {0.5F, 1}}};
    mesh.frames.resize(6);
    mesh.triangles = {{0, 1, 2}, {3, 4, 5}};
    const triangle_mesh_t round = smoothed(mesh, 60), sharp = smoothed(mesh, 10);
    ASSERT_EQ(round.vertices, mesh.vertices);
    EXPECT_EQ(round.frames[1].normal, round.frames[3].normal);
    EXPECT_EQ(round.frames[1].normal, (dir3{0, 0, 1}));
    EXPECT_NE(sharp.frames[1].normal, sharp.frames[3].normal);
}

TEST(Smooth, TrianglesWithoutAreaTakeFramesThatAreThere) {
    triangle_mesh_t mesh;
    for (const pos3& p : {pos3{0, 0, 0}, pos3{1, 0, 0}, pos3{0, 1, 0}, pos3{2, 0, 0}, pos3{9, 9, 9}})
        mesh.vertices.push_back({p, default_color, {}});
    mesh.frames.assign(5, frame_t{{5, 0, 0}, {0, 5, 0}, {0, 0, 5}});
    mesh.triangles = {{0, 1, 2}, {0, 3, 1}};
    smooth(mesh, 30);
    ASSERT_EQ(mesh.vertices.size(), 4U) << "the one without a triangle is gone";
    EXPECT_EQ(mesh.triangles, (std::vector<triangle_corners_t>{{0, 1, 2}, {0, 3, 1}}));
    EXPECT_EQ(mesh.frames[0], new_vertex_frame);
    EXPECT_EQ(mesh.frames[3], (frame_t{{5, 0, 0}, {0, 5, 0}, {0, 0, 5}}));
}

TEST(Smooth, BothSidesOfASheetStayApart) {
    triangle_mesh_t mesh = triangles_of(sheet(2, 1, [](float, float) { return 0.0F; }));
    for (const triangle_corners_t& corners : std::vector(mesh.triangles))
        mesh.triangles.push_back({corners[2], corners[1], corners[0]});
    const triangle_mesh_t after = smoothed(mesh, 170);
    EXPECT_EQ(after.vertices.size(), 18U);
    for (const frame_t& frame : after.frames)
        EXPECT_EQ(std::fabs(frame.normal.z), 1.0F);
}

TEST(Smooth, ManyTrianglesAtOnePlaceOrEdgeTakeNoLongTime) {
    // A cone, and triangles that stand on one edge like the pages of a book.
    constexpr std::uint32_t count = 200000;
    triangle_mesh_t cone, book;
    cone.vertices.push_back({{0, 0, 1}, default_color, {}});
    book.vertices = {{{0, 0, 0}, default_color, {}}, {{0, 0, 1}, default_color, {}}};
    for (std::uint32_t n = 0; n < count; ++n) {
        const double angle = 2 * std::numbers::pi * n / count;
        const pos3 rim{static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)), 0};
        cone.vertices.push_back({rim, default_color, {}});
        book.vertices.push_back({rim, default_color, {}});
        cone.triangles.push_back({0, n + 1, (n + 1) % count + 1});
        book.triangles.push_back({0, 1, n + 2});
    }
    cone.frames.resize(cone.vertices.size());
    book.frames.resize(book.vertices.size());
    smooth(cone, 60);
    EXPECT_EQ(cone.vertices.size(), count + 1);
    expect_near(cone.frames[0].normal, {0, 0, 1});
    smooth(book, 60);
    EXPECT_EQ(book.triangles.size(), count);
}

TEST(Smooth, OnlyMarkedFramesAreRenewed) {
    triangle_mesh_t mesh = plain_box();
    const std::vector<frame_t> before = mesh.frames;
    renew_frames(mesh, {true, false, false, true, false, false, false, true});
    const float third = 1 / std::sqrt(3.0F);
    for (std::size_t n = 0; n < 8; ++n) {
        const pos3& p = mesh.vertices[n].position;
        if (n == 0 || n == 3 || n == 7)
            expect_near(mesh.frames[n].normal, {p.x * third, p.y * third, p.z * third});
        else
            EXPECT_EQ(mesh.frames[n], before[n]);
    }
}

}  // namespace
