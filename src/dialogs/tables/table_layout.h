#pragma once

#include <algorithm>
#include <cstdint>

/// Where the cells of the table dialogs are in their Gtk::Table. Tables of nets are laid out as the net
/// appears in the front view: rows from the bottom up, columns from the left.
namespace ulk3d {

/// The most rows and the most columns of a Gtk::Table; further cells of larger tables have no place.
inline constexpr std::uint64_t most_table_lines = 65535;

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

    /// The place of element `element` of the model's row `row`.
    table_place_t value(unsigned row, unsigned element) const {
        return upright ? at(row, length() - 1 - element) : at(length() - columns + element, rows - 1 - row);
    }
    /// The place of a row's view button.
    table_place_t view(unsigned row) const { return upright ? at(row, 0) : at(0, rows - 1 - row); }

    bool has_views, upright;
    unsigned rows, columns;  ///< of the model's table, as far as it fits

  private:
    unsigned length() const { return columns + (has_views ? 1 : 0); }
    static table_place_t at(unsigned left, unsigned top) { return {left, left + 1, top, top + 1}; }
};

}  // namespace ulk3d
