#include "model/nurbs/net_edit.h"

#include <gtest/gtest.h>

#include <iostream>

#include "model/edit_history.h"
#include "model/nurbs/nurbs.h"
#include "model/scene.h"
#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/gl_context.h"
#include "support/points_model.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

using changes_t = points_model_t::changes_t;

constexpr attribute_t positions = attribute_t::position, colours = attribute_t::color;

enum class changed_t { none, selection, values };

/// Puts the edit of a change on a history; what has changed.
changed_t take(edit_history_t& history, table_change_t change) {
    if (!change)
        return changed_t::none;
    const bool has_values = change.has_values();
    history.push(std::move(change.edit));
    return has_values ? changed_t::values : changed_t::selection;
}

/// A net of four points, point i at (i, 10 i, 100 i) in the colour (i, 2 i, 3 i, 255) of bytes.
struct NetEdit : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        std::vector<float> words;
        for (int i = 0; i < 4; ++i) {
            const auto f = static_cast<float>(i);
            for (const float word : {f, 10 * f, 100 * f})
                words.push_back(word);
            for (const int byte : {i, 2 * i, 3 * i, 255})
                words.push_back(static_cast<float>(byte) * 0.003921569F);
        }
        ASSERT_TRUE(model.add(control_point_elements(), words));
        model.choose(4, {});
        ASSERT_TRUE(model.pointsizes.allocate(4, size_elements()));
        model.clearselection();
        before = model.words(0);
    }

    std::vector<number_row_t> table(attribute_t attribute) const {
        std::vector<number_row_t> rows(4);
        for (std::size_t i = 0; i < 4; ++i)
            rows[i].point = i;
        read_rows(model, attribute, form_of(attribute), rows);
        return rows;
    }
    /// What was changed; the edit goes on the history, as the editor puts it there.
    changed_t write(attribute_t attribute, const std::vector<number_row_t>& rows) {
        return take(history, write_rows(model, attribute, form_of(attribute), rows));
    }
    const edit_t& last() const { return history.undo_edits().back(); }

    points_model_t model;
    edit_history_t history;
    std::vector<float> before;
};

TEST_F(NetEdit, ATableHoldsMarksAndPositions) {
    model.select(2);
    const auto rows = table(positions);
    EXPECT_FALSE(rows[1].selected);
    EXPECT_TRUE(rows[2].selected);
    EXPECT_EQ(rows[3].numbers, (std::array<double, 4>{3, 30, 300, 0}));
}

TEST_F(NetEdit, ATableHoldsColoursInBytes) {
    EXPECT_EQ(table(colours)[3].numbers, (std::array<double, 4>{3, 6, 9, 255}));
}

TEST_F(NetEdit, AnUnchangedTableWritesNothingAndPushesNothing) {
    for (const attribute_t attribute : {positions, colours}) {
        EXPECT_EQ(write(attribute, table(attribute)), changed_t::none);
        EXPECT_EQ(model.words(0), before);
        EXPECT_TRUE(history.undo_edits().empty());
        EXPECT_TRUE(model.changes.empty());
    }
}

TEST_F(NetEdit, ChangedPositionsAreOneEditWithTheOldOnes) {
    auto rows = table(positions);
    rows[1].numbers[2] = 7;
    rows[3].numbers[0] = -0.5;
    EXPECT_EQ(write(positions, rows), changed_t::values);

    std::vector<float> expected = before;
    expected[1 * 7 + 2] = 7;
    expected[3 * 7 + 0] = -0.5F;
    EXPECT_EQ(model.words(0), expected);
    ASSERT_EQ(history.undo_edits().size(), 1U);
    EXPECT_EQ(last().array, 0U);
    EXPECT_EQ(last().member, 0U);
    ASSERT_EQ(last().points.size(), 2U);
    EXPECT_EQ(last().points[0].index, 1U);
    EXPECT_EQ(last().points[0].value, (vec3w{1, 10, 100, 0}));
    EXPECT_EQ(last().points[1].index, 3U);
    EXPECT_EQ(last().points[1].value, (vec3w{3, 30, 300, 0}));
    EXPECT_EQ(model.changes, (changes_t{{0, 1}, {0, 3}}));
}

TEST_F(NetEdit, UndoBringsPositionsBack) {
    auto rows = table(positions);
    rows[1].numbers = {9, 8, 7, 0};
    write(positions, rows);
    EXPECT_TRUE(history.undo(model));
    EXPECT_EQ(model.words(0), before);
    EXPECT_TRUE(history.redo(model));
    EXPECT_EQ(model.words(0)[7], 9);
}

TEST_F(NetEdit, PositionsWithinTheToleranceAreNoChange) {
    auto rows = table(positions);
    rows[1].numbers[0] = 1.00001;
    EXPECT_EQ(write(positions, rows), changed_t::none);
    EXPECT_EQ(model.words(0), before);
}

TEST_F(NetEdit, OneChangedNumberStoresAllOfThePoint) {
    auto rows = table(positions);
    rows[1].numbers = {1.00001, 20, 100, 0};
    EXPECT_EQ(write(positions, rows), changed_t::values);
    EXPECT_EQ(model.words(0)[7], 1.00001F);
}

TEST_F(NetEdit, ChangedColoursAreOneEditWithAllOldChannels) {
    auto rows = table(colours);
    rows[2].numbers[3] = 128;
    EXPECT_EQ(write(colours, rows), changed_t::values);
    EXPECT_EQ(model.words(0)[2 * 7 + 6], 128 * 0.003921569F);
    ASSERT_EQ(history.undo_edits().size(), 1U);
    EXPECT_EQ(last().member, 1U);
    ASSERT_EQ(last().points.size(), 1U);
    EXPECT_EQ(last().points[0].value,
              (vec3w{2 * 0.003921569F, 4 * 0.003921569F, 6 * 0.003921569F, 255 * 0.003921569F}));
    EXPECT_TRUE(history.undo(model));
    EXPECT_EQ(model.words(0), before);
}

TEST_F(NetEdit, AChannelThatIsNoWholeByteIsAChangeWhenItComesBack) {
    {
        const array_span<float> words(*model.array(0));
        words[3] = 0.5F;
    }
    const auto rows = table(colours);
    EXPECT_EQ(rows[0].numbers[0], 128);
    EXPECT_EQ(write(colours, rows), changed_t::values);
    EXPECT_EQ(model.words(0)[3], 128 * 0.003921569F);
    ASSERT_EQ(last().points.size(), 1U);
    EXPECT_EQ(last().points[0].value.x, 0.5F);
}

TEST_F(NetEdit, ChangedMarksAlonePushAnEmptyEdit) {
    model.select(0);
    auto rows = table(positions);
    rows[0].selected = false;
    rows[3].selected = true;
    EXPECT_EQ(write(positions, rows), changed_t::selection);
    EXPECT_EQ(model.selection, (std::vector<bool>{false, false, false, true}));
    const array_span<const float> sizes(model.pointsizes);
    EXPECT_EQ(sizes[0], 3);
    EXPECT_EQ(sizes[3], 5);
    EXPECT_EQ(model.words(0), before);
    ASSERT_EQ(history.undo_edits().size(), 1U);
    EXPECT_TRUE(last().points.empty());
    EXPECT_TRUE(model.changes.empty());
}

TEST_F(NetEdit, MarksAndValuesAreOneEdit) {
    auto rows = table(positions);
    rows[0].selected = true;
    rows[1].numbers[0] = 5;
    EXPECT_EQ(write(positions, rows), changed_t::values);
    EXPECT_TRUE(model.selection[0]);
    EXPECT_EQ(history.undo_edits().size(), 1U);
}

TEST_F(NetEdit, WritingMapsTheRecordsOnce) {
    auto rows = table(positions);
    for (number_row_t& row : rows)
        row.numbers[1] += 1;
    const counted_mappings mappings;
    write(positions, rows);
    EXPECT_EQ(mappings.count(), 1);
}

TEST_F(NetEdit, PointsThatTheModelDoesNotHaveArePassedOver) {
    std::vector<number_row_t> rows(2);
    rows[0] = {4, true, {1, 2, 3, 4}};
    rows[1] = {~std::uint64_t{0}, true, {1, 2, 3, 4}};
    EXPECT_EQ(write(positions, rows), changed_t::none);
    EXPECT_EQ(model.words(0), before);
    rows[0].numbers = {};
    read_rows(model, positions, position_form, rows);
    EXPECT_FALSE(rows[0].selected);
    EXPECT_EQ(rows[0].numbers, (std::array<double, 4>{}));
}

TEST_F(NetEdit, AModelThatHasShrunkTakesWhatItHas) {
    auto rows = table(positions);
    for (number_row_t& row : rows) {
        row.selected = true;
        row.numbers[0] += 1;
    }
    ASSERT_TRUE(model.array(0)->extend(2));
    model.selection.resize(2);
    EXPECT_EQ(write(positions, rows), changed_t::values);
    EXPECT_EQ(last().points.size(), 2U);
}

TEST_F(NetEdit, AMemberOrArrayThatIsNotThereIsNeitherReadNorWritten) {
    std::vector<number_row_t> rows(1);
    rows[0].numbers = {1, 2, 3, 4};
    read_rows(model, attribute_t::texcoord, colour_form, rows);
    read_rows(model, attribute_t::normal, position_form, rows);
    EXPECT_EQ(rows[0].numbers, (std::array<double, 4>{1, 2, 3, 4}));
    EXPECT_EQ(write(attribute_t::texcoord, rows), changed_t::none);
    EXPECT_EQ(write(attribute_t::normal, rows), changed_t::none);
    EXPECT_EQ(model.words(0), before);
}

TEST_F(NetEdit, AnEmptyModelHasNothingToWrite) {
    points_model_t empty;
    EXPECT_FALSE(write_rows(empty, positions, position_form, {}));
    EXPECT_TRUE(history.undo_edits().empty());
}

TEST_F(NetEdit, ANurbsModelPullsTheValuesIntoItsHostTable) {
    model_entry_t entry(model_kind_t::nurbs);
    ASSERT_TRUE(entry.nurbs.allocate(2, 2, 2, 2));
    ASSERT_TRUE(entry.nurbs.afterload("net"));
    std::vector<number_row_t> rows(1);
    rows[0] = {3, false, {1, 2, 3, 0}};
    EXPECT_TRUE(write_rows(entry.nurbs, positions, position_form, rows).has_values());
    EXPECT_EQ(entry.nurbs.points.data[3].position, (pos3{1, 2, 3}));
}

TEST_F(NetEdit, KindsOfAControlPointsMembersAreTabulated) {
    const captured_stream errors(std::cerr);
    EXPECT_EQ(tabulated_kind(model, attribute_t::position), e_type_t::Position);
    EXPECT_EQ(tabulated_kind(model, attribute_t::color), e_type_t::RGBA);
    EXPECT_EQ(tabulated_kind(model, attribute_t::texcoord), std::nullopt);
    EXPECT_EQ(tabulated_kind(model, attribute_t::tangent), std::nullopt);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(NetEdit, AModelThatNothingWasStoredInHasTheMembersOfAControlPoint) {
    const model_entry_t entry(model_kind_t::nurbs);
    EXPECT_EQ(tabulated_kind(entry.nurbs, attribute_t::position), e_type_t::Position);
    EXPECT_EQ(tabulated_kind(entry.nurbs, attribute_t::color), e_type_t::RGBA);
}

TEST_F(NetEdit, OtherKindsAreTold) {
    ASSERT_TRUE(model.add(make_element_list({e_type_t::Normal, e_type_t::TexCoord2, e_type_t::PointSize}),
                          std::vector<float>(6)));
    const captured_stream errors(std::cerr);
    for (const attribute_t attribute : {attribute_t::tangent, attribute_t::binormal, attribute_t::normal})
        EXPECT_EQ(tabulated_kind(model, attribute), std::nullopt);
    EXPECT_EQ(errors.text(),
              "elements.type (1) not handled.\n"
              "elements.type (4) not handled.\n"
              "elements.type (5) not handled.\n");
}

}  // namespace
