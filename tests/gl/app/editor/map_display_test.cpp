#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <iostream>

#include "gl/app/editor/editor_test.h"
#include "gltextures/textures/texture_stores.h"
#include "support/captured_stream.h"
#include "support/image_builder.h"
#include "support/pictures.h"

/// Scene files with maps and surroundings: what their frame shows.
namespace {

using namespace ulk3d;
using namespace ulk_test;
using libutils::rgba_picture_t;
namespace image_format = libutils::image_format;

constexpr std::array<colour_t, 6> face_colours{
    {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 0}, {255, 0, 255}, {0, 255, 255}}};

class MapDisplay : public editor_test {
  protected:
    void SetUp() override {
        libgr::clear_texture_stores();
        editor_test::SetUp();
        editor.set_control_points(false);
        editor.set_grid(false);
        write_picture(folder, "dull.png", plain_picture(1, 1, {0, 0, 0}));
    }
    void TearDown() override {
        libgr::clear_texture_stores();
        editor_test::TearDown();
    }

    colour_t colour_at(const rgba_picture_t& picture, const pos3& place) const {
        const pixel_place_t at = place_of(view_t::perspective, place);
        const rgba_picture_t::pixel_t& pixel = picture.at(at.x, at.y);
        return {pixel[0], pixel[1], pixel[2]};
    }

    /// The channels that are seen clearly, as letters: the light takes some of the strength of a colour.
    std::string hue_at(const rgba_picture_t& picture, const pos3& place) const {
        const colour_t colour = colour_at(picture, place);
        std::string hue;
        for (std::size_t channel = 0; channel < colour.size(); ++channel)
            if (colour[channel] > 100)
                hue += "rgb"[channel];
        return hue;
    }
};

/// A white square from -1 to 1 with texture coordinates from 0 to 1 and no highlight.
std::string mapped_square(const std::string& maps) {
    std::string text = "begin polygon_surface,4,4\n" + maps + "specular dull.png\nfcolor 1,1,1,1\n";
    for (const char* corner :
         {"0,0\nposition -1,-1,0", "1,0\nposition 1,-1,0", "0,1\nposition -1,1,0", "1,1\nposition 1,1,0"})
        text += std::string("texcoord ") + corner + "\n";
    for (int i = 0; i < 4; ++i)
        text += "element " + std::to_string(i) + "\ntangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n";
    return text + "end\n";
}

const std::string without_filters = "mipmap 0\nnearlinear 0\nmaglinear 0\n";

TEST_F(MapDisplay, RedMapShowsRed) {
    write_picture(folder, "red.png", plain_picture(2, 2, {255, 0, 0}));
    open(mapped_square("texture red.png\n"));
    EXPECT_EQ(hue_at(frame(), {0.2F, 0.3F, 0}), "r");
}

TEST_F(MapDisplay, MissingMapIsWhiteAndNotThatOfAnotherModel) {
    const captured_stream errors(std::cerr);
    // The second square lies in the first one, which hides it. Its last picture is a black one.
    open(mapped_square("texture missing.png\n") + mapped_square(""));
    EXPECT_EQ(hue_at(frame(), {0.8F, -0.8F, 0}), "rgb");
}

TEST_F(MapDisplay, MapOfWhichHalfIsMissingIsWhite) {
    const std::string path = write_picture(folder, "cut.bmp", plain_picture(4, 4, {255, 0, 0}));
    std::filesystem::resize_file(path, 54 + 2 * 12);
    const captured_stream errors(std::cerr);
    open(mapped_square("texture cut.bmp\n"));
    EXPECT_EQ(hue_at(frame(), {0.2F, 0.3F, 0}), "rgb");
}

TEST_F(MapDisplay, MapLiesByItsTextureCoordinates) {
    write_picture(folder, "four.png",
                  image_of(image_format::rgb, 2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0}));
    open(mapped_square("texture four.png\n" + without_filters));
    const rgba_picture_t picture = frame();
    EXPECT_EQ(hue_at(picture, {-0.5F, -0.5F, 0}), "r");
    EXPECT_EQ(hue_at(picture, {0.5F, -0.5F, 0}), "g");
    EXPECT_EQ(hue_at(picture, {-0.5F, 0.5F, 0}), "b");
    EXPECT_EQ(hue_at(picture, {0.5F, 0.5F, 0}), "rg");
}

TEST_F(MapDisplay, MapOfANurbsSurfaceLiesByItsParameters) {
    write_picture(folder, "four.png",
                  image_of(image_format::rgb, 2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0}));
    std::string text = patch_block();
    text.insert(text.find('\n') + 1,
                "fcolor 1,1,1,1\ntexture four.png\nspecular dull.png\n" + without_filters);
    open(text);
    const rgba_picture_t picture = frame();
    EXPECT_EQ(hue_at(picture, {0.25F, 0.25F, 0}), "r");
    EXPECT_EQ(hue_at(picture, {0.75F, 0.25F, 0}), "g");
    EXPECT_EQ(hue_at(picture, {0.25F, 0.75F, 0}), "b");
    EXPECT_EQ(hue_at(picture, {0.75F, 0.75F, 0}), "rg");
}

TEST_F(MapDisplay, MercatorSpherePutsLatitudesWhereTheirHeightIs) {
    write_picture(folder, "zones.png",
                  image_of(image_format::rgb, 1, 4, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0}));
    open(mapped_square("texture zones.png\nmercatorsphere true\n" + without_filters));
    const rgba_picture_t picture = frame();
    // The zones meet at latitudes of -45, 0 and 45 degrees, at heights of -0.707, 0 and 0.707.
    const std::vector<std::pair<float, std::string>> heights{{-0.9F, "r"},  {-0.76F, "r"}, {-0.65F, "g"},
                                                             {-0.1F, "g"},  {0.1F, "b"},   {0.65F, "b"},
                                                             {0.76F, "rg"}, {0.9F, "rg"}};
    for (const auto& [height, hue] : heights)
        EXPECT_EQ(hue_at(picture, {0.3F, height, 0}), hue) << height;
}

TEST_F(MapDisplay, WithoutMercatorSphereZonesAreAllOfOneHeight) {
    write_picture(folder, "zones.png",
                  image_of(image_format::rgb, 1, 4, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0}));
    open(mapped_square("texture zones.png\n" + without_filters));
    const rgba_picture_t picture = frame();
    const std::vector<std::pair<float, std::string>> heights{
        {-0.56F, "r"}, {-0.45F, "g"}, {0.45F, "b"}, {0.56F, "rg"}};
    for (const auto& [height, hue] : heights)
        EXPECT_EQ(hue_at(picture, {0.3F, height, 0}), hue) << height;
}

TEST_F(MapDisplay, DarkPlacesOfABumpMapStandOut) {
    // From left to right bright, dark, bright: a ridge, whose right flank looks to the right.
    write_picture(folder, "ridge.png",
                  image_of(image_format::grey, 8, 1, {255, 255, 255, 0, 0, 255, 255, 255}));
    open(mapped_square("bumpmap ridge.png\nbumpofs 0\n" + without_filters));
    const rgba_picture_t picture = frame();
    // The light comes from the middle; what looks away from it is darker than what lies flat.
    const int flat = colour_at(picture, {0.75F, 0.1F, 0})[0];
    const int right_flank = colour_at(picture, {0.125F, 0.1F, 0})[0];
    EXPECT_LT(right_flank, flat - 60);
}

TEST_F(MapDisplay, ModelsWithOnePictureShareOneTexture) {
    write_picture(folder, "red.png", plain_picture(2, 2, {255, 0, 0}));
    open(mapped_square("texture red.png\n") + mapped_square("texture red.png\nbumpmap red.png\n"));
    EXPECT_EQ(entry(0).texture.color_handle, entry(1).texture.color_handle);
    EXPECT_EQ(entry(0).texture.spec_handle, entry(1).texture.spec_handle);
    // The two pictures, the signed reading of the one, and the flat normal.
    EXPECT_EQ(libgr::model_textures.slots.size(), 4U);
}

// --- the balls of the samples in surroundings of six colours -----------------------------------------------

/// A sample scene with other surroundings: a black ball of radius 0.5 about the origin.
class BallDisplay : public MapDisplay {
  protected:
    void open_ball(const std::string& reflect, const std::string& refract, const std::string& factor) {
        std::filesystem::create_directory(folder.path("maps"));
        write_cube(folder, "maps/plain", face_colours);
        write_picture(folder, "maps/dull.png", plain_picture(1, 1, {0, 0, 0}));
        std::string text = read_file(sample("glass.ulk"));
        const auto replace_line = [&text](const std::string& key, const std::string& value) {
            const std::size_t begin = text.find("\n" + key) + 1;
            ASSERT_NE(begin, 0U) << key;
            text.replace(begin, text.find('\r', begin) - begin, key + " " + value);
        };
        replace_line("reflectalpha", reflect);
        replace_line("refractalpha", refract);
        replace_line("refractfactor", factor);
        replace_line("specular", "maps/dull.png");
        // Large enough that also the rim is seen through more than a few pixels.
        resize(1600, 1280);
        open(text);
    }

    /// Compares the ball with where `bend` sends the ray from the eye (both, and the normal, of length 1), at
    /// places all over it. The names of the faces that were met, in GL's order.
    template <typename bend_t>
    std::string faces_met(const bend_t& bend) {
        const rgba_picture_t picture = frame();
        const mtx3w& view = editor.camera().view.matrix;
        std::string met = "------";
        for (int tilt = 0; tilt < 80; tilt += 4)
            for (int turn = 0; turn < 360; turn += 15) {
                const float a = static_cast<float>(tilt) * deg, b = static_cast<float>(turn) * deg;
                const std::array<float, 3> normal{std::sin(a) * std::cos(b), std::sin(a) * std::sin(b),
                                                  std::cos(a)};
                const pos3 place{normal[0] / 2, normal[1] / 2, normal[2] / 2};
                std::array<float, 3> ray{place.x + view[12], place.y + view[13], place.z + view[14]};
                const float length = std::hypot(ray[0], ray[1], ray[2]);
                for (float& component : ray)
                    component /= length;
                const std::array<float, 3> bent = bend(ray, normal);
                const std::size_t face = clear_face(bent);
                // At the rim it is a matter of a pixel what is seen.
                if (dot(ray, normal) > -0.15F || face == no_face)
                    continue;
                EXPECT_EQ(colour_at(picture, place), face_colours[face]) << tilt << ", " << turn;
                met[face] = "XxYyZz"[face];
            }
        return met;
    }

    static float dot(const std::array<float, 3>& a, const std::array<float, 3>& b) {
        return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    }

  private:
    static constexpr float deg = 3.14159265F / 180;
    static constexpr std::size_t no_face = 6;

    /// The face of a direction, or none when it comes near to an edge.
    static std::size_t clear_face(const std::array<float, 3>& direction) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const float size = std::fabs(direction[axis]) * 0.85F;
            if (size > std::fabs(direction[(axis + 1) % 3]) && size > std::fabs(direction[(axis + 2) % 3]))
                return 2 * axis + (direction[axis] < 0 ? 1 : 0);
        }
        return no_face;
    }
};

TEST_F(BallDisplay, MirrorShowsEachFaceWhereTheRayGoes) {
    open_ball("1", "0", "1");
    EXPECT_EQ(faces_met([](const std::array<float, 3>& ray, const std::array<float, 3>& normal) {
                  const float along = dot(ray, normal);
                  return std::array{ray[0] - 2 * along * normal[0], ray[1] - 2 * along * normal[1],
                                    ray[2] - 2 * along * normal[2]};
              }),
              "XxYyZz");
}

TEST_F(BallDisplay, GlassShowsEachFaceWhereTheBentRayGoes) {
    open_ball("0", "1", "0.05");
    EXPECT_EQ(faces_met([](const std::array<float, 3>& ray, const std::array<float, 3>& normal) {
                  const float factor = 0.05F, along = dot(ray, normal);
                  const float root = std::sqrt(1 - factor * factor * (1 - along * along));
                  const float share = factor * along + root;
                  return std::array{factor * ray[0] - share * normal[0], factor * ray[1] - share * normal[1],
                                    factor * ray[2] - share * normal[2]};
              }),
              "XxYy-z");
}

}  // namespace
