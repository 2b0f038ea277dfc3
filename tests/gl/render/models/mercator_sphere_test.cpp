// The bend of the texture coordinate of spheres, in each of the three surface maps.

#include <gtest/gtest.h>

#include <vector>

#include "gl/render/models/surface_scene.h"

namespace ulk3d {
namespace {

using ulk_test::blend_by_alpha;
using ulk_test::bound_texture;
using ulk_test::map_samples_t;

struct lookup_t {
    float v;
    std::size_t row;
};

void PrintTo(const lookup_t& lookup, std::ostream* out) {
    *out << lookup.v;
}

/// Each map has four rows and is looked up at one v; the picture says which row it was.
class MercatorMaps : public ulk_test::surface_test {
  protected:
    void draw_at(float v) {
        for (vertex_t& vertex : triangle.vertices)
            vertex.texcoord = {0.5F, v};
        build();
        texture.mercatorsphere = true;
        drawsolid();
    }
    void expect_maps(const map_samples_t& maps) {
        expect_pixel(16, 16, blend_by_alpha(shaded(16, 16, 1, maps), ground));
    }

    static bound_texture color_rows(GLenum unit) {
        return bound_texture::colors(unit, 1, 4,
                                     {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255});
    }
    static constexpr ulk_test::rgba_t colors[] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}, {1, 1, 1, 1}};

    static bound_texture normal_rows() {
        return bound_texture::normals(1, 1, 4, {0, 0, 127, 0, 0, 90, 0, 0, 60, 0, 0, 30});
    }
    static constexpr std::array<double, 3> normals[] = {
        {0, 0, 1}, {0, 0, 90 / 127.0}, {0, 0, 60 / 127.0}, {0, 0, 30 / 127.0}};
};

class MercatorSphere : public MercatorMaps, public testing::WithParamInterface<lookup_t> {};

TEST_P(MercatorSphere, BendsTheColorMap) {
    const auto rows = color_rows(0);
    const auto no_highlight = bound_texture::colors(2, 1, 1, {0, 0, 0, 0});
    draw_at(GetParam().v);
    expect_maps({.color = colors[GetParam().row], .specular = {}});
}

TEST_P(MercatorSphere, BendsTheBumpMap) {
    const auto rows = normal_rows();
    const auto no_highlight = bound_texture::colors(2, 1, 1, {0, 0, 0, 0});
    draw_at(GetParam().v);
    expect_maps({.normal = normals[GetParam().row], .specular = {}});
}

TEST_P(MercatorSphere, BendsTheSpecularMap) {
    make_triangle({0, 0, 0, 1});
    const auto rows = color_rows(2);
    draw_at(GetParam().v);
    expect_maps({.specular = colors[GetParam().row]});
}

// Unbent, v = 0.16 lies in row 0 and v = 0.84 in row 3.
INSTANTIATE_TEST_SUITE_P(Coordinates, MercatorSphere,
                         testing::Values(lookup_t{0.02F, 0}, lookup_t{0.16F, 1}, lookup_t{0.49F, 1},
                                         lookup_t{0.51F, 2}, lookup_t{0.84F, 2}, lookup_t{0.98F, 3},
                                         lookup_t{1.02F, 0}));

/// 0.16 is bent to 0.26; a quarter more lies in the third row. Bent together, 0.41 becomes 0.44.
TEST_F(MercatorMaps, AddTheBumpOffsetToTheBentCoordinate) {
    const auto rows = normal_rows();
    const auto no_highlight = bound_texture::colors(2, 1, 1, {0, 0, 0, 0});
    texture.bump_offset_v = 0.25F;
    draw_at(0.16F);
    expect_maps({.normal = normals[2], .specular = {}});
}

TEST_F(MercatorMaps, AreLookedUpAtTheCoordinateItselfWithoutTheOption) {
    for (vertex_t& vertex : triangle.vertices)
        vertex.texcoord = {0.5F, 0.16F};
    build();
    const auto color_map = color_rows(0);
    const auto bump_map = normal_rows();
    const auto specular_map = color_rows(2);
    drawsolid();
    expect_maps({.color = colors[0], .normal = normals[0], .specular = colors[0]});
}

}  // namespace
}  // namespace ulk3d
