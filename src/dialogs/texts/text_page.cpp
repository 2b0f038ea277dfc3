#include "dialogs/texts/text_page.h"

#include <atkmm/object.h>

namespace ulk3d {

void text_page_t::put_into(Gtk::Dialog& dialog, const Glib::ustring& text) {
    text_view.get_buffer()->set_text(text);
    text_view.get_accessible()->set_name(dialog.get_title());
    scrolled_window.add(text_view);
    dialog.get_content_area()->pack_start(scrolled_window, Gtk::PACK_EXPAND_WIDGET);
    dialog.set_size_request(640, 480);
}

}  // namespace ulk3d
