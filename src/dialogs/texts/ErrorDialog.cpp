#include "dialogs/texts/ErrorDialog.h"

#include <gtkmm/stock.h>

namespace ulk3d {

ErrorDialog::ErrorDialog(const Glib::ustring& text, const Glib::ustring& title, Gtk::Window& parent)
    : Gtk::Dialog(title, parent, true) {
    page.put_into(*this, text);
    add_button(Gtk::Stock::OK, Gtk::RESPONSE_OK);
    show_all_children(true);
}

}  // namespace ulk3d
