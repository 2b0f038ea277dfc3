#include "formats/scene/shared_keys.h"

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "formats/scene/scene_text.h"
#include "model/texture.h"
#include "support/captured_stream.h"
#include "support/locale_scope.h"
#include "support/scene_text.h"

using namespace ulk3d;

namespace {

/// What a line does to a texture with all defaults.
struct reading_t {
    bool is_key = false;
    texture_t texture;
    std::string messages;
};

reading_t read(const std::string& text, surface_block_t block = surface_block_t::polygon,
               texture_t before = {}) {
    reading_t result;
    result.texture = std::move(before);
    std::ostringstream log;
    std::uint64_t counter = 17;
    line_log messages(log, counter);
    const text_line_t line{text.c_str(), text.size()};
    result.is_key = read_shared_key(line, block, result.texture, messages);
    result.messages = log.str();
    return result;
}

std::string written(const texture_t& texture) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.path("keys");
    text_output output(path.c_str());
    EXPECT_TRUE(write_texture_keys(texture, output));
    EXPECT_TRUE(output.complete());
    return ulk_test::read_file(path);
}

struct missing_row {
    const char* key;
    const char* in_nurbs;
    const char* in_polygon;
};

const missing_row missing_rows[] = {
    {"texture", "17: texture path is not set. ", "17: texture path is not set. "},
    {"texfilter", "17: texfilter is not set. ", "17: texfilter is not set. "},
    {"mipmap", "17: is_mipmap is not set. ", "17: mipmap is not set. "},
    {"nearlinear", "17: nearlinear is not set. ", "17: nearlinear is not set. "},
    {"maglinear", "17: maglinear is not set. ", "17: maglinear is not set. "},
    {"refractfactor", "17: refractfactor is not set. ", "17: refractfactor is not set. "},
    {"aniso", "17: aniso parm is not set. ", "17: aniso parm is not set. "},
    {"bumptex", "17: bumpmap path is not set. ", "17: bumpmap path is not set. "},
    {"bumpmap", "17: bumpmap path is not set. ", "17: bumpmap path is not set. "},
    {"bumpofs", "17: bumpofs parm is not set. ", "17: bumpofs parm is not set. "},
    {"bump2mono", "17: bump2mono parm is not set. ", "17: bump2mono parm is not set. "},
    {"specular", "17: specular path is not set. ", "17: specular path is not set. "},
    {"mercatorsphere", "17: mercatorsphere parm is not set. ", "17: mercatorsphere parm is not set. "},
};

}  // namespace

TEST(SharedKeys, AMissingValueIsAMessageWithTheWholeLine) {
    for (const missing_row& row : missing_rows) {
        for (const std::string& line : {std::string(row.key), std::string(row.key) + "\r"}) {
            const reading_t in_nurbs = read(line, surface_block_t::nurbs);
            EXPECT_TRUE(in_nurbs.is_key);
            EXPECT_EQ(in_nurbs.messages, row.in_nurbs + line + "\n");
            const reading_t in_polygon = read(line, surface_block_t::polygon);
            EXPECT_TRUE(in_polygon.is_key);
            EXPECT_EQ(in_polygon.messages, row.in_polygon + line + "\n");
        }
    }
}

TEST(SharedKeys, PathsAreTheRestOfTheLineLessOneCarriageReturn) {
    const struct {
        const char* key;
        std::string texture_t::*field;
    } rows[] = {{"texture", &texture_t::texture},
                {"bumptex", &texture_t::bumpmap},
                {"bumpmap", &texture_t::bumpmap},
                {"specular", &texture_t::specular}};
    for (const auto& row : rows) {
        const auto path = [&row](const std::string& value) {
            const reading_t result = read(std::string(row.key) + value);
            EXPECT_EQ(result.messages, "");
            return result.texture.*row.field;
        };
        EXPECT_EQ(path(" my image.png"), "my image.png");
        EXPECT_EQ(path(" my image.png\r"), "my image.png");
        EXPECT_EQ(path(" a.png\r\r"), "a.png\r");
        EXPECT_EQ(path("  a.png "), " a.png ");
        EXPECT_EQ(path(" \x83\x5c\xff.png"), "\x83\x5c\xff.png");
        EXPECT_EQ(path(" "), "");
        EXPECT_EQ(path(" \r"), "");
        EXPECT_EQ(path("s and more"), "and more");
        EXPECT_EQ(path(std::string(" a\0b\r", 5)), "a");
    }
}

TEST(SharedKeys, APathWithoutAValueKeepsTheOldOne) {
    texture_t before;
    before.texture = "old.png";
    EXPECT_EQ(read("texture", surface_block_t::polygon, before).texture.texture, "old.png");
}

TEST(SharedKeys, FlagsAreTrueOrANumber) {
    const struct {
        const char* key;
        bool texture_t::*field;
    } rows[] = {{"mipmap", &texture_t::mipmap},       {"nearlinear", &texture_t::nearlinear},
                {"maglinear", &texture_t::maglinear}, {"bumpofs", &texture_t::bumpofs},
                {"bump2mono", &texture_t::bump2mono}, {"mercatorsphere", &texture_t::mercatorsphere}};
    const struct {
        const char* value;
        bool expected;
    } values[] = {{"true", true}, {"truely", true}, {"false", false}, {"0", false},         {"1", true},
                  {"2", true},    {"True", false},  {"", false},      {"0x0", false},       {"010", true},
                  {"-1", true},   {"true\r", true}, {"0\r", false},   {"4294967296", true}, {" 1", true}};
    for (const auto& row : rows) {
        for (const auto& value : values) {
            texture_t before;
            before.*row.field = !value.expected;
            const reading_t result =
                read(std::string(row.key) + " " + value.value, surface_block_t::nurbs, before);
            EXPECT_EQ(result.texture.*row.field, value.expected) << row.key << ' ' << value.value;
            EXPECT_EQ(result.messages, "");
        }
    }
}

TEST(SharedKeys, FactorsAreExpressions) {
    EXPECT_EQ(read("refractfactor 1/4").texture.refractfactor, 0.25F);
    EXPECT_EQ(read("aniso 2*(1+3)))\r").texture.aniso, 8.0F);
    EXPECT_EQ(read("aniso ").texture.aniso, 0.0F);
}

TEST(SharedKeys, TexfilterSetsThreeFlags) {
    const texture_t texture = read("texfilter false,0,false").texture;
    EXPECT_FALSE(texture.mipmap);
    EXPECT_FALSE(texture.nearlinear);
    EXPECT_FALSE(texture.maglinear);
    const texture_t mixed = read("texfilter 0,true,0\r").texture;
    EXPECT_FALSE(mixed.mipmap);
    EXPECT_TRUE(mixed.nearlinear);
    EXPECT_FALSE(mixed.maglinear);
}

TEST(SharedKeys, TexfilterWithoutACommaKeepsWhatItHasSet) {
    for (const surface_block_t block : {surface_block_t::nurbs, surface_block_t::polygon}) {
        const reading_t none = read("texfilter false", block);
        EXPECT_EQ(none.messages, "17: nearlinear is not set. texfilter false\n");
        EXPECT_FALSE(none.texture.mipmap);
        EXPECT_TRUE(none.texture.nearlinear);
        EXPECT_TRUE(none.texture.maglinear);
        const reading_t one = read("texfilter 0,0\r", block);
        EXPECT_EQ(one.messages, "17: maglinear is not set. texfilter 0,0\r\n");
        EXPECT_FALSE(one.texture.mipmap);
        EXPECT_FALSE(one.texture.nearlinear);
        EXPECT_TRUE(one.texture.maglinear);
    }
}

TEST(SharedKeys, KeysArePrefixes) {
    EXPECT_FALSE(read("mipmapping 0").texture.mipmap);
    EXPECT_EQ(read("textures a b").texture.texture, "a b");
    EXPECT_FALSE(read(" mipmap 0").is_key);
    EXPECT_FALSE(read("Mipmap 0").is_key);
    EXPECT_FALSE(read("mipma").is_key);
    EXPECT_FALSE(read("position 1,2,3").is_key);
    EXPECT_FALSE(read("").is_key);
}

TEST(SharedKeys, AreWrittenForAModelWithoutMaps) {
    EXPECT_EQ(written({}), "refractfactor 0\r\nmercatorsphere false\r\n");
}

TEST(SharedKeys, AreWrittenBesideTheirPaths) {
    texture_t texture;
    texture.texture = "a b.png";
    texture.aniso = 2.5F;
    texture.nearlinear = false;
    EXPECT_EQ(written(texture),
              "refractfactor 0\r\ntexture a b.png\r\nmipmap true\r\nnearlinear false\r\nmaglinear true\r\n"
              "aniso 2.5\r\nmercatorsphere false\r\n");
    texture.bumpmap = "bump.png";
    texture.bump2mono = true;
    texture.specular = "gloss.png";
    texture.mercatorsphere = true;
    texture.refractfactor = 1.0F / 3;
    EXPECT_EQ(written(texture),
              "refractfactor 0.333333\r\ntexture a b.png\r\nmipmap true\r\nnearlinear false\r\n"
              "maglinear true\r\naniso 2.5\r\nbumpmap bump.png\r\nbumpofs true\r\nbump2mono true\r\n"
              "specular gloss.png\r\nmercatorsphere true\r\n");
}

TEST(SharedKeys, SettingsWithoutAPathAreNotWritten) {
    texture_t texture;
    texture.aniso = 4;
    texture.mipmap = texture.nearlinear = texture.maglinear = texture.bumpofs = false;
    texture.bump2mono = true;
    EXPECT_EQ(written(texture), "refractfactor 0\r\nmercatorsphere false\r\n");
}

TEST(SharedKeys, WhatIsWrittenIsReadInEveryLocale) {
    texture_t texture;
    texture.texture = "t";
    texture.bumpmap = "b";
    texture.specular = "s";
    texture.aniso = 3.5F;
    texture.refractfactor = 0.125F;
    texture.bumpofs = texture.mipmap = texture.nearlinear = texture.maglinear = false;
    texture.bump2mono = texture.mercatorsphere = true;
    for (const char* name : ulk_test::file_locales) {
        const ulk_test::locale_scope_t scope(name);
        if (!scope.is_set())
            continue;
        texture_t again;
        std::istringstream lines(written(texture));
        for (std::string line; std::getline(lines, line);)
            again = read(line, surface_block_t::nurbs, again).texture;
        EXPECT_EQ(again.texture, "t");
        EXPECT_EQ(again.bumpmap, "b");
        EXPECT_EQ(again.specular, "s");
        EXPECT_EQ(again.aniso, 3.5F);
        EXPECT_EQ(again.refractfactor, 0.125F);
        EXPECT_FALSE(again.bumpofs || again.mipmap || again.nearlinear || again.maglinear);
        EXPECT_TRUE(again.bump2mono && again.mercatorsphere);
    }
}
