#pragma once

#include <cstdint>

#include "dialogs/texts/text_page.h"

namespace ulk3d {

class ViewArea;
class polygon_t;

/// One attribute of all vertices of a polygon model as text, a line for each vertex (formats/record_text.h).
///
/// OK and Apply write the text into the model's array and tell nobody: what is derived from it follows with
/// the model's next update, and no step of undo is made.
class VertexDialog : public Gtk::Dialog {
  public:
    /// `group` is the index of the model's array, `member` that of the attribute in its element list. The
    /// model and the view area are not owned and outlive the dialog.
    VertexDialog(std::uint64_t group, std::uint64_t member, polygon_t& polygon, const Glib::ustring& title,
                 Gtk::Window& window, ViewArea& viewarea);
    ~VertexDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    text_page_t page;
    std::uint64_t group;
    std::uint64_t member;
    polygon_t& polygon;
    ViewArea& viewarea;
};

}  // namespace ulk3d
