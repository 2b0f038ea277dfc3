// The commands of ViewWindow that edit the control net and the option tables of a NURBS model.

#include "app/window/ViewWindow.h"
#include "dialogs/controls/dialog_answers.h"
#include "dialogs/tables/OptionArrayDialog.h"
#include "dialogs/tables/open_array_dialog.h"

namespace ulk3d {

namespace {

enum : std::uint32_t { horizontal_knots = 0, vertical_knots = 1, weights = 2 };

}  // namespace

void ViewWindow::on_point_dialog() {
    run_array_dialog(0, "制御点");
}

void ViewWindow::on_color_dialog() {
    run_array_dialog(1, "RGBAカラー一覧");
}

void ViewWindow::on_weight_dialog() {
    run_option_array_dialog(weights, "重み付け一覧", false, false);
}

void ViewWindow::on_hknot_dialog() {
    run_option_array_dialog(horizontal_knots, "横ノット列一覧", true, false);
}

void ViewWindow::on_vknot_dialog() {
    run_option_array_dialog(vertical_knots, "縦ノット列一覧", true, true);
}

void ViewWindow::run_array_dialog(std::uint32_t member, const char* title) {
    ulkedit_t& editor = viewarea.editor();
    if (model_entry_t* const entry = editor.current_model())
        open_array_dialog(0, member, editor.polygon_programs(), entry->nurbs, entry->history, title, *this,
                          viewarea);
}

void ViewWindow::run_option_array_dialog(std::uint32_t index, const char* title, bool has_views,
                                         bool upright) {
    model_entry_t* const entry = current_of_kind(kind_nurbs);
    if (entry == nullptr)
        return;
    OptionArrayDialog dialog(*this, index, viewarea.editor().polygon_programs(), entry->nurbs, title,
                             viewarea, has_views, upright);
    run_until_closed(dialog);
}

}  // namespace ulk3d
