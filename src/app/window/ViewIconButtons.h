#pragma once

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/progressbar.h>
#include <gtkmm/radiobutton.h>
#include <gtkmm/togglebutton.h>

#include "dialogs/controls/number_spin.h"

namespace ulk3d {

class ViewWindow;

/// The row under the menu bar: display switches, the snap step, the mode of the mouse, the fold, and the
/// progress of a cut. None of its controls takes the focus, so that keys reach the view.
///
/// The row passes every change on to the view; the view never changes the row.
class ViewIconButtons : public Gtk::HBox {
  public:
    ViewIconButtons();
    ~ViewIconButtons() override = default;

    /// Packs the controls and connects them to the window; call once.
    void build(ViewWindow& window);

    /// Shows how far a cut has come, from 0 to 1; anything above is a full bar. The bar keeps its last value.
    void set_progress(double fraction);

  private:
    void connect(ViewWindow& window);

    Gtk::ToggleButton control_points_button{"制御点表示", false};
    Gtk::ToggleButton grid_button{"方眼表示", false};
    number_spin_t grid_step_spin{{0.0, 10.0, 0.05, 1.0, 2}, 0.1};
    Gtk::RadioButton selection_radio{"制御点選択", false};
    Gtk::RadioButton punish_radio{"ぷにぷに", false};
    Gtk::RadioButton clipping_radio{"折曲ポリゴン選択", false};
    Gtk::RadioButton folding_radio{"折目頂点選択1,0", false};
    Gtk::Label fold_angle_label{"折曲角度：", false};
    number_spin_t fold_angle_spin{{-180.0, 180.0, 1.0, 15.0, 0}, 0.0};
    Gtk::Button fold_button{"折曲実行", false};
    Gtk::ProgressBar progress;
};

}  // namespace ulk3d
