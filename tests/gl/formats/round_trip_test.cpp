#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>
#include <sstream>
#include <string>

#include "formats/scene/scene_text.h"
#include "formats/scene_files.h"
#include "gl/formats/scene/block_reading.h"
#include "model/math/colours.h"
#include "render/gl/mapped_span.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

using RoundTrip = gl_test;

/// Random values, all of six significant digits at most, so that files hold them exactly.
class random_values {
  public:
    explicit random_values(unsigned seed) : engine(seed) {}

    std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(engine()) % bound; }
    bool flag() { return below(2) == 1; }
    float number() {
        constexpr float scales[] = {1, 0.5F, 0.25F, 0.125F, 1024};
        return (static_cast<float>(below(199)) - 99) * scales[below(5)];
    }
    dir3 direction() { return {number(), number(), number()}; }
    pos3 position() { return {number(), number(), number()}; }
    col3a color() {
        const auto byte = [this] { return static_cast<std::uint8_t>(below(256)); };
        return flag() ? last : last = bytes_to_colour({byte(), byte(), byte(), byte()});
    }
    std::string path() {
        constexpr const char* paths[] = {"a.png",        "my image.png", " leading",
                                         "\x83\x5c.png", "dir/b.jpg",    ""};
        return paths[below(6)];
    }

    texture_t texture() {
        texture_t made;
        made.texture = path();
        made.bumpmap = path();
        made.specular = path();
        made.aniso = number();
        made.refractfactor = number();
        made.bumpofs = flag();
        made.bump2mono = flag();
        made.mipmap = flag();
        made.nearlinear = flag();
        made.maglinear = flag();
        made.mercatorsphere = flag();
        return made;
    }

  private:
    std::mt19937 engine;
    col3a last = bytes_to_colour({1, 2, 3, 4});
};

/// What a file keeps of a texture set: the settings of a map only beside its path.
void expect_kept(const texture_t& loaded, const texture_t& saved) {
    const texture_t defaults;
    const texture_t& of_texture = saved.texture.empty() ? defaults : saved;
    const texture_t& of_bumpmap = saved.bumpmap.empty() ? defaults : saved;
    EXPECT_EQ(loaded.texture, saved.texture);
    EXPECT_EQ(loaded.mipmap, of_texture.mipmap);
    EXPECT_EQ(loaded.nearlinear, of_texture.nearlinear);
    EXPECT_EQ(loaded.maglinear, of_texture.maglinear);
    EXPECT_EQ(loaded.aniso, of_texture.aniso);
    EXPECT_EQ(loaded.bumpmap, saved.bumpmap);
    EXPECT_EQ(loaded.bumpofs, of_bumpmap.bumpofs);
    EXPECT_EQ(loaded.bump2mono, of_bumpmap.bump2mono);
    EXPECT_EQ(loaded.specular, saved.specular);
    EXPECT_EQ(loaded.refractfactor, saved.refractfactor);
    EXPECT_EQ(loaded.mercatorsphere, saved.mercatorsphere);
}

/// A colour of the default's bytes comes back as the default when nothing was written before it, and else as
/// its bytes.
void expect_kept(const col3a& loaded, const col3a& saved) {
    EXPECT_EQ(colour_to_bytes(loaded), colour_to_bytes(saved));
}

std::unique_ptr<model_entry_t> random_polygon(random_values& random) {
    auto entry = std::make_unique<model_entry_t>(model_kind_t::polygon);
    entry->texture = random.texture();
    const std::uint32_t vertex_count = 1 + random.below(30);
    const std::uint32_t element_count = random.below(40);
    EXPECT_TRUE(entry->polygon.allocate(vertex_count, element_count));
    const array_span<vertex_t> vertices(entry->polygon.vertices);
    const array_span<frame_t> frames(entry->polygon.normals);
    const index_span elements(entry->polygon.elements);
    for (vertex_t& vertex : vertices.span())
        vertex = {random.position(), random.color(), {random.number(), random.number()}};
    // No normal is zero: frames that a load completion would replace are none of the file's.
    for (frame_t& frame : frames.span())
        frame = {random.direction(), random.direction(), {random.number(), random.number(), 1}};
    for (std::uint32_t& element : elements.span())
        element = random.below(5) == 0 ? restart_mark : random.below(vertex_count + 2);
    return entry;
}

std::unique_ptr<model_entry_t> random_nurbs(random_values& random) {
    auto entry = std::make_unique<model_entry_t>(model_kind_t::nurbs);
    entry->texture = random.texture();
    nurbs_t& nurbs = entry->nurbs;
    EXPECT_TRUE(
        nurbs.allocate(1 + random.below(4), 1 + random.below(5), 1 + random.below(4), 1 + random.below(5)));
    nurbs.resolution1 = 1 + random.below(5);
    nurbs.resolution2 = 1 + random.below(5);
    for (auto* const table : {&nurbs.knot1, &nurbs.knot2, &nurbs.weight}) {
        for (float& value : table->data)
            value = random.number();
    }
    for (control_point_t& point : nurbs.points.data)
        point = {random.position(), random.color()};
    return entry;
}

}  // namespace

TEST_F(RoundTrip, APolygonModelKeepsWhatTheFormatKeeps) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        random_values random(seed);
        const auto saved = random_polygon(random);
        const std::string text = written_polygon(*saved);
        const block_reading_t loaded = read_polygon(text);
        ASSERT_TRUE(loaded.result) << seed << '\n' << loaded.messages;
        EXPECT_EQ(loaded.messages, "");
        expect_kept(loaded.entry->texture, saved->texture);
        EXPECT_EQ(elements_of(*loaded.entry), elements_of(*saved));
        EXPECT_EQ(frames_of(*loaded.entry), frames_of(*saved));
        const auto before = vertices_of(*saved);
        const auto after = vertices_of(*loaded.entry);
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(after[i].position, before[i].position);
            EXPECT_EQ(after[i].texcoord, before[i].texcoord);
            expect_kept(after[i].color, before[i].color);
        }
        EXPECT_EQ(written_polygon(*loaded.entry), text) << seed;
        if (HasFailure())
            break;
    }
}

TEST_F(RoundTrip, ANurbsModelKeepsWhatTheFormatKeeps) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        random_values random(seed);
        const auto saved = random_nurbs(random);
        const std::string text = written_nurbs(*saved);
        const block_reading_t loaded = read_nurbs(text);
        ASSERT_TRUE(loaded.result) << seed << '\n' << loaded.messages;
        EXPECT_EQ(loaded.messages, "");
        expect_kept(loaded.entry->texture, saved->texture);
        const nurbs_t& before = saved->nurbs;
        const nurbs_t& after = loaded.entry->nurbs;
        EXPECT_EQ(after.count1, before.count1);
        EXPECT_EQ(after.order1, before.order1);
        EXPECT_EQ(after.count2, before.count2);
        EXPECT_EQ(after.order2, before.order2);
        EXPECT_EQ(after.resolution1, before.resolution1);
        EXPECT_EQ(after.resolution2, before.resolution2);
        EXPECT_EQ(after.knot1.data, before.knot1.data);
        EXPECT_EQ(after.knot2.data, before.knot2.data);
        EXPECT_EQ(after.weight.data, before.weight.data);
        ASSERT_EQ(after.points.data.size(), before.points.data.size());
        for (std::size_t i = 0; i < before.points.data.size(); ++i) {
            EXPECT_EQ(after.points.data[i].position, before.points.data[i].position);
            expect_kept(after.points.data[i].color, before.points.data[i].color);
        }
        EXPECT_EQ(written_nurbs(*loaded.entry), text) << seed;
        if (HasFailure())
            break;
    }
}

TEST_F(RoundTrip, TheDefaultColorSurvivesAlthoughNoByteStandsForIt) {
    const block_reading_t first = read_polygon(triangle_block());
    const block_reading_t again = read_polygon(written_polygon(*first.entry));
    EXPECT_EQ(vertices_of(*again.entry), vertices_of(*first.entry));
}

TEST_F(RoundTrip, NotANumberAndInfinitySurviveInFramesKnotsAndWeightsOnly) {
    const block_reading_t polygon = read_polygon(
        "begin polygon_surface,1,0\nposition 1/0,1,2\ntangent nan,0,0\nbinormal 0,inf,0\n"
        "normal 0,0,-inf\nend\n");
    ASSERT_TRUE(polygon.result);
    EXPECT_EQ(vertices_of(*polygon.entry)[0].position, (pos3{INFINITY, 1, 2}));
    const block_reading_t polygon_again = read_polygon(written_polygon(*polygon.entry));
    EXPECT_EQ(vertices_of(*polygon_again.entry)[0].position, (pos3{0, 0, 0}));
    const frame_t frame = frames_of(*polygon_again.entry)[0];
    EXPECT_TRUE(std::isnan(frame.tangent.x));
    EXPECT_EQ(frame.binormal.y, INFINITY);
    EXPECT_EQ(frame.normal.z, -INFINITY);

    const block_reading_t nurbs = read_nurbs(
        "begin nurbs_surface,1,1,1,1\nresolution 2,2\nknot1 nan\nknot1 inf\nknot2 0\nknot2 1\nweight -inf\n"
        "position 0,0,0\nend\n");
    const block_reading_t nurbs_again = read_nurbs(written_nurbs(*nurbs.entry));
    EXPECT_TRUE(std::isnan(nurbs_again.entry->nurbs.knot1.data[0]));
    EXPECT_EQ(nurbs_again.entry->nurbs.knot1.data[1], INFINITY);
    EXPECT_EQ(nurbs_again.entry->nurbs.weight.data[0], -INFINITY);
}

TEST_F(RoundTrip, ASceneComesBackWhole) {
    const temporary_folder_t folder;
    const std::string path = folder.path("scene.ulk");
    scene_t saved;
    random_values random(1);
    for (int i = 0; i < 3; ++i) {
        saved.models.push_back(random_polygon(random));
        saved.models.push_back(random_nurbs(random));
        // Without pictures beside the file its maps would be missing.
        for (model_entry_t* entry : {saved.models.back().get(), std::next(saved.models.rbegin())->get()})
            entry->texture.texture = entry->texture.bumpmap = entry->texture.specular = "";
    }
    ASSERT_TRUE(save_scene(saved, path.c_str()));
    const std::string first = read_file(path);

    scene_t loaded;
    std::ostringstream log;
    ASSERT_TRUE(load_scene(loaded, path.c_str(), surface_programs(), log));
    EXPECT_EQ(log.str(), "");
    ASSERT_EQ(loaded.models.size(), 6U);
    ASSERT_TRUE(save_scene(loaded, path.c_str()));
    EXPECT_EQ(read_file(path), first);

    ASSERT_TRUE(save_models(loaded.models, path.c_str()));
    scene_t reloaded;
    ASSERT_TRUE(load_scene(reloaded, path.c_str(), surface_programs(), log));
    EXPECT_EQ(reloaded.models.size(), 6U);
}
