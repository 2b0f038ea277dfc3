#include "operations/strips/strip_surgery.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <iostream>

#include "strip_changes.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct split_result_t {
    indices_t elements;
    std::uint32_t advance;
    std::int32_t triangle_number;
    std::uint32_t run_count;
    bool operator==(const split_result_t&) const = default;
};

void PrintTo(const split_result_t& result, std::ostream* stream) {
    *stream << testing::PrintToString(result.elements) << " advance " << result.advance << " number "
            << result.triangle_number << " run " << result.run_count;
}

/// A split of the strip 0 1 2 ... in a mesh of ten vertices: the new ones are 10 and 11.
struct split_row_t {
    std::uint32_t triangles;  ///< of the strip
    std::int32_t number;      ///< of the triangle that is split
    std::uint32_t i0, i1, i2;
    split_result_t expected;
};

using split_t = std::uint32_t (*)(strip_mesh_t&, std::int32_t&, std::uint32_t&, std::uint32_t, std::uint32_t,
                                  std::uint32_t);

std::uint32_t split_one(strip_mesh_t& mesh, std::int32_t& number, std::uint32_t& run_count, std::uint32_t i0,
                        std::uint32_t i1, std::uint32_t i2) {
    return add_vertex0(mesh, number, run_count, i0, i1, i2, 0.5F);
}

std::uint32_t split_two(strip_mesh_t& mesh, std::int32_t& number, std::uint32_t& run_count, std::uint32_t i0,
                        std::uint32_t i1, std::uint32_t i2) {
    return add_vertex(mesh, number, run_count, i0, i1, i2, 0.5F, 0.5F);
}

indices_t joined(const indices_t& before, const indices_t& strip, const indices_t& after) {
    indices_t all = before;
    all.insert(all.end(), strip.begin(), strip.end());
    all.insert(all.end(), after.begin(), after.end());
    return all;
}

/// The row as it stands, and in a list with other strips before and behind.
void expect_row(split_t split, const split_row_t& row) {
    const std::array<std::array<indices_t, 2>, 3> surroundings = {
        {{}, {{{7, 8, 9, mark}, {}}}, {{{7, 8, 9, mark}, {mark, 7, 9, 8, 7}}}}};
    for (const auto& [before, after] : surroundings) {
        const auto shift = static_cast<std::uint32_t>(before.size());
        strip_mesh_t mesh = numbered_mesh(joined(before, strip_of(row.triangles), after), 10);
        split_result_t result{{}, 0, row.number, static_cast<std::uint32_t>(row.number + 3)};
        result.advance = split(mesh, result.triangle_number, result.run_count, row.i0 + shift, row.i1 + shift,
                               row.i2 + shift);
        result.elements = mesh.elements;
        split_result_t expected = row.expected;
        expected.elements = joined(before, expected.elements, after);
        EXPECT_EQ(result, expected) << "i0 " << row.i0 << ", i1 " << row.i1 << ", i2 " << row.i2 << " of "
                                    << row.triangles << " triangles, shifted by " << shift;
    }
}

TEST(StripSplit, OneEdgeOfTheFirstTriangleByTheLastCorner) {
    const split_row_t rows[] = {
        {1, 0, 2, 0, 1, {{0, 1, 10, mark, 10, 1, 2}, 4, 0, 3}},
        {2, 0, 2, 0, 1, {{0, 1, 10, mark, 10, 1, 2, 3}, 4, 0, 3}},
        {3, 0, 2, 0, 1, {{0, 1, 10, mark, 10, 1, 2, 3, 4}, 4, 0, 3}},
        {1, 0, 1, 2, 0, {{2, 0, 10, 1}, 1, 1, 4}},
        {2, 0, 1, 2, 0, {{2, 0, 10, 1, mark, 2, 1, 3}, 1, 1, 4}},
        {3, 0, 1, 2, 0, {{2, 0, 10, 1, mark, 2, 1, 3, mark, 2, 3, 4}, 1, 1, 4}},
        {4, 0, 1, 2, 0, {{2, 0, 10, 1, mark, 2, 1, 3, mark, 2, 3, 4, 5}, 1, 1, 4}},
        {1, 0, 0, 1, 2, {{0, 10, 2, 1}, 1, 1, 4}},
        {2, 0, 0, 1, 2, {{0, 10, 2, 1, 3, mark, 2, 3}, 1, 1, 4}},
        {3, 0, 0, 1, 2, {{0, 10, 2, 1, 3, mark, 2, 3, 4}, 1, 1, 4}},
    };
    for (const split_row_t& row : rows)
        expect_row(split_one, row);
}

TEST(StripSplit, OneEdgeOfAnEvenTriangleByTheLastCorner) {
    const split_row_t rows[] = {
        {3, 2, 4, 2, 3, {{0, 1, 2, 3, 10, mark, 10, 3, 4}, 4, 0, 3}},
        {4, 2, 4, 2, 3, {{0, 1, 2, 3, 10, mark, 10, 3, 4, 5}, 4, 0, 3}},
        {5, 2, 4, 2, 3, {{0, 1, 2, 3, 10, mark, 10, 3, 4, 5, 6}, 4, 0, 3}},
        {3, 2, 3, 4, 2, {{0, 1, 2, 3, 10, mark, 4, 2, 10}, 4, 0, 3}},
        {4, 2, 3, 4, 2, {{0, 1, 2, 3, 10, mark, 4, 2, 10, mark, 4, 3, 5}, 4, 0, 3}},
        {5, 2, 3, 4, 2, {{0, 1, 2, 3, 10, mark, 4, 2, 10, mark, 4, 3, 5, mark, 4, 5, 6}, 4, 0, 3}},
        {3, 2, 2, 3, 4, {{0, 1, 2, 3, mark, 2, 10, 4, 3}, 4, 1, 4}},
        {4, 2, 2, 3, 4, {{0, 1, 2, 3, mark, 2, 10, 4, 3, 5, mark, 4, 5}, 4, 1, 4}},
        {5, 2, 2, 3, 4, {{0, 1, 2, 3, mark, 2, 10, 4, 3, 5, mark, 4, 5, 6}, 4, 1, 4}},
    };
    for (const split_row_t& row : rows)
        expect_row(split_one, row);
}

TEST(StripSplit, OneEdgeOfAnOddTriangleByTheLastCorner) {
    const split_row_t rows[] = {
        {2, 1, 3, 2, 1, {{0, 1, 2, 10, mark, 3, 10, 1}, 4, 0, 3}},
        {3, 1, 3, 2, 1, {{0, 1, 2, 10, mark, 3, 10, 1, mark, 2, 3, 4}, 4, 0, 3}},
        {4, 1, 3, 2, 1, {{0, 1, 2, 10, mark, 3, 10, 1, mark, 2, 3, 4, 5}, 4, 0, 3}},
        {2, 1, 1, 3, 2, {{0, 1, 2, 10, 3}, 1, 2, 5}},
        {3, 1, 1, 3, 2, {{0, 1, 2, 10, 3, mark, 2, 3, 4}, 1, 2, 5}},
        {4, 1, 1, 3, 2, {{0, 1, 2, 10, 3, mark, 2, 3, 4, 5}, 1, 2, 5}},
        {2, 1, 2, 1, 3, {{0, 1, 2, mark, 2, 10, 3, 1}, 4, 1, 4}},
        {3, 1, 2, 1, 3, {{0, 1, 2, mark, 2, 10, 3, 1, mark, 2, 3, 4}, 4, 1, 4}},
        {4, 1, 2, 1, 3, {{0, 1, 2, mark, 2, 10, 3, 1, mark, 2, 3, 4, 5}, 4, 1, 4}},
    };
    for (const split_row_t& row : rows)
        expect_row(split_one, row);
}

TEST(StripSplit, TwoEdgesOfTheFirstTriangleByTheLastCorner) {
    const split_row_t rows[] = {
        {1, 0, 2, 0, 1, {{0, 1, 10, 11, 2}, 2, 2, 5}},
        {2, 0, 2, 0, 1, {{0, 1, 10, 11, 2, mark, 2, 1, 3}, 5, -1, 2}},
        {3, 0, 2, 0, 1, {{0, 1, 10, 11, 2, mark, 2, 1, 3, mark, 2, 3, 4}, 5, -1, 2}},
        {1, 0, 1, 2, 0, {{1, 10, 11, 2, 0}, 2, 2, 5}},
        {2, 0, 1, 2, 0, {{1, 10, 11, 2, 0, mark, 2, 1, 3}, 5, -1, 2}},
        {3, 0, 1, 2, 0, {{1, 10, 11, 2, 0, mark, 2, 1, 3, mark, 2, 3, 4}, 5, -1, 2}},
        {1, 0, 0, 1, 2, {{0, 10, 11, 1, 2}, 2, 2, 5}},
        {2, 0, 0, 1, 2, {{0, 10, 11, 1, 2, 3}, 2, 2, 5}},
        {3, 0, 0, 1, 2, {{0, 10, 11, 1, 2, 3, 4}, 2, 2, 5}},
    };
    for (const split_row_t& row : rows)
        expect_row(split_two, row);
}

TEST(StripSplit, TwoEdgesOfAnEvenTriangleByTheLastCorner) {
    const split_row_t rows[] = {
        {3, 2, 4, 2, 3, {{0, 1, 2, 3, 10, 11, 4}, 2, 4, 7}},
        {4, 2, 4, 2, 3, {{0, 1, 2, 3, 10, 11, 4, mark, 4, 3, 5}, 5, -1, 2}},
        {5, 2, 4, 2, 3, {{0, 1, 2, 3, 10, 11, 4, mark, 4, 3, 5, mark, 4, 5, 6}, 5, -1, 2}},
        {3, 2, 3, 4, 2, {{0, 1, 2, 3, mark, 3, 10, 11, 4, 2}, 5, 2, 5}},
        {4, 2, 3, 4, 2, {{0, 1, 2, 3, mark, 3, 10, 11, 4, 2, mark, 4, 3, 5}, 8, -1, 2}},
        {5, 2, 3, 4, 2, {{0, 1, 2, 3, mark, 3, 10, 11, 4, 2, mark, 4, 3, 5, mark, 4, 5, 6}, 8, -1, 2}},
        {3, 2, 2, 3, 4, {{0, 1, 2, 3, mark, 2, 10, 11, 3, 4}, 5, 2, 5}},
        {4, 2, 2, 3, 4, {{0, 1, 2, 3, mark, 2, 10, 11, 3, 4, 5}, 5, 2, 5}},
        {5, 2, 2, 3, 4, {{0, 1, 2, 3, mark, 2, 10, 11, 3, 4, 5, 6}, 5, 2, 5}},
    };
    for (const split_row_t& row : rows)
        expect_row(split_two, row);
}

TEST(StripSplit, TwoEdgesOfAnOddTriangleByTheLastCorner) {
    const split_row_t rows[] = {
        {2, 1, 3, 2, 1, {{0, 1, 2, 11, 10, 3}, 2, 3, 6}},
        {3, 1, 3, 2, 1, {{0, 1, 2, 11, 10, 3, mark, 2, 3, 4}, 5, -1, 2}},
        {4, 1, 3, 2, 1, {{0, 1, 2, 11, 10, 3, mark, 2, 3, 4, 5}, 5, -1, 2}},
        {2, 1, 1, 3, 2, {{0, 1, 2, mark, 1, 10, 11, 3, 2}, 5, 2, 5}},
        {3, 1, 1, 3, 2, {{0, 1, 2, mark, 1, 10, 11, 3, 2, mark, 2, 3, 4}, 8, -1, 2}},
        {4, 1, 1, 3, 2, {{0, 1, 2, mark, 1, 10, 11, 3, 2, mark, 2, 3, 4, 5}, 8, -1, 2}},
        {2, 1, 2, 1, 3, {{0, 1, 2, mark, 2, 10, 11, 1, 3}, 5, 2, 5}},
        {3, 1, 2, 1, 3, {{0, 1, 2, mark, 2, 10, 11, 1, 3, mark, 2, 3, 4}, 8, -1, 2}},
        {4, 1, 2, 1, 3, {{0, 1, 2, mark, 2, 10, 11, 1, 3, mark, 2, 3, 4, 5}, 8, -1, 2}},
    };
    for (const split_row_t& row : rows)
        expect_row(split_two, row);
}

template <class Record, class Formula>
Record by_component(const Record& a, const Record& b, Formula formula) {
    auto result = std::bit_cast<std::array<float, 9>>(a);
    const auto other = std::bit_cast<std::array<float, 9>>(b);
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = formula(result[i], other[i]);
    return std::bit_cast<Record>(result);
}

template <class Record>
Record weighted(const Record& a, const Record& b, float t) {
    return by_component(a, b, [t](float x, float y) { return (1 - t) * x + t * y; });
}

template <class Record>
Record stepped(const Record& a, const Record& b, float t) {
    return by_component(a, b, [t](float x, float y) { return x + (y - x) * t; });
}

/// Vertices and frames with components for which the two formulas round differently.
strip_mesh_t uneven_mesh() {
    strip_mesh_t mesh = numbered_mesh({0, 1, 2});
    for (std::uint32_t i = 0; i < 3; ++i) {
        mesh.vertices[i] = mesh.vertices[i] * 0.7F + numbered_vertex(5 - i) * 0.31F;
        mesh.frames[i] = mesh.frames[i] * 0.7F + numbered_frame(5 - i) * 0.31F;
    }
    return mesh;
}

TEST(StripSplit, VertexOnOneEdgeWeighsBothEnds) {
    const float t = 0.3F;
    strip_mesh_t mesh = uneven_mesh();
    const strip_mesh_t old = mesh;
    ASSERT_NE(weighted(old.vertices[1], old.vertices[2], t), stepped(old.vertices[1], old.vertices[2], t));
    ASSERT_NE(weighted(old.frames[1], old.frames[2], t), stepped(old.frames[1], old.frames[2], t));
    std::int32_t number = 0;
    std::uint32_t run_count = 3;
    ASSERT_NE(add_vertex0(mesh, number, run_count, 1, 2, 0, t), 0U);
    strip_mesh_t expected = old;
    expected.vertices.push_back(weighted(old.vertices[1], old.vertices[2], t));
    expected.frames.push_back(weighted(old.frames[1], old.frames[2], t));
    EXPECT_EQ(mesh.vertices, expected.vertices);
    EXPECT_EQ(mesh.frames, expected.frames);
}

TEST(StripSplit, VerticesOnTwoEdgesStepFromTheEdgeStartAndFramesWeigh) {
    const float t1 = 0.3F, t2 = 0.85F;
    strip_mesh_t mesh = uneven_mesh();
    const strip_mesh_t old = mesh;
    ASSERT_NE(weighted(old.vertices[1], old.vertices[2], t1), stepped(old.vertices[1], old.vertices[2], t1));
    ASSERT_NE(weighted(old.vertices[0], old.vertices[1], t2), stepped(old.vertices[0], old.vertices[1], t2));
    ASSERT_NE(weighted(old.frames[0], old.frames[1], t2), stepped(old.frames[0], old.frames[1], t2));
    std::int32_t number = 0;
    std::uint32_t run_count = 3;
    ASSERT_NE(add_vertex(mesh, number, run_count, 1, 2, 0, t1, t2), 0U);
    strip_mesh_t expected = old;
    expected.vertices.push_back(stepped(old.vertices[1], old.vertices[2], t1));
    expected.vertices.push_back(stepped(old.vertices[0], old.vertices[1], t2));
    expected.frames.push_back(weighted(old.frames[1], old.frames[2], t1));
    expected.frames.push_back(weighted(old.frames[0], old.frames[1], t2));
    EXPECT_EQ(mesh.vertices, expected.vertices);
    EXPECT_EQ(mesh.frames, expected.frames);
}

/// What both splits print that must refuse these corners and leave all as it is.
std::string refusal(const indices_t& elements, std::int32_t number, std::uint32_t i0, std::uint32_t i1,
                    std::uint32_t i2) {
    std::string text;
    for (const split_t split : {split_one, split_two}) {
        const captured_stream errors(std::cerr);
        strip_mesh_t mesh = numbered_mesh(elements);
        const strip_mesh_t before = mesh;
        std::int32_t number_after = number;
        std::uint32_t run_count = 77;
        EXPECT_EQ(split(mesh, number_after, run_count, i0, i1, i2), 0U);
        EXPECT_EQ(mesh, before);
        EXPECT_EQ(number_after, number);
        EXPECT_EQ(run_count, 77U);
        EXPECT_TRUE(split == split_one || errors.text() == text);
        text = errors.text();
    }
    return text;
}

TEST(StripSplit, CornersAgainstTheWindingAreNamedAndRefused) {
    const std::string first = "i(2) == i0(2)\nl(0) == i2(2)\n";
    const std::string second = "i==i1(2)\nl==i0(0)\n";
    const std::string third = "i==i2(2)\nl==i1(0)\n";
    EXPECT_EQ(refusal({0, 1, 2, 3}, 0, 2, 1, 0), first);
    EXPECT_EQ(refusal({0, 1, 2, 3}, 0, 0, 2, 1), second);
    EXPECT_EQ(refusal({0, 1, 2, 3}, 0, 1, 0, 2), third);
}

TEST(StripSplit, CornersAgainstTheWindingOfALaterEvenTriangleAreNamedAndRefused) {
    EXPECT_EQ(refusal({0, 1, 2, 3, 4}, 2, 4, 3, 2), "i(4) == i0(4)\nl(2) == i2(4)\n");
    EXPECT_EQ(refusal({0, 1, 2, 3, 4}, 2, 2, 4, 3), "i==i1(4)\nl==i0(2)\n");
    EXPECT_EQ(refusal({0, 1, 2, 3, 4}, 2, 3, 2, 4), "i==i2(4)\nl==i1(2)\n");
}

TEST(StripSplit, CornersAgainstTheWindingOfAnOddTriangleAreRefused) {
    EXPECT_EQ(refusal({0, 1, 2, 3, 4}, 1, 3, 1, 2), "");
    EXPECT_EQ(refusal({0, 1, 2, 3, 4}, 1, 2, 3, 1), "");
    EXPECT_EQ(refusal({0, 1, 2, 3, 4}, 1, 1, 2, 3), "");
}

TEST(StripSplit, CornersThatAreNoTriangleAreRefused) {
    EXPECT_EQ(refusal({}, 0, 0, 1, 2), "");
    EXPECT_EQ(refusal({0}, 0, 0, 1, 2), "");
    EXPECT_EQ(refusal({0, 1}, 0, 0, 1, 2), "");
    EXPECT_EQ(refusal({0, 1, 2}, 0, 1, 2, 3), "");
    EXPECT_EQ(refusal({0, 1, 2}, 0, 0, 0, 0), "");
    EXPECT_EQ(refusal({0, 1, 2}, 0, 0, 0, 2), "");
    EXPECT_EQ(refusal({0, 1, 2, 3}, 0, 0, 1, 3), "");
    EXPECT_EQ(refusal({0, 1, 2}, -1, 0, 1, 2), "");
    EXPECT_EQ(refusal({0, 1, mark, 2, 3}, 0, 0, 1, 2), "");
    EXPECT_EQ(refusal({0, 1, 2}, 0, mark, mark - 1, mark - 2), "");
    EXPECT_EQ(refusal({0, 1, 2}, 0, mark, 0, 1), "");
}

TEST(StripSurgery, MarksTellHowFarItCame) {
    const forced_marks marks;
    strip_mesh_t mesh = numbered_mesh({0, 1, 2});
    std::int32_t number = 0;
    std::uint32_t run_count = 3;
    EXPECT_EQ(add_vertex0(mesh, number, run_count, 7, 8, 9, 0.5F), 0U);
    EXPECT_NE(add_vertex0(mesh, number, run_count, 0, 1, 2, 0.5F), 0U);
    number = 0;
    EXPECT_NE(add_vertex(mesh, number, run_count, 0, 1, 2, 0.5F, 0.5F), 0U);
    del_elements(mesh, 0, 0, strip_place_t::at_end);
    EXPECT_EQ(marks.beginning_with(""),
              (std::vector<std::string>{"add_vertex0(start)", "add_vertex0(start)", "add_vertex0(1)",
                                        "add_vertex(start)", "add_vertex(1)", "del_elements()"}));
}

}  // namespace
