#include "formats/scene/key_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/scene_text.h"

using namespace ulk3d;
using testing::ElementsAre;

namespace {

/// The keys that a document does not name as code, a whole word between two backticks.
key_names_t missing_keys(const std::string& document, const key_names_t& keys) {
    key_names_t missing;
    for (const std::string_view key : keys) {
        if (document.find('`' + std::string(key) + '`') == std::string::npos)
            missing.push_back(key);
    }
    return missing;
}

/// From a heading up to the next one.
std::string section_of(const std::string& document, const std::string& heading) {
    const std::size_t start = document.find("\n## " + heading + "\n");
    if (start == std::string::npos)
        return "";
    return document.substr(start, document.find("\n## ", start + 1) - start);
}

}  // namespace

TEST(KeyNames, AreThoseOfTheTables) {
    EXPECT_THAT(environment_key_names(),
                ElementsAre("cubetex", "cubemap", "reflectalpha", "refractalpha", "refractfactor"));
    EXPECT_THAT(nurbs_key_names(), ElementsAre("resolution", "knot1", "knot2", "weight", "color", "fcolor",
                                               "position", "circle", "sphere"));
    EXPECT_THAT(polygon_key_names(),
                ElementsAre("resolution", "texcoord", "element", "tangent", "binormal", "normal", "color",
                            "fcolor", "position", "circle", "sphere"));
    EXPECT_THAT(shared_key_names(), ElementsAre("refractfactor", "texture", "texfilter", "mipmap",
                                                "nearlinear", "maglinear", "aniso", "bumptex", "bumpmap",
                                                "bumpofs", "bump2mono", "specular", "mercatorsphere"));
}

/// A line would be taken by the shorter key, or by the key of the block before the shared one.
TEST(KeyNames, NoKeyOfABlockBeginsWithAnother) {
    for (key_names_t keys : {nurbs_key_names(), polygon_key_names()}) {
        const key_names_t shared = shared_key_names();
        keys.insert(keys.end(), shared.begin(), shared.end());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            for (std::size_t j = 0; j < keys.size(); ++j)
                EXPECT_FALSE(i != j && keys[i].starts_with(keys[j])) << keys[i] << ' ' << keys[j];
        }
    }
}

TEST(KeyNames, AreAllInTheirSectionOfTheDescriptionOfTheFormat) {
    const std::string document = ulk_test::read_file(ulk_test::sample("../docs/file-format.md"));
    const struct {
        const char* heading;
        key_names_t keys;
    } sections[] = {{"The environment", environment_key_names()},
                    {"NURBS models", nurbs_key_names()},
                    {"Polygon models", polygon_key_names()},
                    {"Maps", shared_key_names()}};
    for (const auto& section : sections)
        EXPECT_THAT(missing_keys(section_of(document, section.heading), section.keys), ElementsAre())
            << section.heading;
}

TEST(KeyNames, OneThatIsNotInItsSectionIsMissed) {
    const std::string document =
        "# Format\n\n## Maps\n\n`mipmap`, `texture`: a colour map, `mipmapping`\n\n## More\n\n`colour`\n";
    EXPECT_THAT(missing_keys(section_of(document, "Maps"), {"mipmap", "map", "colour", "mipmapp"}),
                ElementsAre("map", "colour", "mipmapp"));
    EXPECT_THAT(missing_keys(section_of(document, "Meshes"), {"mipmap"}), ElementsAre("mipmap"));
}
