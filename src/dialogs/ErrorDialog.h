#pragma once

#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>

namespace ulk3d {

/// Shows a block of text that is too long for a message box: what the reader said of a file that did not
/// open. Modal; the caller runs it. The text can be edited, and edits go nowhere.
class ErrorDialog : public Gtk::Dialog {
  public:
    ErrorDialog(const Glib::ustring& text, const Glib::ustring& title, Gtk::Window& parent);
    ~ErrorDialog() override = default;

  private:
    Gtk::ScrolledWindow scrolled_window;
    Gtk::TextView text_view;
};

}  // namespace ulk3d
