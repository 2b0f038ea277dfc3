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
    run_array_dialog(attribute_t::position, "制御点");
}

void ViewWindow::on_color_dialog() {
    run_array_dialog(attribute_t::color, "RGBAカラー一覧");
}

void ViewWindow::on_weight_dialog() {
    run_option_array_dialog({weights, false, false}, "重み付け一覧");
}

void ViewWindow::on_hknot_dialog() {
    run_option_array_dialog({horizontal_knots, true, false}, "横ノット列一覧");
}

void ViewWindow::on_vknot_dialog() {
    run_option_array_dialog({vertical_knots, true, true}, "縦ノット列一覧");
}

void ViewWindow::run_array_dialog(attribute_t attribute, const char* title) {
    const model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
    if (entry == nullptr)
        return;
    const net_table_t shown =
        viewarea.with_gl_unseen([&](ulkedit_t& editor) { return editor.net_table(attribute); });
    const auto apply = [&](std::span<const number_row_t> points) {
        viewarea.with_input_gl([&](ulkedit_t& editor) { editor.set_net_table(attribute, points); });
    };
    open_array_dialog(tabulated_kind(entry->nurbs, attribute), shown, apply, title, *this);
}

void ViewWindow::run_option_array_dialog(const OptionArrayDialog::form_t& form, const char* title) {
    if (current_of_kind(model_kind_t::nurbs) == nullptr)
        return;
    const option_table_t shown =
        viewarea.with_gl_unseen([&](ulkedit_t& editor) { return editor.option_table(form.index); });
    const auto apply = [&](const matrix_t<float>& values) {
        viewarea.with_input_gl([&](ulkedit_t& editor) { editor.set_option_table(form.index, values); });
    };
    OptionArrayDialog dialog(*this, form, shown, apply, title, viewarea.scene().shader_folder());
    run_until_closed(dialog);
}

}  // namespace ulk3d
