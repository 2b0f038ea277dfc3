#include "gl/render/models/surface_scene.h"

#include "support/polygon_builder.h"

namespace ulk_test {

using namespace ulk3d;

bound_texture::bound_texture(GLenum texture_unit, GLenum texture_target, const std::function<void()>& upload)
    : unit(texture_unit), target(texture_target) {
    glGenTextures(1, &name);
    glActiveTexture(GL_TEXTURE0 + unit);
    glBindTexture(target, name);
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    upload();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glActiveTexture(GL_TEXTURE0);
}

bound_texture bound_texture::colors(GLenum unit, int width, int height,
                                    const std::vector<std::uint8_t>& texels) {
    EXPECT_EQ(texels.size(), static_cast<std::size_t>(width * height * 4));
    return {unit, GL_TEXTURE_2D, [&] {
                glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                             texels.data());
            }};
}

bound_texture bound_texture::normals(GLenum unit, int width, int height,
                                     const std::vector<std::int8_t>& texels) {
    EXPECT_EQ(texels.size(), static_cast<std::size_t>(width * height * 3));
    return {unit, GL_TEXTURE_2D, [&] {
                glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8_SNORM, width, height, 0, GL_RGB, GL_BYTE,
                             texels.data());
            }};
}

bound_texture bound_texture::cube(GLenum unit, const std::vector<std::uint8_t>& texels, int width) {
    const std::size_t face_bytes = static_cast<std::size_t>(width * width) * 4;
    EXPECT_EQ(texels.size(), 6 * face_bytes);
    return {unit, GL_TEXTURE_CUBE_MAP, [&] {
                for (GLenum face = 0; face < 6; ++face)
                    glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face, 0, GL_RGBA8, width, width, 0, GL_RGBA,
                                 GL_UNSIGNED_BYTE, texels.data() + face_bytes * face);
            }};
}

bound_texture::~bound_texture() {
    glActiveTexture(GL_TEXTURE0 + unit);
    glBindTexture(target, 0);
    glActiveTexture(GL_TEXTURE0);
    glDeleteTextures(1, &name);
}

void surface_test::SetUp() {
    gl_test::SetUp();
    target.bind();
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DITHER);
    ASSERT_TRUE(glpolygon.init(nullptr));
    const mtx3w identity{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    view.Globalview = identity;
    view.Modelview = identity;
    view.invModelview = identity;
    view.Projection = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -0.1F, 0, 0, 0, 0, 1}};
    make_triangle({0.5F, 0.4F, 0.3F, 1});
    clear();
}

void surface_test::TearDown() {
    glDisable(GL_DEPTH_TEST);
    gl_test::TearDown();
}

void surface_test::clear() {
    glClearColor(0.18F, 0.18F, 0.18F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void surface_test::make_triangle(col3a color) {
    const frame_t towards_viewer{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    triangle.vertices = {vertex_t{{-3, -1, -2}, color, {-1, 0}}, vertex_t{{3, -1, -2}, color, {2, 0}},
                         vertex_t{{0, 3, -2}, color, {0.5F, 2}}};
    triangle.frames = {towards_viewer, towards_viewer, towards_viewer};
    build();
}

void surface_test::build() {
    build_polygon(polygon, {triangle.vertices.begin(), triangle.vertices.end()}, {0, 1, 2},
                  {triangle.frames.begin(), triangle.frames.end()});
}

void surface_test::select_triangle(std::uint32_t polyid) {
    polygon.selectpolygon(polyid);
}

void surface_test::expect_pixel(int column, int row, const rgba_t& expected) {
    const libutils::rgba_picture_t picture = target.read_pixels();
    const auto& pixel = picture.at(column, size - 1 - row);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(pixel[i], expected[i] * 255, 2.0)
            << "column " << column << ", row " << row << ", channel " << i;
}

}  // namespace ulk_test
