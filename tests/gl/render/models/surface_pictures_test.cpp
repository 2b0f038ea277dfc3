#include <gmock/gmock.h>

#include <cstring>
#include <iostream>

#include "gl/render/models/surface_scene.h"
#include "gltextures/textures/texture_stores.h"
#include "support/captured_stream.h"
#include "support/gl_state.h"
#include "support/image_builder.h"
#include "support/pictures.h"
#include "utils/pictures/image_transforms.h"

/// Surfaces with the pictures of files: what a user sees of colour, bump and specular maps and of the
/// environment.
namespace ulk3d {
namespace {

using libutils::image2d;
using ulk_test::blend_by_alpha;
using ulk_test::bound_texture;
using ulk_test::colour_t;
using ulk_test::gl_integer;
using ulk_test::image_of;
using ulk_test::map_samples_t;
using ulk_test::plain_picture;
using ulk_test::rgba_t;
using ulk_test::write_cube;
using ulk_test::write_picture;
namespace image_format = libutils::image_format;

class SurfacePictures : public ulk_test::surface_test {
  protected:
    void SetUp() override {
        libgr::clear_texture_stores();
        ulk_test::surface_test::SetUp();
        texture.mipmap = false;
        texture.nearlinear = false;
        texture.maglinear = false;
        texture.bumpofs = false;
    }
    void TearDown() override {
        libgr::clear_texture_stores();
        ulk_test::surface_test::TearDown();
    }

    void open() { ASSERT_TRUE(texture.open(scene.c_str())); }
    /// Draws with the pictures and compares with what the samples of the maps give.
    void expect_drawn(const map_samples_t& maps) {
        clear();
        drawsolid();
        for (const auto& [column, row] : {std::pair{16, 16}, {4, 9}, {27, 12}, {16, 30}, {2, 2}})
            expect_pixel(column, row, blend_by_alpha(shaded(column, row, 1, maps), ground));
    }
    /// Gives the whole surface one texture coordinate.
    void look_at(float u, float v) {
        for (vertex_t& vertex : triangle.vertices)
            vertex.texcoord = {u, v};
        build();
    }

    ulk_test::temporary_folder_t folder;
    std::string scene = folder.path("scene.ulk");
};

TEST_F(SurfacePictures, WithoutNamesIsAsWithoutMaps) {
    open();
    expect_drawn({});
}

TEST_F(SurfacePictures, RedMapShowsRed) {
    write_picture(folder, "red.png", plain_picture(2, 2, {255, 0, 0}));
    texture.texture = "red.png";
    open();
    expect_drawn({.color = {1, 0, 0, 1}});
}

struct colour_case_t {
    const char* file;
    image2d image;
    rgba_t shown;
};

TEST_F(SurfacePictures, EveryFormOfPictureShowsItsColours) {
    const colour_case_t rows[] = {
        {"grey.png", image_of(image_format::grey, 1, 1, {102}), {0.4, 0.4, 0.4, 1}},
        {"grey_alpha.png", image_of(image_format::grey_alpha, 1, 1, {102, 51}), {0.4, 0.4, 0.4, 0.2}},
        {"rgb.png", image_of(image_format::rgb, 1, 1, {255, 102, 51}), {1, 0.4, 0.2, 1}},
        {"rgba.png", image_of(image_format::rgba, 1, 1, {255, 102, 51, 153}), {1, 0.4, 0.2, 0.6}},
        {"bgr.bmp", image_of(image_format::rgb, 1, 1, {255, 102, 51}), {1, 0.4, 0.2, 1}},
        {"bgra.tga", image_of(image_format::rgba, 1, 1, {255, 102, 51, 153}), {1, 0.4, 0.2, 0.6}},
    };
    for (const colour_case_t& row : rows) {
        SCOPED_TRACE(row.file);
        write_picture(folder, row.file, row.image);
        texture.texture = row.file;
        open();
        expect_drawn({.color = row.shown});
    }
}

TEST_F(SurfacePictures, SixteenBitsOfAPictureShowInTheirOrder) {
    image2d deep = ulk_test::image_header(image_format::rgb, libutils::image_bits::bits_16, 1, 1);
    ASSERT_TRUE(deep.allocate());
    constexpr std::uint16_t values[] = {0x8001, 0xFFFF, 0x00FF};
    std::memcpy(deep.begin(), values, sizeof values);
    write_picture(folder, "deep.png", deep);
    texture.texture = "deep.png";
    open();
    expect_drawn({.color = {0.5, 1, 0, 1}});
}

TEST_F(SurfacePictures, RowZeroIsAtTheBottom) {
    // Bottom row red and green, top row blue and white.
    write_picture(folder, "four.png",
                  image_of(image_format::rgb, 2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));
    texture.texture = "four.png";
    open();
    look_at(0.25F, 0.25F);
    expect_drawn({.color = {1, 0, 0, 1}});
    look_at(0.75F, 0.25F);
    expect_drawn({.color = {0, 1, 0, 1}});
    look_at(0.25F, 0.75F);
    expect_drawn({.color = {0, 0, 1, 1}});
    look_at(1.75F, -0.25F);
    expect_drawn({.color = {1, 1, 1, 1}});
}

TEST_F(SurfacePictures, SpecularMapTakesTheHighlightAway) {
    write_picture(folder, "dull.png", image_of(image_format::rgba, 1, 1, {0, 0, 0, 0}));
    texture.specular = "dull.png";
    open();
    expect_drawn({.specular = {0, 0, 0, 0}});
}

// --- bump maps --------------------------------------------------------------------------------------------

/// What the map gives for the normal of the pixel at (x, y).
map_samples_t normal_at(const image2d& normals, std::uint32_t x, std::uint32_t y) {
    map_samples_t maps;
    for (std::size_t i = 0; i < 3; ++i)
        maps.normal[i] = static_cast<signed char>(normals.pixel(x, y)[i]) / 127.0;
    return maps;
}

TEST_F(SurfacePictures, HeightsTiltTheLightBothWays) {
    const image2d heights = image_of(image_format::grey, 2, 2, {0, 120, 0, 120});
    write_picture(folder, "heights.png", heights);
    image2d normals;
    ASSERT_TRUE(libutils::heightmap2normalmap(normals, heights));
    texture.bumpmap = "heights.png";
    open();
    const map_samples_t up = normal_at(normals, 0, 0);
    const map_samples_t down = normal_at(normals, 1, 0);
    ASSERT_GT(up.normal[0], 0.2);
    ASSERT_LT(down.normal[0], -0.2);
    look_at(0.25F, 0.25F);
    expect_drawn(up);
    look_at(0.75F, 0.25F);
    expect_drawn(down);
}

TEST_F(SurfacePictures, ColoursOfABumpMapAreSignedNormals) {
    const image2d signed_normals = image_of(image_format::rgb, 2, 1, {192, 32, 100, 64, 224, 100});
    write_picture(folder, "normals.png", signed_normals);
    texture.bumpmap = "normals.png";
    open();
    look_at(0.25F, 0.5F);
    expect_drawn({.normal = {-64 / 127.0, 32 / 127.0, 100 / 127.0}});
    look_at(0.75F, 0.5F);
    expect_drawn({.normal = {64 / 127.0, -32 / 127.0, 100 / 127.0}});
}

TEST_F(SurfacePictures, ColoursOfABumpMapInBlueGreenRedAreSignedNormalsToo) {
    write_picture(folder, "normals.bmp", image_of(image_format::rgb, 1, 1, {192, 32, 100}));
    texture.bumpmap = "normals.bmp";
    open();
    expect_drawn({.normal = {-64 / 127.0, 32 / 127.0, 100 / 127.0}});
}

TEST_F(SurfacePictures, MonochromeOfColoursTiltsTheLight) {
    const image2d colours = image_of(image_format::rgb, 2, 1, {0, 0, 0, 0, 200, 0});
    write_picture(folder, "colours.png", colours);
    image2d grey;
    image2d normals;
    ASSERT_TRUE(libutils::rgb2grey(grey, colours));
    ASSERT_TRUE(libutils::heightmap2normalmap(normals, grey));
    texture.bumpmap = "colours.png";
    texture.bump2mono = true;
    open();
    look_at(0.75F, 0.5F);
    expect_drawn(normal_at(normals, 1, 0));
}

TEST_F(SurfacePictures, BumpOffsetMovesTheMapByHalfATexel) {
    write_picture(folder, "normals.png", image_of(image_format::rgb, 2, 1, {0, 0, 127, 64, 0, 100}));
    texture.bumpmap = "normals.png";
    texture.bumpofs = true;
    open();
    look_at(0.625F, 0.5F);  // a quarter to the left is the first texel
    expect_drawn({.normal = {0, 0, 1}});
    look_at(0.875F, 0.5F);
    expect_drawn({.normal = {64 / 127.0, 0, 100 / 127.0}});
}

// --- pictures that can not be loaded ----------------------------------------------------------------------

TEST_F(SurfacePictures, MissingPictureLeavesTheSurfaceVisible) {
    for (std::string texture_t::*name : {&texture_t::texture, &texture_t::bumpmap, &texture_t::specular}) {
        libgr::clear_texture_stores();
        texture_t missing;
        missing.*name = "missing.png";
        texture = missing;
        const ulk_test::captured_stream errors(std::cerr);
        EXPECT_FALSE(texture.open(scene.c_str()));
        expect_drawn({});
    }
}

TEST_F(SurfacePictures, HandleWithoutAnEntryIsLikeNone) {
    texture.color_handle = 0x10005;
    environment.cubetex = "sky.png";
    environment.cube_handle = 0x10005;
    environment.reflectalpha = 0;
    expect_drawn({});
}

// --- what a pass leaves behind ----------------------------------------------------------------------------

void expect_nothing_bound() {
    EXPECT_EQ(gl_integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    for (GLenum unit = 0; unit < 4; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), 0) << "unit " << unit;
        EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_CUBE_MAP), 0) << "unit " << unit;
    }
    glActiveTexture(GL_TEXTURE0);
}

/// Takes off what opening has left bound.
void unbind_all() {
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
}

TEST_F(SurfacePictures, PassesLeaveNothingBound) {
    write_picture(folder, "red.png", plain_picture(2, 2, {255, 0, 0}));
    write_cube(folder, "sky", {});
    texture.texture = texture.bumpmap = texture.specular = "red.png";
    environment.cubetex = "sky.png";
    open();
    ASSERT_TRUE(environment.initex(scene.c_str()));
    unbind_all();
    select_triangle(0);
    drawselect();
    expect_nothing_bound();
    drawsolid();
    expect_nothing_bound();
}

// --- the environment --------------------------------------------------------------------------------------

constexpr std::array<colour_t, 6> face_colours{
    {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 0}, {255, 0, 255}, {0, 255, 255}}};

/// A black surface without a highlight: what is seen is the environment.
class MirrorPictures : public SurfacePictures {
  protected:
    void SetUp() override {
        SurfacePictures::SetUp();
        make_triangle({0, 0, 0, 1});
        write_picture(folder, "dull.png", image_of(image_format::rgba, 1, 1, {0, 0, 0, 0}));
        texture.specular = "dull.png";
        open();
        environment.cubetex = "sky.png";
    }
    void init_environment() { ASSERT_TRUE(environment.initex(scene.c_str())); }
    /// The place of the colour that a pixel is nearest to.
    std::size_t nearest_of(const std::array<colour_t, 4>& colours, int column, int row) {
        const libutils::rgba_picture_t picture = target.read_pixels();
        const auto& pixel = picture.at(column, size - 1 - row);
        const auto distance = [&pixel](const colour_t& colour) {
            int sum = 0;
            for (std::size_t i = 0; i < 3; ++i)
                sum += (pixel[i] - colour[i]) * (pixel[i] - colour[i]);
            return sum;
        };
        return static_cast<std::size_t>(std::ranges::min_element(colours, {}, distance) - colours.begin());
    }
    void expect_mirrored(int column, int row, const colour_t& colour) {
        expect_pixel(column, row, {colour[0] / 255.0, colour[1] / 255.0, colour[2] / 255.0, 1});
    }
};

TEST_F(MirrorPictures, EachDirectionShowsItsFace) {
    write_cube(folder, "sky", face_colours);
    init_environment();
    // The surface faces +z and mirrors what lies there; each matrix turns +z to another direction.
    const std::array<mtx3w, 6> turns{{
        {{0, 0, 1, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 0, 1}},
        {{0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1}},
        {{1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1}},
        {{1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1}},
        {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}},
        {{-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1}},
    }};
    for (std::size_t face = 0; face < turns.size(); ++face) {
        SCOPED_TRACE(face);
        view.Globalview = turns[face];
        clear();
        drawsolid();
        expect_mirrored(16, 16, face_colours[face]);
    }
}

TEST_F(MirrorPictures, PictureOfAFaceLiesAsGLHasIt) {
    write_cube(folder, "sky", {});
    // Rows from the bottom: red, green; blue, yellow.
    write_picture(folder, "sky_negz.png",
                  image_of(image_format::rgb, 2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0}));
    init_environment();
    // Looked up by the position: the surface at z = -2 is the face at -z, seen from inside; its first row is
    // above and its first column on the right.
    const std::array<std::pair<int, int>, 4> places{{{28, 28}, {4, 28}, {28, 4}, {4, 4}}};
    const std::array<colour_t, 4> colours{{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 0}}};
    for (vertex_t& vertex : triangle.vertices)
        vertex.position = {vertex.position.x * 2, vertex.position.y * 2, -1};
    build();
    view.Projection.m[10] = -0.5F;
    drawsolid(true);
    // How sharply GL filters a cube map differs between drivers; which texel has the largest share does not.
    for (std::size_t i = 0; i < places.size(); ++i)
        EXPECT_EQ(nearest_of(colours, places[i].first, places[i].second), i);
}

TEST_F(MirrorPictures, GreyFacesMirrorGrey) {
    for (const char* suffix : ulk_test::cube_suffixes)
        write_picture(folder, std::string("sky") + suffix + ".png",
                      image_of(image_format::grey, 1, 1, {102}));
    init_environment();
    drawsolid();
    expect_mirrored(16, 16, {102, 102, 102});
}

TEST_F(MirrorPictures, ReflectionAndRefractionHaveTheirShares) {
    write_cube(folder, "sky", face_colours);
    init_environment();
    environment.reflectalpha = 0.5F;
    environment.refractalpha = 0.25F;
    drawsolid();
    expect_pixel(16, 16, {0.5, 0.25, 0.75, 1});  // half of +z and a quarter of -z
}

TEST_F(MirrorPictures, WithBothSharesZeroShowsNothing) {
    write_cube(folder, "sky", face_colours);
    init_environment();
    environment.reflectalpha = 0;
    environment.refractalpha = 0;
    drawsolid();
    expect_mirrored(16, 16, {0, 0, 0});
}

TEST_F(MirrorPictures, WithoutANameShowsNothingThoughThereIsACube) {
    environment.cubetex.clear();
    init_environment();
    ASSERT_NE(environment.cube_handle, 0U);
    drawsolid();
    expect_mirrored(16, 16, {0, 0, 0});
}

TEST_F(MirrorPictures, MissingFaceShowsNothing) {
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_FALSE(environment.initex(scene.c_str()));
    drawsolid();
    expect_mirrored(16, 16, {0, 0, 0});
}

TEST_F(MirrorPictures, NameWithoutAHandleShowsWhatIsBound) {
    const auto cube = bound_texture::cube(3, std::vector<std::uint8_t>(24, 102));
    ASSERT_EQ(environment.cube_handle, 0U);
    drawsolid();
    expect_pixel(16, 16, {0.4, 0.4, 0.4, 1});
    drawselect();
    glActiveTexture(GL_TEXTURE3);
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_CUBE_MAP), static_cast<GLint>(cube.id()));
    glActiveTexture(GL_TEXTURE0);
}

TEST_F(MirrorPictures, SelectedTrianglesMirrorNothing) {
    write_cube(folder, "sky", face_colours);
    init_environment();
    select_triangle(0);
    drawselect();
    // The unit of the cube stands empty; what GL gives of it is black and opaque.
    expect_mirrored(16, 16, {0, 0, 0});
}

}  // namespace
}  // namespace ulk3d
