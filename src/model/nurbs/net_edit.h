#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "model/attributes.h"
#include "model/edit_history.h"
#include "model/matrix.h"

namespace ulk3d {

class modeling_t;
class nurbs_t;

/// How a table shows one attribute of a model's records as numbers, and reads it back.
struct number_form_t {
    std::uint32_t components;       ///< numbers for each point, 3 or 4
    double (*shown)(float);         ///< converts a stored value to the number shown
    float (*stored)(double);        ///< converts a number to the value to store
    bool (*is_same)(float, float);  ///< whether a value counts as unchanged
};

/// Positions, shown as they are; values within the tolerance of the model code are the same.
extern const number_form_t position_form;

/// Colours in bytes, 0 to 255. Values are compared exactly, so a channel that is not a whole number of bytes
/// counts as changed when it is written back.
extern const number_form_t colour_form;

/// The kind of an attribute of a model's points if a table can show it, that is Position or RGBA; any other
/// prints "elements.type (KIND) not handled." on the standard error stream. Empty for an attribute that the
/// model does not have. An array that has never been allocated is taken to have the members of a control
/// point.
std::optional<e_type_t> tabulated_kind(const modeling_t& model, attribute_t attribute);

/// One row of the table: a point, whether it is selected, and the numbers of its attribute.
struct number_row_t {
    std::uint64_t point = 0;
    bool selected = false;
    std::array<double, 4> numbers{};
};

/// A net as a table: its points, row by row.
struct net_table_t {
    std::uint64_t columns = 0, rows = 0;
    std::vector<number_row_t> points;
};

/// Reads the whole net with the numbers of an attribute. A GL context must be current.
net_table_t read_net(const nurbs_t& nurbs, attribute_t attribute);

/// How a table shows an attribute: colours in bytes, all others as they are.
const number_form_t& form_of(attribute_t attribute);

/// An option table of a model, and which basis functions belong to the knots of a row of it.
struct option_table_t {
    matrix_t<float> values;
    std::uint64_t order = 0, count = 0;
};

/// Option table `index` of a NURBS model; an empty one where there is none.
option_table_t read_option(const nurbs_t& nurbs, std::uint32_t index);
/// Stores the values that differ and returns whether any did. Entries that `values` does not have stay.
[[nodiscard]] bool write_option(nurbs_t& nurbs, std::uint32_t index, const matrix_t<float>& values);

/// What writing a table back has changed in a model.
struct table_change_t {
    bool selection = false;
    edit_t edit;          ///< the values that were replaced
    bool failed = false;  ///< the values can not be mapped, or a point not marked; see `write_rows`

    bool has_values() const { return !edit.points.empty(); }
    explicit operator bool() const { return selection || has_values(); }
};

/// Fills in rows: reads an attribute of the points that they name. A point that the model does not have is
/// unselected, and its numbers stay. A GL context must be current.
void read_rows(const modeling_t& model, attribute_t attribute, const number_form_t& form,
               std::span<number_row_t> rows);

/// Writes a table back: selects and unselects points, stores the values of the attribute that differ, and
/// then notifies the model of each changed record. Rows of points that the model does not have are skipped.
/// Where it fails nothing has changed, or only a part when there is no memory to mark a point. A GL context
/// must be current.
[[nodiscard]] table_change_t write_rows(modeling_t& model, attribute_t attribute, const number_form_t& form,
                                        std::span<const number_row_t> rows);

}  // namespace ulk3d
