#include "dialogs/tables/ArrayDialogColor.h"

namespace ulk3d {

namespace {

constexpr array_dialog_kind_t color_kind{colour_form, {0.0, 255.0, 1.0, 8.0, 0}, {"r", "g", "b", "a"}};

}  // namespace

ArrayDialogColor::ArrayDialogColor(const array_dialog_target_t& edited, const Glib::ustring& title,
                                   Gtk::Window& window)
    : ArrayDialog(color_kind, edited, title, window) {}

}  // namespace ulk3d
