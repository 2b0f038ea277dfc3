#pragma once

#include <optional>

#include "dialogs/tables/ArrayDialog.h"
#include "render/gl/element.h"

namespace ulk3d {

/// Shows one attribute of all control points of a model in a table until the dialog is closed: positions in
/// an ArrayDialogPoint, colours in an ArrayDialogColor. Opens nothing for an attribute of another kind.
void open_array_dialog(std::optional<e_type_t> kind, const net_table_t& shown,
                       const ArrayDialog::apply_t& apply, const Glib::ustring& title, Gtk::Window& window);

}  // namespace ulk3d
