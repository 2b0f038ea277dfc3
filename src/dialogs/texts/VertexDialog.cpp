#include "dialogs/texts/VertexDialog.h"

#include "app/window/ViewArea.h"
#include "dialogs/controls/dialog_answers.h"
#include "formats/record_text.h"

namespace ulk3d {

VertexDialog::VertexDialog(std::uint64_t array_index, std::uint64_t attribute, polygon_t& model,
                           const Glib::ustring& title, Gtk::Window& window, ViewArea& area)
    : Gtk::Dialog(title, window, true),
      group(array_index),
      member(attribute),
      polygon(model),
      viewarea(area) {
    viewarea.make_current();
    const array_t* const array = polygon.array(static_cast<std::uint32_t>(group));
    page.put_into(*this, array == nullptr ? std::string() : member_text(*array, member));
    add_answer_buttons(*this);
    show_all_children(true);
}

void VertexDialog::on_response(int answer) {
    Gtk::Dialog::on_response(answer);
    if (!writes_back(answer))
        return;
    viewarea.make_current();
    if (array_t* const array = polygon.array(static_cast<std::uint32_t>(group)))
        store_member_text(*array, member, page.text());
}

}  // namespace ulk3d
