#include "dialogs/settings/PolygonDialog.h"

#include <utility>

#include "dialogs/controls/dialog_answers.h"

namespace ulk3d {

namespace {

constexpr double most_records = 1048576;

}  // namespace

PolygonDialog::PolygonDialog(const polygon_settings_t& shown, apply_t apply_settings,
                             const Glib::ustring& title, Gtk::Window& window)
    : Gtk::Dialog(title, window, true),
      apply(std::move(apply_settings)),
      names(shown.names),
      vertices(most_records, shown.vertex_count),
      elements(most_records, shown.element_count) {
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
    apply({names.names(), vertices.count(), elements.count()});
}

}  // namespace ulk3d
