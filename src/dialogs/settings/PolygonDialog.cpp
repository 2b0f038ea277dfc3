#include "dialogs/settings/PolygonDialog.h"

#include "app/window/ViewArea.h"
#include "dialogs/controls/dialog_answers.h"

namespace ulk3d {

namespace {

constexpr double most_records = 1048576;

}  // namespace

PolygonDialog::PolygonDialog(model_entry_t& model, const Glib::ustring& title, Gtk::Window& window,
                             ViewArea& area)
    : Gtk::Dialog(title, window, true),
      entry(model),
      viewarea(area),
      names(names_of(model.polygon, model.texture)),
      vertices(most_records, model.polygon.vertex_count()),
      elements(most_records, model.polygon.element_count()) {
    Gtk::Box& box = *get_content_area();
    names.add_name_to(box);
    add_labelled(vertex_row, "頂点数", vertices);
    add_labelled(element_row, "エレメント数", elements);
    box.pack_start(vertex_row, Gtk::PACK_SHRINK);
    box.pack_start(element_row, Gtk::PACK_SHRINK);
    names.add_maps_to(box);
    add_answer_buttons(*this);
    show_all_children(true);
}

void PolygonDialog::on_response(int answer) {
    Gtk::Dialog::on_response(answer);
    if (!writes_back(answer))
        return;
    finish_typing(*this);
    viewarea.make_current();
    set_polygon_settings(entry, {names.names(), vertices.count(), elements.count()});
    viewarea.redraw();
}

}  // namespace ulk3d
