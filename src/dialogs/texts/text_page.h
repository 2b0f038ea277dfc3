#pragma once

#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>

#include <string>

namespace ulk3d {

/// The text that fills a dialog, with scroll bars; it can be edited. For screen readers it has the name of
/// the dialog.
class text_page_t {
  public:
    /// Puts the page into a dialog, which then has a size of 640 by 480 pixels.
    void put_into(Gtk::Dialog& dialog, const Glib::ustring& text);

    /// The text as it is now, including hidden characters.
    std::string text() const { return text_view.get_buffer()->get_text(true).raw(); }

  private:
    Gtk::ScrolledWindow scrolled_window;
    Gtk::TextView text_view;
};

}  // namespace ulk3d
