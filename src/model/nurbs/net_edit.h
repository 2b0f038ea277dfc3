#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "render/gl/element.h"

namespace ulk3d {

class edit_history_t;
class modeling_t;

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

/// The kind of member `member` of the records of a model's array, when it is one that a table can show:
/// Position or RGBA. Any other prints "elements.type (KIND) not handled." on the standard error stream. None
/// for an array or a member that the model does not have. An array that nothing was stored in yet has the
/// members of a control point.
std::optional<e_type_t> tabulated_kind(const modeling_t& model, std::uint32_t array, std::uint32_t member);

/// A row of the table: a point, whether it is marked, and the numbers of its attribute.
struct number_row_t {
    std::uint64_t point = 0;
    bool selected = false;
    std::array<double, 4> numbers{};
};

enum class table_change_t {
    none,
    selection,  ///< marks alone
    values,     ///< values, and maybe marks
};

/// Fills the rows of the points that they name from member `member` of the records of array `array`. A point
/// that the model does not have is unmarked, and its numbers stay. A GL context must be current.
void read_rows(const modeling_t& model, std::uint32_t array, std::uint32_t member, const number_form_t& form,
               std::span<number_row_t> rows);

/// Writes a table back: marks and unmarks points, stores the values of the attribute that differ, tells the
/// model of each changed record after all of them were written, and then pushes one edit with the replaced
/// values on the history. The edit is pushed without any value, too, when only marks have changed; nothing is
/// pushed when nothing has. Rows of points that the model does not have are passed over. A GL context must be
/// current.
table_change_t write_rows(modeling_t& model, edit_history_t& history, std::uint32_t array,
                          std::uint32_t member, const number_form_t& form,
                          std::span<const number_row_t> rows);

}  // namespace ulk3d
