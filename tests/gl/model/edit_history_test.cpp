#include "model/edit_history.h"

#include <gtest/gtest.h>

#include <iostream>
#include <limits>
#include <type_traits>

#include "model/math/matrices.h"
#include "model/math/projections.h"
#include "model/scene.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/gl_context.h"
#include "support/points_model.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
using changes_t = points_model_t::changes_t;

/// Array 0: four control points, point i at (i, 10 i, 100 i) in the colour (i/2, i/4, i/8, 1).
/// Array 1: four frames of three normals, counted up from 0.
struct EditHistory : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        std::vector<float> points, frames;
        for (int i = 0; i < 4; ++i) {
            const auto f = static_cast<float>(i);
            for (const float word : {f, 10 * f, 100 * f, f / 2, f / 4, f / 8, 1.0F})
                points.push_back(word);
        }
        for (int i = 0; i < 36; ++i)
            frames.push_back(static_cast<float>(i));
        ASSERT_TRUE(model.add(control_point_elements(), points));
        ASSERT_TRUE(model.add(frame_elements(), frames));
        model.choose(4, {});
    }
    pos3 place(std::uint64_t i) const {
        const auto words = model.words(0);
        return {words[7 * i], words[7 * i + 1], words[7 * i + 2]};
    }
    const edit_t& last() const { return history.undo_edits().back(); }
    /// The edits that wait to be undone and redone.
    std::pair<std::size_t, std::size_t> counts() const {
        return {history.undo_edits().size(), history.redo_edits().size()};
    }

    points_model_t model;
    edit_history_t history;
};

using counts_t = std::pair<std::size_t, std::size_t>;

TEST_F(EditHistory, OpenRecordsTheSelectedPointsInIndexOrder) {
    model.choose(4, {3, 1});
    history.open(0, 0, model);
    EXPECT_EQ(counts(), counts_t(1, 0));
    EXPECT_EQ(last().array, 0U);
    EXPECT_EQ(last().member, 0U);
    ASSERT_EQ(last().points.size(), 2U);
    EXPECT_EQ(last().points[0].index, 1U);
    EXPECT_EQ(last().points[0].value, (vec3w{1, 10, 100, 0}));
    EXPECT_EQ(last().points[1].index, 3U);
    EXPECT_EQ(last().points[1].value, (vec3w{3, 30, 300, 0}));
    EXPECT_EQ(model.changes, changes_t());
}

TEST_F(EditHistory, OpenRecordsAllFourFloatsOfAColour) {
    model.choose(4, {2});
    history.open(0, 1, model);
    ASSERT_EQ(last().points.size(), 1U);
    EXPECT_EQ(last().points[0].value, (vec3w{1, 0.5F, 0.25F, 1}));
}

TEST_F(EditHistory, MembersLieBehindEachOtherInTheRecord) {
    model.choose(4, {2});
    history.open(1, 2, model);
    ASSERT_EQ(last().points.size(), 1U);
    EXPECT_EQ(last().points[0].value, (vec3w{24, 25, 26, 0}));
}

TEST_F(EditHistory, NothingSelectedGivesAnEditWithoutPointsThatCloseDrops) {
    history.open(0, 0, model);
    EXPECT_EQ(counts(), counts_t(1, 0));
    EXPECT_TRUE(last().points.empty());
    EXPECT_FALSE(history.move(model, {1, 1, 1}));
    EXPECT_FALSE(history.close(model));
    EXPECT_EQ(counts(), counts_t(0, 0));
    EXPECT_EQ(model.changes, changes_t());
}

TEST_F(EditHistory, MoveIsCountedFromTheRecordedPlaces) {
    model.choose(4, {1, 2});
    history.open(0, 0, model);
    EXPECT_TRUE(history.move(model, {5, 5, 5}));
    EXPECT_TRUE(history.move(model, {0.5F, -1, 2}));
    const auto words = model.words(0);
    EXPECT_EQ(words,
              (std::vector<float>{0,    0,  0,   0, 0,    0,     1, 1.5F, 9,  102, 0.5F, 0.25F, 0.125F, 1,
                                  2.5F, 19, 202, 1, 0.5F, 0.25F, 1, 3,    30, 300, 1.5F, 0.75F, 0.375F, 1}));
    EXPECT_EQ(model.changes, (changes_t{{0, 1}, {0, 2}, {0, 1}, {0, 2}}));
}

TEST_F(EditHistory, MoveOfAColourLeavesItsAlpha) {
    model.choose(4, {2});
    history.open(0, 1, model);
    EXPECT_TRUE(history.move(model, {1, 1, 1}));
    const auto words = model.words(0);
    EXPECT_EQ(std::vector<float>(words.begin() + 14, words.begin() + 21),
              (std::vector<float>{2, 20, 200, 2, 1.5F, 1.25F, 1}));
}

TEST_F(EditHistory, WheelMovesHalfAUnitDownPerNotch) {
    model.choose(4, {1});
    history.open(0, 0, model);
    EXPECT_TRUE(history.wheel(model, 1));
    EXPECT_EQ(place(1), (pos3{1, 10, 99.5F}));
    EXPECT_TRUE(history.wheel(model, -3));
    EXPECT_EQ(place(1), (pos3{1, 10, 101.5F}));
    EXPECT_TRUE(history.wheel(model, std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(place(1), (pos3{1, 10, 100 + 1073741824.0F}));
    EXPECT_EQ(model.changes, (changes_t{{0, 1}, {0, 1}, {0, 1}}));
}

TEST_F(EditHistory, CloseKeepsAnEditThatHasMovedSomething) {
    model.choose(4, {1, 2});
    for (const pos3& delta : {pos3{1, 0, 0}, pos3{0, 1, 0}, pos3{0, 0, 1}, pos3{1e-4F, 0, 0}}) {
        history.clear();
        history.open(0, 0, model);
        history.move(model, delta);
        EXPECT_TRUE(history.close(model));
        EXPECT_EQ(counts(), counts_t(1, 0));
        history.undo(model);
    }
}

TEST_F(EditHistory, DragThatEndsWhereItBeganLeavesNoEdit) {
    model.choose(4, {1, 2});
    history.open(0, 0, model);
    history.move(model, {7, 7, 7});
    history.move(model, {0, 0, 0});
    EXPECT_FALSE(history.close(model));
    EXPECT_EQ(counts(), counts_t(0, 0));
}

TEST_F(EditHistory, DragWithinTheToleranceLeavesNoEdit) {
    model.choose(4, {0});
    history.open(0, 0, model);
    history.move(model, {1e-5F, -1e-5F, 2e-5F});
    EXPECT_FALSE(history.close(model));
    EXPECT_EQ(counts(), counts_t(0, 0));
}

TEST_F(EditHistory, CloseLooksAtAllPoints) {
    model.choose(4, {0, 3});
    history.open(0, 0, model);
    const float changed[7] = {3, 30, 301, 0, 0, 0, 1};
    model.arrays[0].write_one(3, changed);
    EXPECT_TRUE(history.close(model));
}

TEST_F(EditHistory, CloseTakesAValueThatIsNoNumberForADifference) {
    model.choose(4, {1});
    history.open(0, 0, model);
    history.move(model, {nan, 0, 0});
    EXPECT_TRUE(history.close(model));
}

TEST_F(EditHistory, CloseDropsTheLastEditOnly) {
    model.choose(4, {1});
    history.open(0, 0, model);
    history.move(model, {1, 0, 0});
    ASSERT_TRUE(history.close(model));
    history.open(0, 0, model);
    EXPECT_FALSE(history.close(model));
    EXPECT_EQ(counts(), counts_t(1, 0));
    EXPECT_EQ(last().points[0].value.x, 1);
}

TEST_F(EditHistory, UndoAndRedoExchangeTheValues) {
    model.choose(4, {1, 3});
    history.open(0, 0, model);
    history.move(model, {0.5F, 0, 0});
    ASSERT_TRUE(history.close(model));
    const auto moved = model.words(0);
    model.changes.clear();

    EXPECT_TRUE(history.undo(model));
    EXPECT_EQ(counts(), counts_t(0, 1));
    EXPECT_EQ(place(1), (pos3{1, 10, 100}));
    EXPECT_EQ(place(3), (pos3{3, 30, 300}));
    EXPECT_EQ(model.changes, (changes_t{{0, 1}, {0, 3}}));

    EXPECT_TRUE(history.redo(model));
    EXPECT_EQ(counts(), counts_t(1, 0));
    EXPECT_EQ(model.words(0), moved);
    EXPECT_EQ(model.changes, (changes_t{{0, 1}, {0, 3}, {0, 1}, {0, 3}}));
}

TEST_F(EditHistory, UndoExchangesThreeOrFourFloatsByTheKind) {
    struct row {
        std::uint64_t array, member;
        std::size_t first, count;
    };
    for (const row& expected :
         {row{0, 0, 14, 3}, row{0, 1, 17, 4}, row{1, 0, 18, 3}, row{1, 1, 21, 3}, row{1, 2, 24, 3}}) {
        edit_t edit;
        edit.points = {{{-1, -2, -3, -4}, 2}};
        edit.array = expected.array;
        edit.member = expected.member;
        const auto index = static_cast<std::uint32_t>(expected.array);
        auto words = model.words(index);
        const auto before = words;
        for (std::size_t i = 0; i < expected.count; ++i)
            words[expected.first + i] = -1.0F - static_cast<float>(i);
        history.push(edit);
        EXPECT_TRUE(history.undo(model));
        EXPECT_EQ(model.words(index), words);
        EXPECT_TRUE(history.redo(model));
        EXPECT_EQ(model.words(index), before);
        EXPECT_EQ(last().points[0].value, edit.points[0].value);
    }
}

TEST_F(EditHistory, PushAppendsACopyAtTheEnd) {
    model.choose(4, {1});
    history.open(0, 0, model);
    edit_t edit;
    edit.points = {{{7, 7, 7, 0}, 2}};
    history.push(edit);
    edit.points[0].value.x = 1;
    EXPECT_EQ(counts(), counts_t(2, 0));
    EXPECT_EQ(last().points[0].value.x, 7);
    history.undo(model);
    EXPECT_EQ(place(2), (pos3{7, 7, 7}));
}

TEST_F(EditHistory, PushedEditWithoutPointsIsUndoneWithFalse) {
    history.push({});
    EXPECT_FALSE(history.undo(model));
    EXPECT_EQ(counts(), counts_t(0, 1));
    EXPECT_FALSE(history.redo(model));
    EXPECT_EQ(counts(), counts_t(1, 0));
    EXPECT_EQ(model.changes, changes_t());
}

TEST_F(EditHistory, EmptyHistoryDoesNothing) {
    model.choose(4, {1});
    EXPECT_EQ(history.depth(mtx_identity, mtx_identity), 0);
    EXPECT_FALSE(history.move(model, {1, 1, 1}));
    EXPECT_FALSE(history.wheel(model, 1));
    EXPECT_FALSE(history.close(model));
    EXPECT_FALSE(history.undo(model));
    EXPECT_FALSE(history.redo(model));
    history.clear();
    EXPECT_EQ(place(1), (pos3{1, 10, 100}));
    EXPECT_EQ(model.changes, changes_t());
}

TEST_F(EditHistory, NewEditLeavesTheRedoList) {
    model.choose(4, {1});
    history.open(0, 0, model);
    history.move(model, {1, 0, 0});
    history.undo(model);
    history.open(0, 0, model);
    EXPECT_EQ(counts(), counts_t(1, 1));
}

TEST_F(EditHistory, WheelEditsPileUpAndAreUndoneFromTheLatest) {
    model.choose(4, {1});
    for (int i = 0; i < 3; ++i) {
        history.open(0, 0, model);
        history.wheel(model, -2);
    }
    EXPECT_EQ(counts(), counts_t(3, 0));
    EXPECT_EQ(place(1).z, 103);
    EXPECT_TRUE(history.undo(model));
    EXPECT_EQ(place(1).z, 102);
    EXPECT_TRUE(history.undo(model));
    EXPECT_EQ(place(1).z, 101);
    EXPECT_TRUE(history.redo(model));
    EXPECT_EQ(place(1).z, 102);
}

TEST_F(EditHistory, ClearEmptiesBothLists) {
    model.choose(4, {1});
    history.open(0, 0, model);
    history.open(0, 0, model);
    history.undo(model);
    ASSERT_EQ(counts(), counts_t(1, 1));
    history.clear();
    EXPECT_EQ(counts(), counts_t(0, 0));
}

TEST_F(EditHistory, DepthIsThatOfTheFirstRecordedPointOfTheLastEdit) {
    const mtx3w view = rotation(90, {1, 0, 0}) * translation({0, 0, -500});
    const mtx3w perspective = frustum_matrix({-1, 1, -1, 1, 1, 1000});
    model.choose(4, {0});
    history.open(0, 0, model);
    model.choose(4, {2, 3});
    history.open(0, 0, model);
    history.move(model, {9, 9, 9});
    // (2, 20, 200) turned is (2, -200, 20), and is then 480 away.
    EXPECT_NEAR(history.depth(view, perspective), 1001.0F / 999 - 2000.0F / 999 / 480, 1e-6F);
    history.push({});
    EXPECT_EQ(history.depth(view, perspective), 0);
}

TEST_F(EditHistory, DepthTakesTheModelviewAsAffine) {
    mtx3w odd = mtx_identity;
    odd[15] = 4;
    odd[11] = 2;
    model.choose(4, {1});
    history.open(0, 0, model);
    EXPECT_EQ(history.depth(odd, mtx_identity), 100);
    EXPECT_EQ(history.depth(mtx_identity, odd), 100.0F * (1.0F / 204));
}

TEST_F(EditHistory, ArrayIsMappedOncePerStep) {
    model.choose(4, {0, 1, 2, 3});
    const auto mappings_of = [](auto&& step) {
        const counted_mappings mappings;
        step();
        return mappings.count();
    };
    EXPECT_EQ(mappings_of([&] { history.open(0, 0, model); }), 1);
    EXPECT_EQ(mappings_of([&] { history.move(model, {1, 1, 1}); }), 1);
    EXPECT_EQ(mappings_of([&] { history.wheel(model, 1); }), 1);
    EXPECT_EQ(mappings_of([&] { history.close(model); }), 1);
    EXPECT_EQ(mappings_of([&] { history.undo(model); }), 1);
    EXPECT_EQ(mappings_of([&] { history.redo(model); }), 1);
}

/// The record that is told of is in the buffer, and can be mapped.
TEST_F(EditHistory, ModelIsToldAfterTheArrayIsUnmapped) {
    struct reading_model_t : points_model_t {
        void elementchanged(std::uint32_t index, std::uint64_t element) override {
            seen.push_back(words(index)[7 * element]);
        }
        std::vector<float> seen;
    };
    reading_model_t reader;
    ASSERT_TRUE(reader.add(control_point_elements(), std::vector<float>(14, 3)));
    reader.choose(2, {0, 1});
    history.open(0, 0, reader);
    history.move(reader, {1, 0, 0});
    history.undo(reader);
    EXPECT_EQ(reader.seen, (std::vector<float>{4, 4, 3, 3}));
}

struct EditHistoryKinds : EditHistory {
    /// Two records of each kind that is not handled, and a position behind it.
    static constexpr e_type_t kinds[] = {e_type_t::TexCoord3, e_type_t::TexCoord2, e_type_t::PointSize,
                                         e_type_t::ID,        e_type_t::Vector3w,  e_type_t::Matrix3w};
};

TEST_F(EditHistoryKinds, OpenReportsEachPointOfAKindThatIsNotHandled) {
    for (const e_type_t kind : kinds) {
        points_model_t other;
        const auto list = make_element_list({kind, e_type_t::Position});
        ASSERT_TRUE(other.add(list, std::vector<float>(2 * words_of(list), 5)));
        other.choose(2, {0, 1});
        const captured_stream errors(std::cerr);
        history.open(0, 0, other);
        const std::string line =
            "element.type (" + std::to_string(static_cast<std::uint32_t>(kind)) + ") not handled.\n";
        EXPECT_EQ(errors.text(), line + line);
        ASSERT_EQ(last().points.size(), 2U);
        EXPECT_EQ(last().points[1].index, 1U);
        EXPECT_EQ(last().points[0].value, vec3w{});
        EXPECT_EQ(last().points[1].value, vec3w{});
    }
}

TEST_F(EditHistoryKinds, UndoReportsEachPointOfAKindThatIsNotHandledAndLeavesIt) {
    for (const e_type_t kind : kinds) {
        points_model_t other;
        const auto list = make_element_list({kind, e_type_t::Position});
        ASSERT_TRUE(other.add(list, std::vector<float>(2 * words_of(list), 5)));
        const auto before = other.words(0);
        edit_t edit;
        edit.points = {{{1, 2, 3, 4}, 1}, {{1, 2, 3, 4}, 0}};
        history.push(edit);
        const captured_stream errors(std::cerr);
        EXPECT_TRUE(history.undo(other));
        const std::string line =
            "element_t::e_type_t (" + std::to_string(static_cast<std::uint32_t>(kind)) + ") not handled.\n";
        EXPECT_EQ(errors.text(), line + line);
        EXPECT_EQ(other.words(0), before);
        EXPECT_EQ(history.redo_edits().back().points[0].value, (vec3w{1, 2, 3, 4}));
        EXPECT_EQ(other.changes, (changes_t{{0, 1}, {0, 0}}));
    }
}

TEST_F(EditHistoryKinds, PositionBehindAnyKindIsFoundAtItsOffset) {
    for (const e_type_t kind : kinds) {
        points_model_t other;
        const auto list = make_element_list({kind, e_type_t::Position});
        std::vector<float> words(2 * words_of(list), 5);
        words[words.size() - 3] = 7;
        ASSERT_TRUE(other.add(list, words));
        other.choose(2, {1});
        history.open(0, 1, other);
        EXPECT_EQ(last().points[0].value, (vec3w{7, 5, 5, 0}));
    }
}

/// What the model does not have is passed over in silence.
struct EditHistoryGuards : EditHistory {
    void expect_all_steps_leave_the_arrays(const edit_t& edit) {
        const auto points = model.words(0);
        const auto frames = model.words(1);
        const captured_stream errors(std::cerr);
        history.push(edit);
        EXPECT_TRUE(history.undo(model));
        EXPECT_TRUE(history.redo(model));
        EXPECT_TRUE(history.move(model, {1, 1, 1}));
        EXPECT_TRUE(history.wheel(model, 1));
        EXPECT_FALSE(history.close(model));
        EXPECT_EQ(model.words(0), points);
        EXPECT_EQ(model.words(1), frames);
        EXPECT_EQ(errors.text(), "");
    }
};

constexpr std::uint64_t absurd_numbers[] = {
    4, 5, 0xFFFFFFFF, 0x100000000, 0x2492492492492493, 0xFFFFFFFFFFFFFFFF};

TEST_F(EditHistoryGuards, PointsBeyondTheArray) {
    for (const std::uint64_t index : absurd_numbers)
        expect_all_steps_leave_the_arrays({{{{1, 2, 3, 4}, index}}, 0, 0});
    EXPECT_EQ(model.changes, changes_t());
}

TEST_F(EditHistoryGuards, ArraysThatDoNotExist) {
    for (const std::uint64_t array : absurd_numbers)
        expect_all_steps_leave_the_arrays({{{{1, 2, 3, 4}, 1}}, array, 0});
    EXPECT_EQ(model.changes, changes_t());
}

TEST_F(EditHistoryGuards, MembersBeyondTheRecord) {
    for (const std::uint64_t member : absurd_numbers)
        expect_all_steps_leave_the_arrays({{{{1, 2, 3, 4}, 3}}, 0, member});
}

TEST_F(EditHistoryGuards, OpenOfAnArrayThatDoesNotExistRecordsNothing) {
    model.choose(4, {1});
    const captured_stream errors(std::cerr);
    for (const std::uint64_t array : absurd_numbers) {
        history.open(array, 0, model);
        EXPECT_TRUE(last().points.empty());
        EXPECT_FALSE(history.close(model));
    }
    EXPECT_EQ(errors.text(), "");
}

TEST_F(EditHistoryGuards, OpenOfAMemberBeyondTheRecordRecordsZeros) {
    model.choose(4, {3});
    const captured_stream errors(std::cerr);
    for (const std::uint64_t member : absurd_numbers) {
        history.open(0, member, model);
        ASSERT_EQ(last().points.size(), 1U);
        EXPECT_EQ(last().points[0].value, vec3w{});
    }
    EXPECT_EQ(errors.text(), "");
}

TEST_F(EditHistoryGuards, SelectedPointsBeyondTheArrayAreNotRecorded) {
    model.choose(9, {2, 4, 8});
    history.open(0, 0, model);
    ASSERT_EQ(last().points.size(), 1U);
    EXPECT_EQ(last().points[0].index, 2U);
}

TEST_F(EditHistoryGuards, MoveDoesNotReachIntoTheNextRecord) {
    points_model_t other;
    ASSERT_TRUE(other.add(vertex_elements(), std::vector<float>(18, 5)));
    edit_t edit;
    edit.points = {{{}, 0}, {{}, 1}};
    edit.member = 2;
    history.push(edit);
    history.move(other, {1, 1, 1});
    EXPECT_EQ(other.words(0), std::vector<float>(18, 5));
}

TEST_F(EditHistoryGuards, ArrayWithoutABufferIsToldOfByItsOwnMessage) {
    points_model_t other;
    other.arrays.emplace_back();
    other.choose(1, {0});
    const captured_stream errors(std::cerr);
    history.open(0, 0, other);
    EXPECT_TRUE(last().points.empty());
    EXPECT_EQ(errors.text(), "array buffer is not allocated.\n");
}

TEST_F(EditHistoryGuards, ModelThatShrankSinceTheEdit) {
    model.choose(4, {1, 3});
    history.open(0, 0, model);
    history.move(model, {1, 0, 0});
    model.changes.clear();
    ASSERT_TRUE(model.arrays[0].extend(2));
    EXPECT_TRUE(history.undo(model));
    EXPECT_EQ(place(1), (pos3{1, 10, 100}));
    EXPECT_EQ(model.changes, (changes_t{{0, 1}}));
}

TEST(EditHistoryOfAModel, IsEmptyAtConstruction) {
    static_assert(std::is_same_v<decltype(model_entry_t::history), edit_history_t>);
    const edit_history_t fresh;
    EXPECT_TRUE(fresh.undo_edits().empty());
    EXPECT_TRUE(fresh.redo_edits().empty());
}

}  // namespace
