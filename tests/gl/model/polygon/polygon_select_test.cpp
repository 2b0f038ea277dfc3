#include <gtest/gtest.h>

#include <iostream>

#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct PolygonSelect : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 2, 0}}),
                      {0, 1, 2, 3, mark, 2, 3, 4});
    }
    std::vector<std::uint32_t> selected(std::size_t id) const {
        const auto all = selectelems_of(polygon);
        const auto first = all.begin() + static_cast<std::ptrdiff_t>(3 * id);
        return {first, first + 3};
    }
    polygon_t polygon;
    using triangle = std::vector<std::uint32_t>;
    const triangle none{mark, mark, mark};
};

TEST_F(PolygonSelect, WritesTheTriangle) {
    polygon.selectpolygon(0);
    EXPECT_EQ(selected(0), (triangle{0, 1, 2}));
    EXPECT_EQ(selected(1), none);
}

TEST_F(PolygonSelect, FlippedTriangleSwapsItsFirstTwo) {
    polygon.selectpolygon(1);
    EXPECT_EQ(selected(1), (triangle{2, 1, 3}));
    EXPECT_EQ(selected(0), none);
    EXPECT_EQ(selected(2), none);
}

TEST_F(PolygonSelect, SecondStripsTriangleIsFoundByItsId) {
    polygon.selectpolygon(2);
    EXPECT_EQ(selected(2), (triangle{2, 3, 4}));
}

TEST_F(PolygonSelect, AgreesWithTheLoad) {
    for (const std::uint32_t id : {0U, 1U, 2U})
        polygon.selectpolygon(id);
    const auto one_by_one = selectelems_of(polygon);
    select_polygons(polygon, {0, 1, 2});
    polygon.afterload(nullptr);
    EXPECT_EQ(selectelems_of(polygon), one_by_one);
}

TEST_F(PolygonSelect, UnselectTakesTheTriangleOut) {
    polygon.selectpolygon(0);
    polygon.selectpolygon(1);
    polygon.unselectpolygon(1);
    EXPECT_EQ(selected(0), (triangle{0, 1, 2}));
    EXPECT_EQ(selected(1), none);
}

TEST_F(PolygonSelect, KeepsTheIdsInStep) {
    polygon.selectpolygon(0);
    polygon.selectpolygon(2);
    EXPECT_EQ(polygon.selectpolygons(), (std::set<std::uint32_t>{0, 2}));
    polygon.unselectpolygon(0);
    EXPECT_EQ(polygon.selectpolygons(), (std::set<std::uint32_t>{2}));
}

TEST_F(PolygonSelect, ClearTakesAllOut) {
    polygon.selectpolygon(0);
    polygon.selectpolygon(2);
    polygon.clearpolygons();
    EXPECT_TRUE(polygon.selectpolygons().empty());
    EXPECT_EQ(selected(0), none);
    EXPECT_EQ(selected(2), none);
}

TEST_F(PolygonSelect, IdBeyondTheTableIsTold) {
    const captured_stream errors(std::cerr);
    polygon.selectpolygon(6);
    EXPECT_EQ(errors.text(), "polygon_t::selectpolygon() polyid(6) >= polyidvector.size(6)\n");
}

TEST_F(PolygonSelect, UnselectTellsOfAnIdBeyondTheTableInTheSameWords) {
    const captured_stream errors(std::cerr);
    polygon.unselectpolygon(18446744073709551615U);
    EXPECT_EQ(errors.text(),
              "polygon_t::selectpolygon() polyid(18446744073709551615) >= polyidvector.size(6)\n");
}

TEST_F(PolygonSelect, EmptyModelHasNoIds) {
    polygon_t empty;
    const captured_stream errors(std::cerr);
    empty.selectpolygon(0);
    EXPECT_EQ(errors.text(), "polygon_t::selectpolygon() polyid(0) >= polyidvector.size(0)\n");
}

TEST_F(PolygonSelect, TwoElementsHaveNoIds) {
    polygon_t two;
    build_polygon(two, vertices_at({{0, 0, 0}, {1, 0, 0}}), {0, 1});
    const captured_stream errors(std::cerr);
    two.selectpolygon(0);
    EXPECT_EQ(errors.text(), "polygon_t::selectpolygon() polyid(0) >= polyidvector.size(0)\n");
}

TEST_F(PolygonSelect, IdWithoutATriangleIsSilent) {
    const auto before = selectelems_of(polygon);
    const captured_stream errors(std::cerr);
    polygon.selectpolygon(5);
    polygon.unselectpolygon(5);
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(selectelems_of(polygon), before);
}

TEST_F(PolygonSelect, AModelThatShrinksToTwoElementsHasNoIdsLeft) {
    ASSERT_TRUE(polygon.extend(5, 2));
    EXPECT_TRUE(polygon.polyidvector.empty());
    const captured_stream errors(std::cerr);
    polygon.selectpolygon(0);
    EXPECT_EQ(errors.text(), "polygon_t::selectpolygon() polyid(0) >= polyidvector.size(0)\n");
    EXPECT_EQ(polygon.selectelems.element_count(), 0);
}

TEST_F(PolygonSelect, TrianglesOfAModelThatShrinksToTwoElementsAreNotDrawnAsSelected) {
    polygon.selectpolygon(0);
    ASSERT_EQ(selected(0), (triangle{0, 1, 2}));
    // An edit shortens the list, and a load of its own completes it.
    ASSERT_TRUE(polygon.elements.extend(2));
    polygon.afterload(nullptr);
    EXPECT_EQ(selected(0), none);
}

TEST_F(PolygonSelect, TriangleThatAnEditBrokeIsNotSelected) {
    // Elements can be written without a new numbering. A mark among the three would tear the list apart.
    index_span(polygon.elements)[1] = mark;
    polygon.selectpolygon(0);
    EXPECT_EQ(selected(0), none);
}

}  // namespace
