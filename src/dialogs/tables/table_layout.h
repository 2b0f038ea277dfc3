#pragma once

#include <algorithm>
#include <cstdint>

#include "dialogs/tables/table_lines.h"

/// Where the cells of the table dialogs are in their tables, in rows and columns. Tables of nets are laid out
/// as the net appears in the front view: rows from the bottom up, columns from the left. Cells are numbered
/// in the order in which Tab visits them.
namespace ulk3d {

/// The most rows and the most columns of a table, so that their pixels fit into 31 bits; further cells of
/// larger tables have no place.
inline constexpr std::uint64_t most_table_lines = 4'000'000;

/// A block of table cells; right and bottom are exclusive.
struct table_place_t {
    unsigned left = 0, right = 0, top = 0, bottom = 0;
    bool operator==(const table_place_t&) const = default;
};

/// The table of a control net. Each point has a block two columns wide: on the left a check button, on the
/// right the numbers one above the other, below both a separator.
struct net_layout_t {
    net_layout_t(std::uint64_t columns, std::uint64_t rows, unsigned numbers)
        : net_columns(static_cast<unsigned>(std::min(columns, most_table_lines / 2))),
          net_rows(static_cast<unsigned>(std::min(rows, most_table_lines / (numbers + 1)))),
          numbers_of_point(numbers) {}

    unsigned table_columns() const { return net_columns * 2; }
    unsigned table_rows() const { return net_rows * block_height(); }
    table_lines_t column_lines() const { return {table_columns(), 0, 2}; }
    table_lines_t row_lines() const { return {table_rows(), 0, block_height()}; }

    std::uint64_t cells() const { return std::uint64_t{net_columns} * net_rows; }
    /// The cell that covers a place of the table.
    std::uint64_t cell_at(unsigned left, unsigned top_line) const {
        return std::uint64_t{net_rows - 1 - top_line / block_height()} * net_columns + left / 2;
    }
    unsigned column_of(std::uint64_t cell) const { return static_cast<unsigned>(cell % net_columns); }
    unsigned row_of(std::uint64_t cell) const { return static_cast<unsigned>(cell / net_columns); }

    table_place_t check(unsigned column, unsigned row) const {
        return {2 * column, 2 * column + 1, top(row), top(row) + numbers_of_point};
    }
    table_place_t number(unsigned column, unsigned row, unsigned n) const {
        return {2 * column + 1, 2 * column + 2, top(row) + n, top(row) + n + 1};
    }
    table_place_t separator(unsigned column, unsigned row) const {
        return {2 * column, 2 * column + 2, top(row) + numbers_of_point, top(row) + block_height()};
    }

    unsigned net_columns, net_rows;  ///< of the net, as far as it fits into the table
    unsigned numbers_of_point;

  private:
    unsigned block_height() const { return numbers_of_point + 1; }
    unsigned top(unsigned row) const { return (net_rows - row - 1) * block_height(); }
};

/// The table of a model's option table: row by row from the bottom up, or, if `upright`, each row in a column
/// of its own with its values from the bottom up. A view button is before or above each row.
struct option_layout_t {
    option_layout_t(std::uint64_t model_rows, std::uint64_t model_columns, bool with_views, bool is_upright)
        : has_views(with_views),
          upright(is_upright),
          rows(static_cast<unsigned>(std::min(model_rows, most_table_lines))),
          columns(static_cast<unsigned>(std::min(model_columns, most_table_lines - (with_views ? 1 : 0)))) {}

    unsigned table_columns() const { return upright ? rows : length(); }
    unsigned table_rows() const { return upright ? length() : rows; }
    table_lines_t column_lines() const { return {table_columns(), upright ? 0 : views(), 1}; }
    table_lines_t row_lines() const { return {table_rows(), upright ? views() : 0, 1, row_spacing}; }

    /// Each row's view button is the cell before its values.
    std::uint64_t cells() const { return std::uint64_t{rows} * length(); }
    /// The cell that covers a place of the table.
    std::uint64_t cell_at(unsigned left, unsigned top) const {
        if (!upright)
            return std::uint64_t{rows - 1 - top} * length() + left;
        return std::uint64_t{left} * length() + (top < views() ? 0 : length() - 1 - top + views());
    }
    unsigned row_of(std::uint64_t cell) const { return static_cast<unsigned>(cell / length()); }
    bool is_view(std::uint64_t cell) const { return cell % length() < views(); }
    /// Which element of its row a cell is that is no view button.
    unsigned element_of(std::uint64_t cell) const { return static_cast<unsigned>(cell % length()) - views(); }

    /// The place of element `element` of the model's row `row`.
    table_place_t value(unsigned row, unsigned element) const {
        return upright ? at(row, length() - 1 - element) : at(length() - columns + element, rows - 1 - row);
    }
    /// The place of a row's view button.
    table_place_t view(unsigned row) const { return upright ? at(row, 0) : at(0, rows - 1 - row); }

    bool has_views, upright;
    unsigned rows, columns;  ///< of the model's table, as far as it fits

  private:
    static constexpr int row_spacing = 2;

    unsigned views() const { return has_views ? 1 : 0; }
    unsigned length() const { return columns + views(); }
    static table_place_t at(unsigned left, unsigned top) { return {left, left + 1, top, top + 1}; }
};

}  // namespace ulk3d
