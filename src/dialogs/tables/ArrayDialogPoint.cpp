#include "dialogs/tables/ArrayDialogPoint.h"

namespace ulk3d {

namespace {

constexpr array_dialog_kind_t point_kind{position_form, {-100.0, 100.0, 0.1, 1.0, 7}, {"x", "y", "z"}};

}  // namespace

ArrayDialogPoint::ArrayDialogPoint(const array_dialog_target_t& edited, const Glib::ustring& title,
                                   Gtk::Window& window)
    : ArrayDialog(point_kind, edited, title, window) {}

}  // namespace ulk3d
