#include "model/modeling.h"

#include <gtest/gtest.h>

#include <iostream>

#include "model/polygon/polygon.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct Modeling : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}), {0, 1, 2, 3});
    }
    polygon_t polygon;
    modeling_t& model = polygon;
};

/// A model with nothing but what must be there.
struct bare_model_t : modeling_t {
    std::uint32_t arraycount() const override { return 0; }
    const array_t* array(std::uint32_t) const override { return nullptr; }
    array_t* array(std::uint32_t) override { return nullptr; }
    bool drawpoints() override { return true; }
    void draw() override {}
};

TEST(ElementLists, FloatsPerRecord) {
    struct row {
        const element_list_t& list;
        std::vector<e_type_t> types;
        std::uint32_t floats;
    };
    using enum e_type_t;
    const row rows[] = {
        {vertex_elements(), {Position, RGBA, TexCoord2}, 9},
        {frame_elements(), {Normal, Normal, Normal}, 9},
        {work_frame_elements(), {Normal, Normal, Normal, Normal}, 12},
        {size_elements(), {PointSize}, 1},
        {control_point_elements(), {Position, RGBA}, 7},
    };
    for (const row& expected : rows) {
        std::vector<e_type_t> types;
        for (const element_t element : ulk3d::elements_of(expected.list))
            types.push_back(element.type);
        EXPECT_EQ(types, expected.types);
        EXPECT_EQ(words_of(expected.list), expected.floats);
    }
}

TEST(ElementLists, AreBuiltOnce) {
    EXPECT_TRUE(is_same_list(vertex_elements(), vertex_elements()));
    EXPECT_TRUE(is_same_list(frame_elements(), frame_elements()));
    EXPECT_TRUE(is_same_list(work_frame_elements(), work_frame_elements()));
    EXPECT_TRUE(is_same_list(size_elements(), size_elements()));
    EXPECT_TRUE(is_same_list(control_point_elements(), control_point_elements()));
}

TEST(ModelingBase, HasNoOptionsAndNoStrips) {
    bare_model_t model;
    EXPECT_EQ(model.optioncount(), 0U);
    const option_view_t view = model.option(0);
    EXPECT_EQ(view.data, nullptr);
    EXPECT_EQ(view.count, 0U);
    EXPECT_EQ(model.elementarray(), nullptr);
    EXPECT_EQ(std::as_const(model).elementarray(), nullptr);
}

TEST(ModelingBase, BoxIsTheOrigin) {
    const bare_model_t model;
    pos3 low{1, 2, 3};
    pos3 high{4, 5, 6};
    model.bounds(low, high);
    EXPECT_EQ(low, pos3{});
    EXPECT_EQ(high, pos3{});
}

TEST_F(Modeling, SelectTwiceIsTrueThenFalse) {
    EXPECT_TRUE(model.select(2));
    EXPECT_FALSE(model.select(2));
    EXPECT_EQ(pointsizes_of(model), (std::vector<float>{3, 3, 5, 3}));
    EXPECT_EQ(model.selection, (std::vector<bool>{false, false, true, false}));
}

TEST_F(Modeling, UnselectTwiceIsTrueThenFalse) {
    ASSERT_TRUE(model.select(0));
    ASSERT_TRUE(model.select(1));
    EXPECT_TRUE(model.unselect(1));
    EXPECT_FALSE(model.unselect(1));
    EXPECT_EQ(pointsizes_of(model), (std::vector<float>{5, 3, 3, 3}));
    EXPECT_EQ(model.selection, (std::vector<bool>{true, false, false, false}));
}

TEST_F(Modeling, PointsBeyondTheCountAreNeitherSelectedNorUnselected) {
    for (const std::uint64_t point : {std::uint64_t{4}, std::uint64_t{0xFFFFFFFFFFFFFFFF}}) {
        EXPECT_FALSE(model.select(point));
        EXPECT_FALSE(model.unselect(point));
    }
    EXPECT_EQ(pointsizes_of(model), (std::vector<float>{3, 3, 3, 3}));
}

TEST_F(Modeling, EmptyModelSelectsNothing) {
    polygon_t empty;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(empty.select(0));
    EXPECT_FALSE(empty.unselect(0));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(Modeling, ClearselectionUnmarksAllAndKeepsTheCount) {
    ASSERT_TRUE(model.select(0));
    ASSERT_TRUE(model.select(3));
    model.clearselection();
    EXPECT_EQ(pointsizes_of(model), (std::vector<float>{3, 3, 3, 3}));
    EXPECT_EQ(model.selection, std::vector<bool>(4, false));
}

TEST_F(Modeling, PolygonHasNoOptions) {
    EXPECT_EQ(model.optioncount(), 0U);
    EXPECT_EQ(model.option(0).data, nullptr);
    EXPECT_EQ(model.option(0).count, 0U);
}

TEST_F(Modeling, ArraycountHidesTheWorkNormals) {
    EXPECT_EQ(model.arraycount(), 2U);
    EXPECT_EQ(model.array(0), &polygon.vertices);
    EXPECT_EQ(model.array(1), &polygon.normals);
    EXPECT_EQ(model.array(2), &polygon.wknmls);
    EXPECT_EQ(model.array(3), nullptr);
    EXPECT_EQ(model.array(0xFFFFFFFF), nullptr);
}

TEST_F(Modeling, ArraysOfAConstantModelAreTheSame) {
    const modeling_t& constant = polygon;
    EXPECT_EQ(constant.array(0), &polygon.vertices);
    EXPECT_EQ(constant.array(1), &polygon.normals);
    EXPECT_EQ(constant.array(2), &polygon.wknmls);
    EXPECT_EQ(constant.array(3), nullptr);
    EXPECT_EQ(constant.elementarray(), &polygon.elements);
    EXPECT_EQ(model.elementarray(), &polygon.elements);
}

TEST_F(Modeling, ElementchangedOfAPolygonDoesNothing) {
    const auto vertices = vertices_of(polygon);
    const auto frames = frames_of(polygon);
    model.elementchanged(0, 1);
    model.elementchanged(7, 1000);
    EXPECT_EQ(vertices_of(polygon), vertices);
    EXPECT_EQ(frames_of(polygon), frames);
}

TEST_F(Modeling, BaseClearEmptiesNamePointsAndSelection) {
    model.name = "a.ulk";
    model.modeling_t::clear();
    EXPECT_EQ(model.name, "");
    EXPECT_FALSE(model.pointsizes.has_buffer());
    EXPECT_EQ(model.pointsizes.element_count(), 0);
    EXPECT_TRUE(model.selection.empty());
    EXPECT_EQ(model.selectionfeedback.buffer_id(), 0U);
}

}  // namespace
