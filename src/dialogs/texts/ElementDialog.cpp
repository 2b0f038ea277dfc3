#include "dialogs/texts/ElementDialog.h"

#include "app/window/ViewArea.h"
#include "dialogs/controls/dialog_answers.h"
#include "formats/record_text.h"

namespace ulk3d {

ElementDialog::ElementDialog(polygon_t& model, const Glib::ustring& title, Gtk::Window& window,
                             ViewArea& area)
    : Gtk::Dialog(title, window, true), polygon(model), viewarea(area) {
    viewarea.make_current();
    page.put_into(*this, index_text(polygon.elements));
    add_answer_buttons(*this);
    show_all_children(true);
}

void ElementDialog::on_response(int answer) {
    Gtk::Dialog::on_response(answer);
    if (!writes_back(answer))
        return;
    viewarea.make_current();
    store_index_text(polygon.elements, page.text());
}

}  // namespace ulk3d
