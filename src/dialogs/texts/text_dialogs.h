#pragma once

#include <functional>
#include <string>

#include "dialogs/texts/text_page.h"

namespace ulk3d {

/// A text that OK and Apply hand over, each time as it is then.
class ApplyTextDialog : public Gtk::Dialog {
  public:
    using apply_t = std::function<void(std::string text)>;

    ApplyTextDialog(const std::string& shown, apply_t apply, const Glib::ustring& title, Gtk::Window& window);
    ~ApplyTextDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    text_page_t page;
    apply_t apply;
};

/// One attribute of all vertices of a polygon model as text, one line for each vertex
/// (formats/record_text.h).
///
/// OK and Apply write the text into the model's array and change nothing else: what is derived from it
/// follows with the model's next update, and there is no step of undo.
class VertexDialog : public ApplyTextDialog {
  public:
    using ApplyTextDialog::ApplyTextDialog;
    ~VertexDialog() override = default;
};

/// The strips of a polygon model as text, one index on each line (formats/record_text.h).
///
/// OK and Apply write the text into the model. The ids of its polygons, and which of them are selected, stay
/// as they were until something rebuilds the model.
class ElementDialog : public ApplyTextDialog {
  public:
    using ApplyTextDialog::ApplyTextDialog;
    ~ElementDialog() override = default;
};

}  // namespace ulk3d
