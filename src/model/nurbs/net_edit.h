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

/// How a table of numbers shows one attribute of a model's records, and takes it back.
struct number_form_t {
    std::uint32_t components;       ///< numbers to an attribute, 3 or 4
    double (*shown)(float);         ///< the number for a stored value
    float (*stored)(double);        ///< the value for a number
    bool (*is_same)(float, float);  ///< whether a value counts as unchanged
};

/// Positions, as they are; values within the tolerance of the model code are the same.
extern const number_form_t position_form;

/// Colours in bytes, 0 to 255. Values are compared exactly, so a channel that is no whole byte counts as
/// changed when it comes back.
extern const number_form_t colour_form;

/// The kind of an attribute of a model's points, when it is one that a table can show: Position or RGBA. Any
/// other prints "elements.type (KIND) not handled." on the standard error stream. None for an attribute that
/// the model does not have. An array that nothing was stored in yet has the members of a control point.
std::optional<e_type_t> tabulated_kind(const modeling_t& model, attribute_t attribute);

/// A row of the table: a point, whether it is selected, and the numbers of its attribute.
struct number_row_t {
    std::uint64_t point = 0;
    bool selected = false;
    std::array<double, 4> numbers{};
};

/// A net as a table: its points row by row.
struct net_table_t {
    std::uint64_t columns = 0, rows = 0;
    std::vector<number_row_t> points;
};

/// The whole net with the numbers of an attribute. A GL context must be current.
net_table_t read_net(const nurbs_t& nurbs, attribute_t attribute);

/// How a table shows the numbers of an attribute: colours in bytes, others as they are.
const number_form_t& form_of(attribute_t attribute);

/// An option table of a model, and the basis functions that a row of it has the knots of.
struct option_table_t {
    matrix_t<float> values;
    std::uint64_t order = 0, count = 0;
};

/// Option table `index` of a NURBS model; an empty one where there is none.
option_table_t read_option(const nurbs_t& nurbs, std::uint32_t index);
/// Stores the values that differ; whether any does. Numbers that the table does not have stay.
bool write_option(nurbs_t& nurbs, std::uint32_t index, const matrix_t<float>& values);

/// What a table has changed in a model.
struct table_change_t {
    bool selection = false;
    edit_t edit;  ///< the values that were replaced

    bool has_values() const { return !edit.points.empty(); }
    explicit operator bool() const { return selection || has_values(); }
};

/// Fills the rows of the points that they name from an attribute of the model. A point that the model does
/// not have is unselected, and its numbers stay. A GL context must be current.
void read_rows(const modeling_t& model, attribute_t attribute, const number_form_t& form,
               std::span<number_row_t> rows);

/// Writes a table back: selects and unselects points, stores the values of the attribute that differ, and
/// then tells the model of each changed record. Rows of points that the model does not have are passed over.
/// A GL context must be current.
[[nodiscard]] table_change_t write_rows(modeling_t& model, attribute_t attribute, const number_form_t& form,
                                        std::span<const number_row_t> rows);

}  // namespace ulk3d
