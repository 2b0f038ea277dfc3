#pragma once

#include "dialogs/tables/ArrayDialog.h"

namespace ulk3d {

/// The table of the control points' positions: three numbers to a point.
class ArrayDialogPoint : public ArrayDialog {
  public:
    ArrayDialogPoint(const array_dialog_target_t& target, const Glib::ustring& title, Gtk::Window& window);
    ~ArrayDialogPoint() override = default;
};

}  // namespace ulk3d
