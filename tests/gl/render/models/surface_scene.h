#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "gl/render/models/phong_reference.h"
#include "model/environment.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"
#include "render/models/glpolygon.h"
#include "support/gl_context.h"

namespace ulk_test {

/// A texture that a test binds to a unit by itself, unfiltered; unbound and released at the end.
class bound_texture {
  public:
    /// 2D texture of `width` by `height` RGBA texels, or of signed RGB normals.
    static bound_texture colors(GLenum unit, int width, int height, const std::vector<std::uint8_t>& texels);
    static bound_texture normals(GLenum unit, int width, int height, const std::vector<std::int8_t>& texels);
    /// Cube map of `width` by `width` RGBA texels per face: +x, -x, +y, -y, +z, -z.
    static bound_texture cube(GLenum unit, const std::vector<std::uint8_t>& texels, int width = 1);
    ~bound_texture();
    bound_texture(const bound_texture&) = delete;
    bound_texture& operator=(const bound_texture&) = delete;

    GLuint id() const { return name; }

  private:
    bound_texture(GLenum texture_unit, GLenum texture_target, const std::function<void()>& upload);

    GLenum unit;
    GLenum target;
    GLuint name = 0;
};

/// A target of 32 by 32 pixels, the state of the perspective view's passes, and one triangle that faces the
/// viewer and covers all of the target, two units in front of the light and the eye.
class surface_test : public gl_test {
  protected:
    static constexpr int size = 32;
    static constexpr rgba_t ground{46 / 255.0, 46 / 255.0, 46 / 255.0, 1};

    void SetUp() override;
    void TearDown() override;

    void clear();
    void make_triangle(ulk3d::col3a color);
    /// Makes `polygon` of `triangle`.
    void build();
    void select_triangle(std::uint32_t polyid);

    void drawsolid(bool skybox = false) { glpolygon.drawsolid(environment, skybox, texture, polygon, view); }
    void drawselect() { glpolygon.drawselect(environment, false, texture, polygon, view); }

    /// Normalised device coordinate of the centre of a column from the left, or a row from the bottom.
    static double center(int pixel) { return (pixel + 0.5) * 2.0 / size - 1.0; }
    rgba_t shaded(int column, int row, double color_factor = 1.0, const map_samples_t& maps = {}) const {
        return shade(triangle, view, center(column), center(row), color_factor, maps);
    }
    /// Compares the pixel in a column from the left and a row from the bottom; off by at most two steps of
    /// 255.
    void expect_pixel(int column, int row, const rgba_t& expected);

    render_target_t target{size, size};
    ulk3d::glpolygon_t glpolygon;
    ulk3d::environment_t environment;
    ulk3d::texture_t texture;
    ulk3d::polygon_t polygon;
    ulk3d::surface_view_t view;
    reference_triangle_t triangle;
};

}  // namespace ulk_test
