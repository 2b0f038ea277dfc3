#include "dialogs/settings/NurbsDialog.h"

#include <utility>

#include "dialogs/controls/dialog_answers.h"

namespace ulk3d {

namespace {

constexpr double highest = 1025;

}  // namespace

NurbsDialog::NurbsDialog(const nurbs_settings_t& shown, apply_t apply_settings, const Glib::ustring& title,
                         Gtk::Window& window)
    : Gtk::Dialog(title, window, true),
      apply(std::move(apply_settings)),
      names(shown.names),
      count1(highest, shown.count1),
      count2(highest, shown.count2),
      order1(highest, shown.order1),
      order2(highest, shown.order2),
      resolution1(highest, shown.resolution1),
      resolution2(highest, shown.resolution2) {
    Gtk::Box& box = *get_content_area();
    names.add_name_to(box);
    add_labelled(count_row, "X制御点数", count1);
    add_labelled(count_row, "Y制御点数", count2);
    add_labelled(order_row, "X階数(次数+1)", order1);
    add_labelled(order_row, "Y階数(次数+1)", order2);
    add_labelled(resolution_row, "X解像度:", resolution1);
    add_labelled(resolution_row, "Y解像度:", resolution2);
    for (Gtk::HBox* row : {&count_row, &order_row, &resolution_row})
        box.pack_start(*row, Gtk::PACK_SHRINK);
    names.add_maps_to(box);
    add_answer_buttons(*this);
    show_all_children(true);
}

void NurbsDialog::on_response(int answer) {
    Gtk::Dialog::on_response(answer);
    if (!writes_back(answer))
        return;
    finish_typing(*this);
    apply({names.names(), count1.count(), count2.count(), order1.count(), order2.count(), resolution1.count(),
           resolution2.count()});
}

}  // namespace ulk3d
