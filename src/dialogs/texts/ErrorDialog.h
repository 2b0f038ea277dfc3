#pragma once

#include "dialogs/texts/text_page.h"

namespace ulk3d {

/// Shows a block of text that is too long for a message box: the reader's messages about a file that did not
/// open. Modal; the caller runs it. The text can be edited, without any effect.
class ErrorDialog : public Gtk::Dialog {
  public:
    ErrorDialog(const Glib::ustring& text, const Glib::ustring& title, Gtk::Window& parent);
    ~ErrorDialog() override = default;

  private:
    text_page_t page;
};

}  // namespace ulk3d
