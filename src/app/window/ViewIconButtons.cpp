#include "app/window/ViewIconButtons.h"

#include <atkmm/object.h>

#include <algorithm>

#include "app/window/ViewWindow.h"

namespace ulk3d {

ViewIconButtons::ViewIconButtons() : Gtk::HBox(false, 0) {
    // Names for screen readers, for controls that show no text of their own.
    grid_step_spin.get_accessible()->set_name("方眼間隔");
    fold_angle_spin.get_accessible()->set_name("折曲角度");
    progress.get_accessible()->set_name("カットの進行状況");
}

void ViewIconButtons::build(ViewWindow& window) {
    control_points_button.set_active(true);
    grid_button.set_active(true);
    Gtk::RadioButton::Group group = selection_radio.get_group();
    for (Gtk::RadioButton* radio : {&punish_radio, &clipping_radio, &folding_radio})
        radio->set_group(group);

    // Connected only now, as the view already has the values set above. The snap step shown is 0.10, but the
    // view does not snap until the user changes it.
    connect(window);

    for (Gtk::Widget* control : std::initializer_list<Gtk::Widget*>{
             &control_points_button, &grid_button, &grid_step_spin, &selection_radio, &punish_radio,
             &clipping_radio, &folding_radio, &fold_angle_spin, &fold_button})
        control->set_can_focus(false);
    for (Gtk::Widget* control : std::initializer_list<Gtk::Widget*>{
             &control_points_button, &grid_button, &grid_step_spin, &selection_radio, &punish_radio,
             &clipping_radio, &folding_radio, &fold_angle_label, &fold_angle_spin, &fold_button, &progress})
        pack_start(*control, Gtk::PACK_SHRINK, 0);
}

void ViewIconButtons::connect(ViewWindow& window) {
    ViewArea& area = window.area();
    control_points_button.signal_clicked().connect(
        [this, &area] { area.set_control_points(control_points_button.get_active()); });
    grid_button.signal_clicked().connect([this, &area] { area.set_grid(grid_button.get_active()); });
    grid_step_spin.signal_value_changed().connect(
        [this, &area] { area.set_grid_step(grid_step_spin.get_value()); });
    fold_angle_spin.signal_value_changed().connect(
        [this, &area] { area.set_fold_angle(fold_angle_spin.get_value()); });
    fold_button.signal_clicked().connect(sigc::mem_fun(window, &ViewWindow::on_fold_execute));

    // The radio button that is switched off emits the signal too; it then sets nothing.
    const auto sets_mode = [&area](Gtk::RadioButton& radio, void (ViewArea::*set_mode)()) {
        radio.signal_toggled().connect([&area, &radio, set_mode] {
            if (radio.get_active())
                (area.*set_mode)();
        });
    };
    sets_mode(selection_radio, &ViewArea::set_selection_mode);
    sets_mode(punish_radio, &ViewArea::set_punish_mode);
    sets_mode(clipping_radio, &ViewArea::set_clipping_mode);
    sets_mode(folding_radio, &ViewArea::set_folding_mode);
}

void ViewIconButtons::set_progress(double fraction) {
    progress.set_fraction(std::min(fraction, 1.0));
    progress.queue_draw();
}

}  // namespace ulk3d
