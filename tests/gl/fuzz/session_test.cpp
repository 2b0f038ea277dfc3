#include "fuzz/parts/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <random>

#include "fuzz/parts/session_scenes.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using testing::HasSubstr;

std::span<const std::uint8_t> bytes_of(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

class SessionTest : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.bind();
        editor.init();
    }

    std::string play(const std::string& steps) { return session_t(editor).run(bytes_of(steps)); }
    std::string broken() { return broken_invariant(editor.scene(), {}); }
    model_entry_t& entry(std::size_t index = 0) {
        return **std::next(editor.models().begin(), static_cast<std::ptrdiff_t>(index));
    }

    captured_stream errors{std::cerr};
    captured_stream output{std::cout};
    render_target_t target{64, 64};
    ulkedit_t editor{""};
};

// The steps.

TEST_F(SessionTest, EverySceneOpens) {
    for (std::size_t number = 0; number < session_scene_count; ++number) {
        EXPECT_EQ(play("o" + std::to_string(number)), "") << number;
        EXPECT_FALSE(editor.models().empty()) << number;
    }
}

TEST_F(SessionTest, NothingIsLeftForTheNextSession) {
    EXPECT_EQ(play("o1 o2 s00 d567 e000 f01028 j1100000"), "");
    EXPECT_EQ(play(""), "");
    EXPECT_TRUE(editor.models().empty());
    EXPECT_EQ(editor.environment().reflectalpha, environment_t().reflectalpha);
    EXPECT_EQ(editor.scene().fold_picks[0].model, no_index);
}

TEST_F(SessionTest, StepsDoWhatTheySay) {
    EXPECT_EQ(play("o0 s00 s02"), "");
    EXPECT_EQ(entry().polygon.selection, (std::vector<bool>{true, false, true}));
    EXPECT_EQ(play("o0 s00 s02 S00"), "");
    EXPECT_EQ(entry().polygon.selection, (std::vector<bool>{false, false, true}));
    EXPECT_EQ(play("o0 s01 d688"), "");
    EXPECT_EQ(vertices_of(entry().polygon)[1].position, (pos3{1.5F, 1, 1}));
    EXPECT_EQ(play("o0 s01 d688 z"), "");
    EXPECT_EQ(vertices_of(entry().polygon)[1].position, (pos3{1, 0, 0}));
    EXPECT_EQ(play("o0 s01 d688 z y"), "");
    EXPECT_EQ(vertices_of(entry().polygon)[1].position, (pos3{1.5F, 1, 1}));
    EXPECT_EQ(play("o1 p01"), "");
    EXPECT_EQ(entry().polygon.selectpolygons(), (std::set<std::uint32_t>{1}));
    EXPECT_EQ(play("o1 p01 a"), "");
    EXPECT_TRUE(entry().polygon.selectpolygons().empty());
    EXPECT_EQ(play("n322244"), "");
    EXPECT_EQ(entry().nurbs.count1, 3U);
    EXPECT_EQ(entry().polygon.vertex_count(), 16U);
    EXPECT_EQ(play("n322244 g"), "");
    EXPECT_EQ(entry().kind, model_kind_t::polygon);
    EXPECT_EQ(play("o2 r0018888"), "");
    EXPECT_EQ(entry().nurbs.points.data[0].position, (pos3{1, 1, 1}));
    EXPECT_EQ(play("o2 k238"), "");
    EXPECT_EQ(entry().nurbs.weight.data[3], 1);
    EXPECT_EQ(play("o0 M67"), "");
    EXPECT_EQ(entry().polygon.vertex_count(), 5U);
    EXPECT_EQ(entry().polygon.element_count(), 6U);
    EXPECT_EQ(play("o0 V01888"), "");
    EXPECT_EQ(vertices_of(entry().polygon)[0].position, (pos3{1, 1, 1}));
    EXPECT_EQ(play("o0 E230"), "");
    EXPECT_EQ(elements_of(entry().polygon), (std::vector<std::uint32_t>{2, mark, 2}));
    EXPECT_EQ(play("e567"), "");
    EXPECT_EQ(editor.environment().refractalpha, 0.5F);
    EXPECT_EQ(play("o0 i00123"), "");
    EXPECT_EQ(vertices_of(entry().polygon)[0].position, (pos3{1, 2, 3}));
    EXPECT_EQ(play("o0 T11"), "");
    EXPECT_EQ(entry().texture.bumpmap, "missing.png");
    EXPECT_EQ(play("o0 o1 c0 x"), "");
    EXPECT_EQ(editor.models().size(), 1U);
    EXPECT_EQ(play("o0 w a l"), "");
    EXPECT_EQ(editor.models().size(), 2U);
}

TEST_F(SessionTest, TrianglesAreFoldedAndCut) {
    EXPECT_EQ(play("o1 p00 f01027"), "");
    EXPECT_GT(vertices_of(entry().polygon).size(), 4U);
    EXPECT_EQ(play("o4 o5 q"), "");
    EXPECT_GT(entry(0).polygon.vertex_count(), 8U);
    EXPECT_EQ(entry(1).polygon.vertex_count(), 8U);
    // With a step of undo that must not outlive them.
    EXPECT_EQ(play("o1 p00 s03 d445 f01027"), "");
    EXPECT_EQ(play("o4 o5 s00 d445 q"), "");
}

TEST_F(SessionTest, AnyBytesAreASession) {
    std::mt19937 random(7);
    for (int n = 0; n < 40; ++n) {
        std::string bytes(100, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        EXPECT_EQ(play(bytes), "") << testing::PrintToString(bytes);
    }
}

// A broken invariant is reported, by its step, and in words.

TEST_F(SessionTest, AnInvariantThatBreaksEndsTheSession) {
    ASSERT_EQ(play("o2"), "");
    // A net that is told of more points than it has breaks at the next step, and nothing runs behind that.
    session_t session(editor);
    ASSERT_EQ(session.run(bytes_of("o2")), "");
    entry().nurbs.weight.columns = 3;
    const std::string report = session.run(bytes_of("  a x"));
    EXPECT_EQ(
        report,
        "Step 1 (a): Model 0: The table of weights does not have the rows and columns of the net (2 and 3).");
    EXPECT_EQ(editor.models().size(), 1U);
    entry().nurbs.weight.columns = 2;
}

TEST_F(SessionTest, WrongSelectionIsReported) {
    ASSERT_EQ(play("o0"), "");
    entry().polygon.selection.push_back(false);
    EXPECT_EQ(broken(), "Model 0: There are not as many selection bits as points (4 and 3).");
    entry().polygon.selection = {false, true, false};
    EXPECT_EQ(broken(), "Model 0: The size of point 1 does not show whether it is selected.");
}

TEST_F(SessionTest, WrongCountsAreReported) {
    ASSERT_EQ(play("o0"), "");
    ASSERT_TRUE(entry().polygon.pointsizes.extend(2));
    EXPECT_EQ(broken(), "Model 0: There are not as many point sizes as points (2 and 3).");
    ASSERT_TRUE(entry().polygon.pointsizes.extend(3));
    ASSERT_EQ(broken(), "");
    ASSERT_TRUE(entry().polygon.normals.extend(2));
    EXPECT_EQ(broken(), "Model 0: There are not as many normals as vertices (2 and 3).");
}

TEST_F(SessionTest, WrongPolygonIdsAreReported) {
    ASSERT_EQ(play("o1 p01"), "");
    polygon_t& polygon = entry().polygon;
    const polygon_places_t right = polygon.polyidvector;
    polygon.polyidvector = polygon_places_t(2);
    polygon.polyidvector.number(right[0]);
    polygon.polyidvector.number({right[1].position, false});
    EXPECT_EQ(broken(), "Model 0: The table of polygon ids has another place than the strips for id 1.");
    EXPECT_EQ(broken_invariant(editor.scene(), {&entry()}), "");
    polygon.polyidvector = polygon_places_t(1);
    EXPECT_EQ(broken(), "Model 0: The table of polygon ids does not fit the elements (1 and 4).");
    polygon.afterload(nullptr);
    ASSERT_EQ(broken(), "");
    {
        const index_span shown(polygon.selectelems);
        shown[3] = 0;
    }
    EXPECT_EQ(broken(),
              "Model 0: The triangles that are shown as selected are not those of the selected ids.");
    ASSERT_EQ(static_cast<bool>(polygon.selectelems.extend(3)), true);
    EXPECT_EQ(broken(), "Model 0: There are not three selected elements for each id (3 and 2).");
}

TEST_F(SessionTest, WrongNetIsReported) {
    ASSERT_EQ(play("o2"), "");
    nurbs_t& nurbs = entry().nurbs;
    nurbs.knot1.data.pop_back();
    EXPECT_EQ(broken(), "Model 0: The table of row knots does not hold its rows (7 and 8).");
    nurbs.knot1.data.push_back(1);
    nurbs.order2 = 3;
    EXPECT_EQ(broken(),
              "Model 0: The table of column knots does not have the rows and columns of the net (2 and 4).");
    nurbs.order2 = 2;
    ASSERT_EQ(broken(), "");
    nurbs.points.data[1].position.x = 7;
    EXPECT_EQ(broken(), "Model 0: The net's buffer does not hold the points of its table.");
}

TEST_F(SessionTest, WrongSurfaceIsReported) {
    ASSERT_EQ(play("o2"), "");
    {
        const index_span strips(entry().polygon.elements);
        strips[0] = 9;
    }
    EXPECT_THAT(broken_invariant(editor.scene(), {&entry()}), HasSubstr("names vertex 9"));
    {
        const index_span strips(entry().polygon.elements);
        strips[0] = 3;
    }
    ASSERT_EQ(broken(), "");
    entry().nurbs.resolution1 = 4;
    EXPECT_EQ(broken(), "Model 0: The surface does not have as many vertices as samples (9 and 12).");
}

TEST_F(SessionTest, PendingGlErrorIsReported) {
    ASSERT_EQ(play("o0"), "");
    glEnable(0xFFFF);
    EXPECT_EQ(broken(), "The error 1280 of GL is pending.");
}

TEST_F(SessionTest, StateTellsWhatDiffers) {
    ASSERT_EQ(play("o2 o0"), "");
    const scene_state_t before = state_of(editor.scene());
    EXPECT_EQ(first_difference(before, state_of(editor.scene())), "");
    entry().nurbs.points.data[2].position.y += 1e-7F;
    EXPECT_EQ(first_difference(before, state_of(editor.scene())),
              "model 0: the net's points differ from value 15 of 28 on, then of 28");
    editor.delete_current();
    EXPECT_THAT(first_difference(before, state_of(editor.scene())), HasSubstr("the current model differ"));
}

TEST_F(SessionTest, NamesAreNoPartOfTheUnnamedState) {
    ASSERT_EQ(play("o0"), "");
    const scene_state_t named = state_of(editor.scene()), unnamed = unnamed_state_of(editor.scene());
    entry().polygon.name = "other";
    EXPECT_THAT(first_difference(named, state_of(editor.scene())), HasSubstr("the name"));
    EXPECT_EQ(first_difference(unnamed, unnamed_state_of(editor.scene())), "");
}

// Undo and redo, on a number: what takes back wrongly is reported.

class Exchange : public testing::Test {
  protected:
    std::string broken(std::function<bool()> there, std::function<bool()> back) {
        const auto state = [this] { return scene_state_t{{"number", {number}}}; };
        return broken_exchange(state, {"undo", std::move(there)}, {"redo", std::move(back)});
    }
    std::function<bool()> sets(std::uint64_t value) {
        return [this, value] {
            number = value;
            return true;
        };
    }
    std::uint64_t number = 5;
};

TEST_F(Exchange, ThereAndBackIsSound) {
    EXPECT_EQ(broken(sets(4), sets(5)), "");
    EXPECT_EQ(number, 4U);
}

TEST_F(Exchange, WrongWayBackIsReported) {
    EXPECT_EQ(broken(sets(4), sets(6)),
              "redo does not reverse undo: number differ from value 0 of 1 on, then of 1.");
}

TEST_F(Exchange, SecondTimeMustGiveTheSame) {
    const auto counts = [this, to = std::uint64_t{1}]() mutable {
        number = to++;
        return true;
    };
    EXPECT_EQ(broken(counts, sets(5)),
              "The second undo differs from the first: number differ from value 0 of 1 on, then of 1.");
}

TEST_F(Exchange, NothingToTakeBackMustChangeNothing) {
    EXPECT_EQ(broken([] { return false; }, sets(5)), "");
    const auto secretly = [this] {
        number = 3;
        return false;
    };
    EXPECT_EQ(broken(secretly, sets(5)),
              "undo without a step has changed something: number differ from value 0 of 1 on, then of 1.");
}

TEST_F(Exchange, WayBackMustBeThere) {
    EXPECT_EQ(broken(sets(4), [] { return false; }), "After undo there is no step of redo.");
}

TEST(Saving, FileMayChangeOnceOnly) {
    const auto rounds = [](const std::string&) { return std::optional<std::string>("rounded"); };
    EXPECT_EQ(broken_saving("exact", rounds), "");
    const auto grows = [](const std::string& file) { return std::optional(file + '!'); };
    EXPECT_EQ(broken_saving("some\nend", grows),
              "Saving changes a file that was loaded: end! becomes end!!.");
    const auto adds_lines = [](const std::string& file) { return std::optional(file + "\nnormal 0,0,0"); };
    EXPECT_EQ(broken_saving("end", adds_lines),
              "Saving changes a file that was loaded: nothing becomes normal 0,0,0.");
    const auto fails = [](const std::string&) { return std::optional<std::string>(); };
    EXPECT_EQ(broken_saving("exact", fails), "What was saved does not load.");
    const auto fails_later = [](const std::string& file) {
        return file == "exact" ? std::optional<std::string>("bad") : std::nullopt;
    };
    EXPECT_EQ(broken_saving("exact", fails_later), "What was loaded and saved does not load again.");
}

TEST(Saving, DirectionsMayTakeAFewFilesMore) {
    const auto counts_to = [](int last) {
        return [last, n = 0](const std::string&) mutable {
            n = std::min(n + 1, last);
            return std::optional("begin\ntangent " + std::to_string(n) + "\nend\n");
        };
    };
    EXPECT_EQ(broken_saving("begin\n", counts_to(5)), "");
    EXPECT_EQ(broken_saving("begin\n", counts_to(100)),
              "Saving changes a file that was loaded: tangent 8 becomes tangent 9.");
}

}  // namespace
