#include "dialogs/tables/table_layout.h"

#include <gtest/gtest.h>

#include <vector>

namespace ulk3d {

static void PrintTo(const table_place_t& place, std::ostream* os) {
    *os << "columns " << place.left << " to " << place.right << ", rows " << place.top << " to "
        << place.bottom;
}

namespace {

TEST(NetLayout, ThreeColumnsAndTwoRowsOfPointsMakeATableOfSixByEight) {
    const net_layout_t layout(3, 2, 3);
    EXPECT_EQ(layout.table_columns(), 6U);
    EXPECT_EQ(layout.table_rows(), 8U);
}

TEST(NetLayout, PointZeroStandsAtTheBottomLeft) {
    const net_layout_t layout(3, 2, 3);
    EXPECT_EQ(layout.check(0, 0), (table_place_t{0, 1, 4, 7}));
    EXPECT_EQ(layout.number(0, 0, 0), (table_place_t{1, 2, 4, 5}));
    EXPECT_EQ(layout.number(0, 0, 1), (table_place_t{1, 2, 5, 6}));
    EXPECT_EQ(layout.number(0, 0, 2), (table_place_t{1, 2, 6, 7}));
    EXPECT_EQ(layout.separator(0, 0), (table_place_t{0, 2, 7, 8}));
}

TEST(NetLayout, TheLastPointStandsAtTheTopRight) {
    const net_layout_t layout(3, 2, 3);
    EXPECT_EQ(layout.check(2, 1), (table_place_t{4, 5, 0, 3}));
    EXPECT_EQ(layout.number(2, 1, 2), (table_place_t{5, 6, 2, 3}));
    EXPECT_EQ(layout.separator(2, 1), (table_place_t{4, 6, 3, 4}));
}

TEST(NetLayout, FourNumbersMakeBlocksOfFiveRowsWithTheSeparatorInTheLast) {
    const net_layout_t layout(3, 2, 4);
    EXPECT_EQ(layout.table_rows(), 10U);
    EXPECT_EQ(layout.check(1, 0), (table_place_t{2, 3, 5, 9}));
    EXPECT_EQ(layout.number(1, 0, 3), (table_place_t{3, 4, 8, 9}));
    EXPECT_EQ(layout.separator(1, 0), (table_place_t{2, 4, 9, 10}));
}

/// How often each cell of a table is covered by places.
class coverage_t {
  public:
    coverage_t(unsigned table_columns, unsigned table_rows)
        : columns(table_columns), counts(std::size_t{table_columns} * table_rows) {}
    void add(const table_place_t& place) {
        for (unsigned y = place.top; y < place.bottom; ++y)
            for (unsigned x = place.left; x < place.right; ++x)
                ++counts.at(std::size_t{y} * columns + x);
    }
    bool is_once_everywhere() const { return counts == std::vector<int>(counts.size(), 1); }

  private:
    unsigned columns;
    std::vector<int> counts;
};

TEST(NetLayout, TheBlocksOfANetCoverItsTableOnce) {
    const net_layout_t layout(4, 3, 4);
    coverage_t coverage(layout.table_columns(), layout.table_rows());
    for (unsigned row = 0; row < 3; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            coverage.add(layout.check(column, row));
            for (unsigned n = 0; n < 4; ++n)
                coverage.add(layout.number(column, row, n));
            coverage.add(layout.separator(column, row));
        }
    }
    EXPECT_TRUE(coverage.is_once_everywhere());
}

TEST(NetLayout, PointsBeyondTheLinesOfATableHaveNoPlace) {
    const net_layout_t wide(1'000'000'000, 1, 3);
    EXPECT_EQ(wide.net_columns, 2'000'000U);
    EXPECT_EQ(wide.table_columns(), 4'000'000U);
    const net_layout_t high(1, std::uint64_t{1} << 40, 4);
    EXPECT_EQ(high.net_rows, 800'000U);
    EXPECT_EQ(high.table_rows(), 4'000'000U);
}

TEST(NetLayout, CellsAreThePointsInTheirOrder) {
    const net_layout_t layout(3, 2, 3);
    EXPECT_EQ(layout.cells(), 6U);
    for (unsigned row = 0; row < 2; ++row) {
        for (unsigned column = 0; column < 3; ++column) {
            const std::uint64_t cell = row * 3 + column;
            EXPECT_EQ(layout.column_of(cell), column);
            EXPECT_EQ(layout.row_of(cell), row);
            for (const table_place_t& place :
                 {layout.check(column, row), layout.number(column, row, 2), layout.separator(column, row)})
                EXPECT_EQ(layout.cell_at(place.left, place.top), cell);
        }
    }
}

TEST(OptionLayout, RowsStandFromTheBottomUp) {
    const option_layout_t weights(2, 3, false, false);
    EXPECT_EQ(weights.table_columns(), 3U);
    EXPECT_EQ(weights.table_rows(), 2U);
    EXPECT_EQ(weights.value(0, 0), (table_place_t{0, 1, 1, 2}));
    EXPECT_EQ(weights.value(0, 2), (table_place_t{2, 3, 1, 2}));
    EXPECT_EQ(weights.value(1, 0), (table_place_t{0, 1, 0, 1}));
}

TEST(OptionLayout, ViewButtonsStandLeftOfTheRows) {
    const option_layout_t knots(2, 5, true, false);
    EXPECT_EQ(knots.table_columns(), 6U);
    EXPECT_EQ(knots.table_rows(), 2U);
    EXPECT_EQ(knots.view(0), (table_place_t{0, 1, 1, 2}));
    EXPECT_EQ(knots.view(1), (table_place_t{0, 1, 0, 1}));
    EXPECT_EQ(knots.value(0, 0), (table_place_t{1, 2, 1, 2}));
    EXPECT_EQ(knots.value(1, 4), (table_place_t{5, 6, 0, 1}));
}

TEST(OptionLayout, UprightRowsHaveIndexZeroAtTheBottomAndTheViewButtonAtTheTop) {
    const option_layout_t knots(3, 5, true, true);
    EXPECT_EQ(knots.table_columns(), 3U);
    EXPECT_EQ(knots.table_rows(), 6U);
    EXPECT_EQ(knots.view(2), (table_place_t{2, 3, 0, 1}));
    EXPECT_EQ(knots.value(2, 0), (table_place_t{2, 3, 5, 6}));
    EXPECT_EQ(knots.value(0, 4), (table_place_t{0, 1, 1, 2}));
}

TEST(OptionLayout, TheCellsCoverTheTableOnce) {
    for (const bool has_views : {false, true}) {
        for (const bool upright : {false, true}) {
            const option_layout_t layout(4, 7, has_views, upright);
            coverage_t coverage(layout.table_columns(), layout.table_rows());
            for (unsigned row = 0; row < 4; ++row) {
                if (has_views)
                    coverage.add(layout.view(row));
                for (unsigned element = 0; element < 7; ++element)
                    coverage.add(layout.value(row, element));
            }
            EXPECT_TRUE(coverage.is_once_everywhere()) << has_views << upright;
        }
    }
}

TEST(OptionLayout, ElementsBeyondTheLinesOfATableHaveNoPlace) {
    const option_layout_t layout(5'000'000, 5'000'000, true, true);
    EXPECT_EQ(layout.table_columns(), 4'000'000U);
    EXPECT_EQ(layout.table_rows(), 4'000'000U);
    EXPECT_EQ(layout.columns, 3'999'999U);
}

TEST(OptionLayout, CellsAreTheRowsFromTheFirstEachBehindItsViewButton) {
    for (const bool has_views : {false, true}) {
        for (const bool upright : {false, true}) {
            const option_layout_t layout(4, 7, has_views, upright);
            std::uint64_t cell = 0;
            for (unsigned row = 0; row < 4; ++row) {
                if (has_views) {
                    EXPECT_TRUE(layout.is_view(cell));
                    EXPECT_EQ(layout.row_of(cell), row);
                    EXPECT_EQ(layout.cell_at(layout.view(row).left, layout.view(row).top), cell++);
                }
                for (unsigned element = 0; element < 7; ++element) {
                    EXPECT_FALSE(layout.is_view(cell));
                    EXPECT_EQ(layout.row_of(cell), row);
                    EXPECT_EQ(layout.element_of(cell), element);
                    const table_place_t place = layout.value(row, element);
                    EXPECT_EQ(layout.cell_at(place.left, place.top), cell++);
                }
            }
            EXPECT_EQ(layout.cells(), cell);
        }
    }
}

void expect_lines(const table_lines_t& lines, unsigned count, unsigned blocks) {
    EXPECT_EQ(lines.lines(), count);
    EXPECT_EQ(lines.blocks(), blocks);
}

TEST(TableLayout, LinesComeInTheBlocksOfTheCells) {
    expect_lines(net_layout_t(3, 2, 3).column_lines(), 6, 3);
    expect_lines(net_layout_t(3, 2, 3).row_lines(), 8, 2);
    expect_lines(option_layout_t(2, 5, true, false).column_lines(), 6, 6);
    expect_lines(option_layout_t(2, 5, true, true).row_lines(), 6, 6);

    // The line of view buttons has a size of its own.
    table_lines_t columns = option_layout_t(2, 5, true, false).column_lines();
    columns.fit(0, 100);
    columns.fit(1, 10);
    EXPECT_EQ(columns.least(), 150);
    table_lines_t rows = option_layout_t(2, 5, true, true).row_lines();
    rows.fit(0, 100);
    rows.fit(1, 10);
    EXPECT_EQ(rows.least(), 150 + 5 * 2);
    table_lines_t all_alike = option_layout_t(2, 5, true, true).column_lines();
    all_alike.fit(0, 10);
    EXPECT_EQ(all_alike.least(), 20);
}

}  // namespace
}  // namespace ulk3d
