// The directions in which a surface looks up the environment.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "gl/render/models/surface_scene.h"
#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {
namespace {

using ulk_test::bound_texture;
using pixel_t = libutils::rgba_picture_t::pixel_t;

// --- a cube map whose colours tell the direction ----------------------------------------------------------

constexpr int cube_width = 32;

/// The direction of the texel in column `s` and row `t` of a face.
dir3 texel_direction(int face, int s, int t) {
    const float u = (2.0F * static_cast<float>(s) + 1) / cube_width - 1;
    const float v = (2.0F * static_cast<float>(t) + 1) / cube_width - 1;
    const dir3 directions[] = {{1, -v, -u}, {-1, -v, u}, {u, 1, v}, {u, -1, -v}, {u, -v, 1}, {-u, -v, -1}};
    return normalize(directions[face]);
}

// Colours are multiples of a step, so that none is taken for its neighbour after rounding.
constexpr int face_step = 40;
constexpr int texel_step = 8;

std::vector<std::uint8_t> direction_texels() {
    std::vector<std::uint8_t> texels;
    for (int face = 0; face < 6; ++face)
        for (int t = 0; t < cube_width; ++t)
            for (int s = 0; s < cube_width; ++s)
                for (const int value : {face * face_step, s * texel_step, t * texel_step, 0})
                    texels.push_back(static_cast<std::uint8_t>(value));
    return texels;
}

dir3 direction_of(const pixel_t& pixel) {
    const auto nearest = [](int value, int step) { return (value + step / 2) / step; };
    return texel_direction(nearest(pixel[0], face_step), nearest(pixel[1], texel_step),
                           nearest(pixel[2], texel_step));
}

// --- the surface ------------------------------------------------------------------------------------------

/// The direction v times the matrix.
dir3 turned(const dir3& v, const mtx3w& m) {
    return transform_point(as_pos(v), m) - transform_point(origin, m);
}

/// The frame of the surface in view space: an oblique one that faces the viewer.
const mtx3w slant = rotation(25, {3, 1, 0}) * rotation(30, {0, 0, 1});
const frame_t seen_frame{turned({1, 0, 0}, slant), turned({0, 1, 0}, slant), turned({0, 0, 1}, slant)};

/// A black surface without a highlight, so that a picture is the environment alone. What is seen stays the
/// same when the view is turned: the object is turned back.
class EnvironmentDirection : public ulk_test::surface_test {
  protected:
    void SetUp() override {
        ulk_test::surface_test::SetUp();
        make_triangle({0, 0, 0, 1});
        environment.cubetex = "sky.png";
    }

    void turn_view(const mtx3w& modelview) {
        view.Modelview = modelview;
        view.invModelview = inverse(modelview);
        make_triangle({0, 0, 0, 1});
        for (vertex_t& vertex : triangle.vertices)
            vertex.position = transform_point(vertex.position, view.invModelview);
        triangle.frames.fill({turned(seen_frame.tangent, view.invModelview),
                              turned(seen_frame.binormal, view.invModelview),
                              turned(seen_frame.normal, view.invModelview)});
        build();
    }

    /// From the surface to the eye at a pixel, interpolated between the corners of the triangle.
    dir3 to_eye(int column, int row) const {
        const auto x = static_cast<float>(center(column));
        const auto y = static_cast<float>(center(row));
        const float top = (y + 1) / 4;
        const float left = (1 - top - x / 3) / 2;
        const float right = (1 - top + x / 3) / 2;
        return normalize(dir3{3, 1, 2}) * left + normalize(dir3{-3, 1, 2}) * right +
               normalize(dir3{0, -3, 2}) * top;
    }

    /// Compares the direction that a pixel tells with `expected`, to the width of a texel.
    void expect_direction(int column, int row, const dir3& expected) {
        const dir3 drawn = direction_of(target.read_pixels().at(column, size - 1 - row));
        EXPECT_GT(dot(drawn, normalize(expected)), std::cos(2.0F / cube_width))
            << "column " << column << ", row " << row << ": " << drawn.x << " " << drawn.y << " " << drawn.z;
    }

    bound_texture no_highlight = bound_texture::colors(2, 1, 1, {0, 0, 0, 0});
};

constexpr std::pair<int, int> places[] = {{16, 16}, {4, 9}, {27, 12}, {16, 30}, {2, 2}};

const mtx3w turned_views[] = {
    mtx_identity,
    rotation(30, {1, 0, 0}) * rotation(20, {0, 1, 0}) * rotation(40, {0, 0, 1}),
    rotation(-70, {0, 1, 0}) * rotation(50, {1, 0, 0}) * translation({0.25F, -1.0F, 0.5F}),
    rotation(110, {1, 2, 3}),
};

/// A bumped normal that is not of unit length, and is used as it is.
class BumpedEnvironmentDirection : public EnvironmentDirection {
  protected:
    dir3 normal() const {
        return (seen_frame.tangent * 40 + seen_frame.binormal * -20 + seen_frame.normal * 110) / 127;
    }

    bound_texture cube = bound_texture::cube(3, direction_texels(), cube_width);
    bound_texture bump = bound_texture::normals(1, 1, 1, {40, -20, 110});
};

TEST_F(BumpedEnvironmentDirection, ReflectionIsThatOfTheNormalInTheView) {
    for (const mtx3w& turned_view : turned_views) {
        turn_view(turned_view);
        clear();
        drawsolid();
        for (const auto& [column, row] : places) {
            const dir3 incident = -to_eye(column, row);
            expect_direction(column, row, incident - 2 * dot(normal(), incident) * normal());
        }
    }
}

TEST_F(BumpedEnvironmentDirection, RefractionIsThatOfTheNormalInTheView) {
    environment.reflectalpha = 0.0F;
    environment.refractalpha = 1.0F;
    environment.refractfactor = 0.5F;
    for (const mtx3w& turned_view : turned_views) {
        turn_view(turned_view);
        clear();
        drawsolid();
        for (const auto& [column, row] : places) {
            const dir3 incident = -to_eye(column, row);
            const float facing = dot(normal(), incident);
            const float along = std::sqrt(1 - 0.25F * (1 - facing * facing));
            expect_direction(column, row, 0.5F * incident - (0.5F * facing + along) * normal());
        }
    }
}

// --- total reflection -------------------------------------------------------------------------------------

/// Colours of the faces +x, -x, +y, -y, +z, -z.
const std::vector<std::uint8_t> face_colors = {255, 0,   0, 0, 0,   255, 0,   0, 0,   0, 255, 0,
                                               255, 255, 0, 0, 255, 0,   255, 0, 128, 0, 0,   0};

/// What this GL gives for the zero direction; which face that is, is its own choice.
pixel_t zero_direction_color(ulk_test::render_target_t& target) {
    const char* const corner =
        "#version 330\nvoid main() { gl_Position = vec4(4 * (gl_VertexID % 2) - 1, 4 * (gl_VertexID / 2) - "
        "1, "
        "0, 1); }\n";
    const char* const lookup =
        "#version 330\nuniform samplerCube cube;\nuniform vec3 direction;\nout vec4 color;\n"
        "void main() { color = texture(cube, direction); }\n";
    shader_t vertex;
    shader_t fragment;
    program_t program;
    const auto length = [](const char* text) { return static_cast<GLint>(std::strlen(text)); };
    EXPECT_TRUE(vertex.allocate(GL_VERTEX_SHADER, corner, length(corner)));
    EXPECT_TRUE(fragment.allocate(GL_FRAGMENT_SHADER, lookup, length(lookup)));
    EXPECT_TRUE(program.create());
    program.attach(vertex);
    program.attach(fragment);
    EXPECT_TRUE(program.link());
    vertex_array_t nothing;
    nothing.allocate();
    glDisable(GL_DEPTH_TEST);
    program.use();
    glUniform1i(program.uniform("cube"), 3);
    glUniform3f(program.uniform("direction"), 0, 0, 0);
    nothing.draw(GL_TRIANGLES, 3);
    program_t::unuse();
    glEnable(GL_DEPTH_TEST);
    return target.read_pixels().at(16, 16);
}

TEST_F(EnvironmentDirection, TotalReflectionLooksUpTheZeroDirectionAsItIs) {
    const auto cube = bound_texture::cube(3, face_colors);
    pixel_t expected = zero_direction_color(target);
    expected[3] = 255;
    environment.reflectalpha = 0.0F;
    environment.refractalpha = 1.0F;
    environment.refractfactor = 10.0F;
    // Any other direction would look at another face each time.
    const mtx3w skies[] = {mtx_identity,
                           rotation(90, {0, 1, 0}),
                           rotation(180, {0, 1, 0}),
                           rotation(-90, {0, 1, 0}),
                           rotation(90, {1, 0, 0}),
                           rotation(-90, {1, 0, 0})};
    for (const mtx3w& sky : skies) {
        view.Globalview = sky;
        turn_view(turned_views[1]);
        clear();
        drawsolid();
        for (const auto& [column, row] : places)
            EXPECT_EQ(target.read_pixels().at(column, size - 1 - row), expected)
                << "column " << column << ", row " << row;
    }
}

}  // namespace
}  // namespace ulk3d
