#include "fuzz/parts/scene_mutator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "fuzz/parts/scene_lines.h"

namespace {

using namespace ulk_test;

const std::string triangle =
    "# one triangle\n"
    "begin polygon_surface,3,4\n"
    "position 0,0,0\nposition 1,0,0\ncolor 0,0,255,255\nposition 0,1,0\n"
    "element 0\nelement 1\nelement 2\nelement -1\n"
    "tangent 1,0,0\ntangent 1,0,0\ntangent 1,0,0\n"
    "binormal 0,1,0\nbinormal 0,1,0\nbinormal 0,1,0\n"
    "normal 0,0,1\nnormal 0,0,1\nnormal 0,0,1\n"
    "end\n";

const std::string line_net =
    "begin nurbs_surface,2,2,1,1\n"
    "resolution 3,3\n"
    "knot1 0\nknot1 0\nknot1 1\nknot1 1\n"
    "weight 1\nweight 2\nposition 0,0,0\nposition 1,0,0\n"
    "knot2 0\nknot2 1\nknot2 0\nknot2 1\n"
    "end\n";

/// Stands in for libFuzzer's mutator, which is there only in its targets: makes the first byte a '#'.
std::size_t mark_first_byte(std::uint8_t* data, std::size_t size, std::size_t most) {
    if (most == 0)
        return 0;
    data[0] = '#';
    return std::max<std::size_t>(size, 1);
}

/// Blocks of meshes that hold as much as they announce, as those do that load.
std::size_t whole_meshes(const std::string& text) {
    const scene_lines_t lines = lines_of(text);
    std::size_t whole = 0;
    for (const line_block_t& block : blocks_of(lines)) {
        if (!opens_mesh(lines[block.first]))
            continue;
        scene_lines_t fitted = lines;
        fit_lines_to_counts(fitted, block);
        whole += fitted == lines && lines[block.behind - 1].starts_with("end") ? 1 : 0;
    }
    return whole;
}

TEST(SceneLines, TextBecomesLinesAndTextAgain) {
    EXPECT_EQ(lines_of("a\n\nb c\n"), (scene_lines_t{"a", "", "b c"}));
    EXPECT_EQ(lines_of("a\nb"), (scene_lines_t{"a", "b"}));
    EXPECT_EQ(text_of(lines_of(triangle), triangle.size()), triangle);
}

TEST(SceneLines, TextIsHeldToTheLimitByWholeLines) {
    const scene_lines_t lines{"abc", "de", "f"};
    EXPECT_EQ(text_of(lines, 8), "abc\nde\n");
    EXPECT_EQ(text_of(lines, 7), "abc\nde\n");
    EXPECT_EQ(text_of(lines, 6), "abc\n");
    EXPECT_EQ(text_of(lines, 0), "");
}

TEST(SceneLines, BlocksReachFromTheirOpeningToTheirEnd) {
    const scene_lines_t lines{"#", "begin a", "x", "end", "y", "begin b", "begin c", "z"};
    const auto blocks = blocks_of(lines);
    ASSERT_EQ(blocks.size(), 3U);
    EXPECT_EQ(blocks[0].first, 1U);
    EXPECT_EQ(blocks[0].behind, 4U);
    EXPECT_EQ(blocks[1].first, 5U);
    EXPECT_EQ(blocks[1].behind, 6U);
    EXPECT_EQ(blocks[2].first, 6U);
    EXPECT_EQ(blocks[2].behind, 8U);
}

TEST(SceneLines, MeshIsFittedToItsCounts) {
    scene_lines_t lines{"begin polygon_surface,2,3",
                        "element 7",
                        "position 1,2,3",
                        "circle 4,5,6",
                        "sphere 7",
                        "normal 0,0,1",
                        "tangent 1",
                        "color 1,2,3,4",
                        "end",
                        "behind"};
    fit_lines_to_counts(lines, blocks_of(lines)[0]);
    EXPECT_EQ(lines, (scene_lines_t{"begin polygon_surface,2,3", "element 7", "element 7", "element 7",
                                    "position 1,2,3", "circle 4,5,6", "normal 0,0,1", "normal 0,0,1",
                                    "tangent 1", "tangent 1", "color 1,2,3,4", "binormal 0,1,0",
                                    "binormal 0,1,0", "end", "behind"}));
}

TEST(SceneLines, NetIsFittedToItsCounts) {
    scene_lines_t lines{"begin nurbs_surface,1,2,2,1", "knot1 5", "end"};
    fit_lines_to_counts(lines, blocks_of(lines)[0]);
    const auto count = [&](const char* line) { return std::ranges::count(lines, line); };
    EXPECT_EQ(count("knot1 5"), 6);
    EXPECT_EQ(count("knot2 0"), 3);
    EXPECT_EQ(count("weight 1"), 2);
    EXPECT_EQ(count("position 0,0,0"), 2);
    EXPECT_EQ(lines.back(), "end");
}

TEST(SceneLines, BlockThatAnnouncesTooMuchStaysAsItIs) {
    for (const char* opening : {"begin polygon_surface,4294967295,1", "begin polygon_surface,64,70",
                                "begin nurbs_surface,4294967295,4294967295,4294967295,4294967295"}) {
        const scene_lines_t lines{opening, "position 1,2,3", "end"};
        scene_lines_t fitted = lines;
        fit_lines_to_counts(fitted, blocks_of(fitted)[0]);
        EXPECT_EQ(fitted, lines);
    }
}

TEST(SceneLines, CountsAreFittedToTheMesh) {
    scene_lines_t lines{"begin polygon_surface,9,9", "position 1", "sphere 2", "element 0", "end"};
    fit_counts_to_lines(lines, blocks_of(lines)[0]);
    EXPECT_EQ(lines[0], "begin polygon_surface,2,1");
}

TEST(SceneMutator, SeedDecidesTheResult) {
    std::size_t different = 0;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        const std::string once = mutated_scene(triangle + line_net, 4096, seed, mark_first_byte);
        EXPECT_EQ(mutated_scene(triangle + line_net, 4096, seed, mark_first_byte), once);
        different += once == mutated_scene(triangle + line_net, 4096, seed + 1000, mark_first_byte) ? 0 : 1;
    }
    EXPECT_GT(different, 80U);
}

TEST(SceneMutator, ResultKeepsToTheLimit) {
    for (std::uint64_t seed = 0; seed < 500; ++seed) {
        const std::size_t most = seed % 50 * 20;
        EXPECT_LE(mutated_scene(triangle + line_net, most, seed, mark_first_byte).size(), most);
        EXPECT_LE(crossed_scenes(triangle, line_net, most, seed).size(), most);
    }
}

TEST(SceneMutator, AnyBytesAreMutated) {
    using namespace std::string_literals;
    const std::string bytes = "\0\xff begin \n,,\nbegin nurbs_surface\nend\n\n,"s;
    for (const std::string& text : {std::string(), std::string("\n"), bytes, std::string("begin ")})
        for (std::uint64_t seed = 0; seed < 500; ++seed)
            EXPECT_LE(mutated_scene(text, 300, seed, mark_first_byte).size(), 300U);
}

TEST(SceneMutator, MostMeshesStillHoldWhatTheyAnnounce) {
    std::size_t whole = 0, changed = 0;
    std::string text = triangle;
    for (std::uint64_t seed = 0; seed < 400; ++seed) {
        // In rows of five, as changes pile up in a corpus.
        text = mutated_scene(seed % 5 == 0 ? triangle : text, 4096, seed, mark_first_byte);
        changed += text == triangle ? 0 : 1;
        whole += whole_meshes(text) > 0 ? 1 : 0;
    }
    EXPECT_GT(changed, 350U);
    EXPECT_GT(whole, 250U);
}

TEST(SceneMutator, EveryMutationIsReached) {
    const std::string text = triangle + "begin environment\nreflectalpha 1\nend\n" + line_net;
    const auto some = [&](auto holds) {
        for (std::uint64_t seed = 0; seed < 2000; ++seed)
            if (holds(mutated_scene(text, 1 << 16, seed, mark_first_byte)))
                return true;
        return false;
    };
    const auto holds = [](const char* part) {
        return [part](const std::string& changed) { return changed.find(part) != std::string::npos; };
    };
    const auto ends = [](const std::string& changed) { return std::ranges::count(lines_of(changed), "end"); };
    EXPECT_TRUE(some(holds(",nan")));
    EXPECT_TRUE(some(holds("begin polygon_surface,5,")));
    EXPECT_TRUE(some(holds("begin nurbs_surface,3,")));
    EXPECT_TRUE(some(holds("refractfactor ")));
    EXPECT_TRUE(some(holds("mercatorsphere ")));
    EXPECT_TRUE(some(holds("#egin ")));
    EXPECT_TRUE(some([&](const std::string& changed) { return ends(changed) == 2; }));
    EXPECT_TRUE(some([&](const std::string& changed) { return ends(changed) == 4; }));
    EXPECT_TRUE(some([&](const std::string& changed) { return !changed.starts_with("# one triangle"); }));
}

TEST(SceneMutator, CrossOverTakesBlocksOfTheOther) {
    std::size_t with_both = 0;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        const std::string crossed = crossed_scenes(triangle, line_net, 4096, seed);
        EXPECT_NE(crossed.find("begin polygon_surface"), std::string::npos);
        with_both += crossed.find("begin nurbs_surface,2,2,1,1\n") != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(with_both, 50U);
}

}  // namespace
