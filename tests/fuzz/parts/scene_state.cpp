#include "fuzz/parts/scene_state.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "render/gl/mapped_span.h"

namespace ulk_test {

using namespace ulk3d;

namespace {

template <class Array>
std::vector<std::uint32_t> mapped_words(const Array& array) {
    if (!array.has_buffer())
        return {};
    const mapped_span<const std::uint32_t, Array> words(array);
    return {words.begin(), words.end()};
}

/// Collects the parts of one scene.
class collector_t {
  public:
    explicit collector_t(bool takes_names) : with_names(takes_names) {}

    void scene(const edited_scene_t& of) {
        part("the current model", {of.current_index(), std::uint64_t{of.current_model() != nullptr}});
        text("the environment's map", of.environment.cubetex);
        const environment_t& environment = of.environment;
        floats("the environment",
               std::vector{environment.reflectalpha, environment.refractalpha, environment.refractfactor});
        for (const fold_pick_t& pick : of.fold_picks)
            part("the fold axis", {pick.model, pick.vertex});
        part("the number of models", {of.models().size()});
        std::size_t index = 0;
        for (const auto& entry : of.models()) {
            prefix = "model " + std::to_string(index++) + ": ";
            model(*entry);
        }
    }

    scene_state_t parts;

  private:
    void model(const model_entry_t& entry) {
        part("the kind", {static_cast<std::uint64_t>(entry.kind)});
        maps(entry.texture);
        mesh(entry.polygon);
        net(entry.nurbs);
    }

    void maps(const texture_t& texture) {
        for (const std::string* const path : {&texture.texture, &texture.bumpmap, &texture.specular})
            text("the maps", *path);
        floats("the settings of the maps", std::vector{texture.aniso, texture.refractfactor,
                                                       texture.bump_offset_u, texture.bump_offset_v});
        part("the switches of the maps", {texture.bumpofs, texture.bump2mono, texture.mipmap,
                                          texture.nearlinear, texture.maglinear, texture.mercatorsphere});
    }

    void mesh(const polygon_t& polygon) {
        points(polygon);
        words("the vertices", words_of(polygon.vertices));
        words("the normals", words_of(polygon.normals));
        words("the elements", words_of(polygon.elements));
        words("the selected triangles", words_of(polygon.selectelems));
        std::vector<std::uint64_t> places;
        for (std::size_t id = 0; id < polygon.polyidvector.size(); ++id) {
            const polygon_place_t place = polygon.polyidvector[id];
            places.push_back(std::uint64_t{place.position} << 1 | std::uint64_t{place.flipped});
        }
        part("the table of polygon ids", std::move(places));
        part("the selected polygons", {polygon.selectpolygons().begin(), polygon.selectpolygons().end()});
    }

    void net(const nurbs_t& nurbs) {
        points(nurbs);
        part("the counts and orders of the net", {nurbs.count1, nurbs.order1, nurbs.count2, nurbs.order2});
        part("the resolutions of the net", {nurbs.resolution1, nurbs.resolution2});
        floats("the knots along the rows", nurbs.knot1.data);
        floats("the knots along the columns", nurbs.knot2.data);
        floats("the weights", nurbs.weight.data);
        std::vector<float> numbers;
        for (const control_point_t& point : nurbs.points.data)
            for (const float number : std::bit_cast<std::array<float, 7>>(point))
                numbers.push_back(number);
        floats("the net's points", numbers);
        words("the points in the net's buffer", words_of(nurbs.ctlpts));
    }

    void points(const modeling_t& model) {
        if (with_names)
            text("the name", model.name);
        part("the selection", {model.selection.begin(), model.selection.end()});
        words("the sizes of the points", words_of(model.pointsizes));
    }

    void part(const char* name, std::vector<std::uint64_t> bits) {
        parts.push_back({prefix + name, std::move(bits)});
    }
    void words(const char* name, const std::vector<std::uint32_t>& values) {
        part(name, {values.begin(), values.end()});
    }
    void floats(const char* name, const std::vector<float>& values) {
        std::vector<std::uint64_t> bits;
        for (const float value : values)
            bits.push_back(std::bit_cast<std::uint32_t>(value));
        part(name, std::move(bits));
    }
    void text(const char* name, const std::string& value) { part(name, {value.begin(), value.end()}); }

    bool with_names;
    std::string prefix;
};

}  // namespace

std::vector<std::uint32_t> words_of(const array_t& array) {
    return mapped_words(array);
}

std::vector<std::uint32_t> words_of(const element_array_t& array) {
    return mapped_words(array);
}

scene_state_t state_of(const edited_scene_t& scene) {
    collector_t collector(true);
    collector.scene(scene);
    return std::move(collector.parts);
}

scene_state_t unnamed_state_of(const edited_scene_t& scene) {
    collector_t collector(false);
    collector.scene(scene);
    return std::move(collector.parts);
}

std::string first_difference(const scene_state_t& before, const scene_state_t& after) {
    for (std::size_t n = 0; n < std::min(before.size(), after.size()); ++n) {
        if (before[n] == after[n])
            continue;
        const auto [old_value, new_value] = std::ranges::mismatch(before[n].bits, after[n].bits);
        return before[n].name + " differ from value " + std::to_string(old_value - before[n].bits.begin()) +
               " of " + std::to_string(before[n].bits.size()) + " on, then of " +
               std::to_string(after[n].bits.size());
    }
    return before.size() == after.size() ? std::string() : "the number of models differs";
}

}  // namespace ulk_test
