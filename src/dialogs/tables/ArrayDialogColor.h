#pragma once

#include "dialogs/tables/ArrayDialog.h"

namespace ulk3d {

/// The table of the control points' colours: red, green, blue and alpha of each point, 0 to 255.
class ArrayDialogColor : public ArrayDialog {
  public:
    ArrayDialogColor(const array_dialog_target_t& target, const Glib::ustring& title, Gtk::Window& window);
    ~ArrayDialogColor() override = default;
};

}  // namespace ulk3d
