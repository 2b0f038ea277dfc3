#include <gtest/gtest.h>

#include <iostream>
#include <limits>

#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/failing_stores.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/poisoned_stores.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct PolygonExtend : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}), {0, 1, 2, 3});
    }
    polygon_t polygon;
};

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

std::string refusal_of(polygon_t& polygon, std::int64_t vertices, std::int64_t elements) {
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(polygon.extend(vertices, elements));
    return errors.text();
}

template <class T>
std::vector<T> first(std::vector<T> list, std::size_t count) {
    list.resize(count);
    return list;
}

TEST_F(PolygonExtend, OfACopyLeavesTheOriginalAlone) {
    polygon.name = "name";
    ASSERT_TRUE(polygon.select(2));
    polygon.selectpolygon(1);
    polygon_t copy;
    ASSERT_TRUE(copy.copy(polygon));
    EXPECT_EQ(copy.name, "name");
    EXPECT_EQ(copy.selection, polygon.selection);
    EXPECT_EQ(copy.selectpolygons(), polygon.selectpolygons());
    EXPECT_EQ(vertices_of(copy), vertices_of(polygon));
    EXPECT_EQ(frames_of(copy), frames_of(polygon));
    EXPECT_EQ(elements_of(copy), elements_of(polygon));
    EXPECT_EQ(selectelems_of(copy), selectelems_of(polygon));
    EXPECT_EQ(pointsizes_of(copy), pointsizes_of(polygon));
    const auto before = vertices_of(polygon);
    ASSERT_TRUE(copy.extend(9, 12));
    {
        const array_span<vertex_t> vertices(copy.vertices);
        vertices[0] = vertex_at(7, 8, 9);
    }
    EXPECT_EQ(vertices_of(polygon), before);
    copy.swap(polygon);
    EXPECT_EQ(polygon.vertex_count(), 9U);
    EXPECT_EQ(copy.vertex_count(), 4U);
    EXPECT_EQ(vertices_of(copy), before);
}

TEST_F(PolygonExtend, GrowsAllArrays) {
    ASSERT_TRUE(polygon.extend(9, 12));
    for (const array_t* array : {&polygon.vertices, &polygon.normals, &polygon.wknmls, &polygon.pointsizes})
        EXPECT_EQ(array->element_count(), 9);
    EXPECT_EQ(polygon.elements.element_count(), 12);
    EXPECT_EQ(polygon.selectelems.element_count(), 30);
    EXPECT_EQ(polygon.selectionfeedback.element_count(), 90);
    EXPECT_EQ(polygon.normalfeedback.element_count(), 81);
    EXPECT_EQ(polygon.selection.size(), 9U);
    EXPECT_EQ(polygon.polyidvector.size(), 10U);
}

TEST_F(PolygonExtend, GrowingKeepsTheContents) {
    const auto vertices = vertices_of(polygon);
    const auto frames = frames_of(polygon);
    {
        const array_span<work_frame_t> work(polygon.wknmls);
        work[3].fourth = {7, 8, 9};
    }
    ASSERT_TRUE(polygon.extend(9, 4));
    EXPECT_EQ(first(vertices_of(polygon), 4), vertices);
    EXPECT_EQ(first(frames_of(polygon), 4), frames);
    EXPECT_EQ(ulk_test::elements_of(polygon), (std::vector<std::uint32_t>{0, 1, 2, 3}));
    const array_span<work_frame_t> work(polygon.wknmls);
    EXPECT_EQ(work[3].fourth, (dir3{7, 8, 9}));
}

TEST_F(PolygonExtend, NewVerticesAreZeroAndNewElementsMarks) {
    const ulk_test::poisoned_stores poison;
    ASSERT_TRUE(polygon.extend(40, 40));
    EXPECT_EQ(vertices_of(polygon)[4], vertex_t{});
    EXPECT_EQ(vertices_of(polygon)[39], vertex_t{});
    EXPECT_EQ(frames_of(polygon)[4], frame_t{});
    EXPECT_EQ(frames_of(polygon)[39], frame_t{});
    EXPECT_EQ(ulk_test::elements_of(polygon)[4], ulk_test::mark);
    EXPECT_EQ(ulk_test::elements_of(polygon)[39], ulk_test::mark);
}

TEST_F(PolygonExtend, WhatAnEditHasWrittenStays) {
    ASSERT_TRUE(polygon.vertices.extend(5));
    ASSERT_TRUE(polygon.normals.extend(5));
    ASSERT_TRUE(polygon.elements.extend(5));
    const vertex_t vertex = ulk_test::vertex_at(7, 8, 9);
    const frame_t frame{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    {
        const array_span<vertex_t> vertices(polygon.vertices);
        const array_span<frame_t> frames(polygon.normals);
        const index_span elements(polygon.elements);
        vertices[4] = vertex;
        frames[4] = frame;
        elements[4] = 4;
    }
    ASSERT_TRUE(polygon.extend(5, 5));
    EXPECT_EQ(vertices_of(polygon)[4], vertex);
    EXPECT_EQ(frames_of(polygon)[4], frame);
    EXPECT_EQ(ulk_test::elements_of(polygon)[4], 4U);
}

TEST_F(PolygonExtend, GrowingElementsKeepsTheStrips) {
    ASSERT_TRUE(polygon.extend(4, 30));
    EXPECT_EQ(first(ulk_test::elements_of(polygon), 4), (std::vector<std::uint32_t>{0, 1, 2, 3}));
}

TEST_F(PolygonExtend, OldSelectionStaysAndNewPointsAreUnselected) {
    ASSERT_TRUE(polygon.select(1));
    ASSERT_TRUE(polygon.select(3));
    ASSERT_TRUE(polygon.extend(6, 4));
    EXPECT_EQ(polygon.selection, (std::vector<bool>{false, true, false, true, false, false}));
    EXPECT_EQ(pointsizes_of(polygon), (std::vector<float>{3, 5, 3, 5, 3, 3}));
}

TEST_F(PolygonExtend, PointThatWentAndCameBackIsUnselected) {
    ASSERT_TRUE(polygon.select(0));
    ASSERT_TRUE(polygon.select(3));
    ASSERT_TRUE(polygon.extend(2, 4));
    EXPECT_EQ(polygon.selection, (std::vector<bool>{true, false}));
    ASSERT_TRUE(polygon.extend(4, 4));
    EXPECT_EQ(polygon.selection, (std::vector<bool>{true, false, false, false}));
    EXPECT_EQ(pointsizes_of(polygon), (std::vector<float>{5, 3, 3, 3}));
}

TEST_F(PolygonExtend, ShrinksToNothing) {
    const render_target_t target(4, 4);
    target.bind();
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(polygon.extend(0, 0));
    EXPECT_EQ(polygon.vertex_count(), 0U);
    EXPECT_EQ(polygon.element_count(), 0U);
    EXPECT_EQ(polygon.selectelems.element_count(), 0);
    EXPECT_TRUE(polygon.selection.empty());
    polygon.draw();
    polygon.drawpoints();
    EXPECT_EQ(errors.text(), "");
}

TEST_F(PolygonExtend, GrowsFromNothing) {
    polygon_t empty;
    ASSERT_TRUE(empty.allocate(0, 0));
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(empty.extend(3, 5));
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(pointsizes_of(empty), (std::vector<float>{3, 3, 3}));
    EXPECT_EQ(selectelems_of(empty).size(), 9U);
    EXPECT_EQ(empty.selection.size(), 3U);
}

TEST_F(PolygonExtend, NewTailOfSelectelemsIsMarked) {
    select_polygons(polygon, {1});
    polygon.selectpolygon(1);
    ASSERT_TRUE(polygon.extend(4, 5));
    index_span(polygon.elements)[4] = mark;
    polygon.afterload(nullptr);
    EXPECT_EQ(selectelems_of(polygon),
              (std::vector<std::uint32_t>{mark, mark, mark, 2, 1, 3, mark, mark, mark}));
}

TEST_F(PolygonExtend, SelectedIdsFollowTheNewNumbers) {
    // Ids move when strips are split: the same id then is another triangle.
    select_polygons(polygon, {1});
    polygon.selectpolygon(1);
    ASSERT_TRUE(polygon.extend(4, 7));
    {
        const index_span indices(polygon.elements);
        const std::uint32_t split[] = {0, 1, 2, mark, 1, 3, 2};
        std::ranges::copy(split, indices.span().begin());
    }
    ASSERT_TRUE(polygon.extend(4, 7));
    const auto selected = selectelems_of(polygon);
    EXPECT_EQ(std::vector(selected.begin() + 3, selected.begin() + 6), (std::vector<std::uint32_t>{1, 3, 2}));
}

TEST_F(PolygonExtend, BelowThreeElementsTheTableOfIdsIsEmpty) {
    ASSERT_EQ(polygon.polyidvector.size(), 2U);
    ASSERT_TRUE(polygon.extend(4, 2));
    EXPECT_TRUE(polygon.polyidvector.empty());
}

TEST_F(PolygonExtend, KeepsTheName) {
    polygon.name = "a.ulk";
    ASSERT_TRUE(polygon.extend(5, 5));
    EXPECT_EQ(polygon.name, "a.ulk");
}

TEST_F(PolygonExtend, SameCountsKeepEverything) {
    ASSERT_TRUE(polygon.select(2));
    select_polygons(polygon, {0});
    polygon.selectpolygon(0);
    const auto vertices = vertices_of(polygon);
    const auto selected = selectelems_of(polygon);
    ASSERT_TRUE(polygon.extend(4, 4));
    EXPECT_EQ(vertices_of(polygon), vertices);
    EXPECT_EQ(selectelems_of(polygon), selected);
    EXPECT_EQ(pointsizes_of(polygon), (std::vector<float>{3, 3, 5, 3}));
}

TEST_F(PolygonExtend, SetsItsMarks) {
    const forced_marks marks;
    ASSERT_TRUE(polygon.extend(5, 5));
    EXPECT_EQ(
        marks.beginning_with("polygon_t::"),
        (std::vector<std::string>{"polygon_t::extend(start)", "polygon_t::extend(3)", "polygon_t::extend(4)",
                                  "polygon_t::extend(5)", "polygon_t::extend(end)"}));
}

TEST_F(PolygonExtend, ModelThatWasNeverAllocatedCanNotGrow) {
    polygon_t empty;
    EXPECT_EQ(refusal_of(empty, 3, 3), "vertices.extend() failed.\n");
}

TEST_F(PolygonExtend, NegativeCountsAreRefused) {
    EXPECT_EQ(refusal_of(polygon, -1, 4), "vertices.extend() failed.\n");
    EXPECT_EQ(refusal_of(polygon, 4, -1), "elements.allocate() failed.\n");
    EXPECT_EQ(polygon.vertex_count(), 4U);
    EXPECT_EQ(polygon.element_count(), 4U);
}

TEST_F(PolygonExtend, AbsurdCountsAreRefusedAndLeaveTheModelAsItWas) {
    const auto vertices = vertices_of(polygon);
    EXPECT_EQ(refusal_of(polygon, most, 4), "vertices.extend() failed.\n");
    EXPECT_EQ(refusal_of(polygon, 4, most), "elements.allocate() failed.\n");
    EXPECT_EQ(vertices_of(polygon), vertices);
    EXPECT_EQ(ulk_test::elements_of(polygon), (std::vector<std::uint32_t>{0, 1, 2, 3}));
}

TEST_F(PolygonExtend, ArrayThatCanNotGrowIsTold) {
    // Growing asks GL for two stores, one of them for the copy on the way.
    struct row {
        int store;
        const char* message;
    };
    const row rows[] = {
        {1, "vertices.extend() failed.\n"},
        {3, "normals.extend() failed.\n"},
        {5, "wknmls.extend() failed.\n"},
        {7, "elements.allocate() failed.\n"},
        {9, ""},  // point sizes
        {11, "selectelems.allocate() failed.\n"},
    };
    for (const row& expected : rows) {
        polygon_t small;
        ASSERT_TRUE(small.allocate(3, 3));
        ASSERT_TRUE(small.vertices.provide() && small.normals.provide() && small.wknmls.provide() &&
                    small.elements.provide() && small.pointsizes.provide() && small.selectelems.provide());
        const failing_stores failing(expected.store);
        EXPECT_EQ(refusal_of(small, 5, 5), expected.message) << "store " << expected.store;
    }
}

}  // namespace
