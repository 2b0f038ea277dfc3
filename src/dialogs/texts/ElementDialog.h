#pragma once

#include "dialogs/texts/text_page.h"

namespace ulk3d {

class ViewArea;
class polygon_t;

/// The strips of a polygon model as text, an index on each line (formats/record_text.h).
///
/// OK and Apply write the text into the model. The ids of its polygons and the marks on them stay as they
/// were until something rebuilds the model.
class ElementDialog : public Gtk::Dialog {
  public:
    /// The model and the view area are not owned and outlive the dialog.
    ElementDialog(polygon_t& polygon, const Glib::ustring& title, Gtk::Window& window, ViewArea& viewarea);
    ~ElementDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    text_page_t page;
    polygon_t& polygon;
    ViewArea& viewarea;
};

}  // namespace ulk3d
