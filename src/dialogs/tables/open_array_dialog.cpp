#include "dialogs/tables/open_array_dialog.h"

#include "dialogs/controls/dialog_answers.h"

namespace ulk3d {

void open_array_dialog(std::optional<e_type_t> kind, const net_table_t& shown,
                       const ArrayDialog::apply_t& apply, const Glib::ustring& title, Gtk::Window& window) {
    if (kind == e_type_t::Position) {
        ArrayDialogPoint dialog(shown, apply, title, window);
        run_until_closed(dialog);
    } else if (kind == e_type_t::RGBA) {
        ArrayDialogColor dialog(shown, apply, title, window);
        run_until_closed(dialog);
    }
}

}  // namespace ulk3d
