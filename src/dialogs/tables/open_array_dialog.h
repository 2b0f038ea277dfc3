#pragma once

#include <gtkmm/window.h>

#include <cstdint>

namespace ulk3d {

class edit_history_t;
class glpolygon_t;
class nurbs_t;
class ViewArea;

/// Edits one attribute of all control points of a model in a table, until the dialog is closed: positions in
/// an ArrayDialogPoint, colours in an ArrayDialogColor. `element` is the index of the model's array, `member`
/// that of the attribute in its records. For an attribute of another kind nothing opens, and the line
/// "elements.type (KIND) not handled." goes to the standard error stream.
void open_array_dialog(std::uint32_t element, std::uint32_t member, glpolygon_t& gl, nurbs_t& nurbs,
                       edit_history_t& history, const Glib::ustring& title, Gtk::Window& window,
                       ViewArea& viewarea);

}  // namespace ulk3d
