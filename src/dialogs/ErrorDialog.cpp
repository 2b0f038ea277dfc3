#include "dialogs/ErrorDialog.h"

#include <gtkmm/stock.h>

namespace ulk3d {

ErrorDialog::ErrorDialog(const Glib::ustring& text, const Glib::ustring& title, Gtk::Window& parent)
    : Gtk::Dialog(title, parent, true) {
    text_view.get_buffer()->set_text(text);
    scrolled_window.add(text_view);
    get_content_area()->pack_start(scrolled_window, Gtk::PACK_EXPAND_WIDGET);
    set_size_request(640, 480);
    add_button(Gtk::Stock::OK, Gtk::RESPONSE_OK);
    show_all_children(true);
}

}  // namespace ulk3d
