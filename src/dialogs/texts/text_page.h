#pragma once

#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>

#include <string>

namespace ulk3d {

/// The text that fills a dialog, with scroll bars; it can be edited. Those who hear the dialog hear it called
/// like the dialog.
class text_page_t {
  public:
    /// Puts the page into a dialog, whose size is then 640 by 480.
    void put_into(Gtk::Dialog& dialog, const Glib::ustring& text);

    /// The text as it stands now, hidden characters included.
    std::string text() const { return text_view.get_buffer()->get_text(true).raw(); }

  private:
    Gtk::ScrolledWindow scrolled_window;
    Gtk::TextView text_view;
};

}  // namespace ulk3d
