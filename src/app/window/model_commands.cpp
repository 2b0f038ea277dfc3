// The commands of ViewWindow that make models and edit their settings and texts in dialogs.

#include "app/window/ViewWindow.h"
#include "dialogs/controls/dialog_answers.h"
#include "dialogs/settings/EnvDialog.h"
#include "dialogs/settings/NurbsDialog.h"
#include "dialogs/settings/PolygonDialog.h"
#include "dialogs/texts/ElementDialog.h"
#include "dialogs/texts/VertexDialog.h"

namespace ulk3d {

namespace {

constexpr const char* polygon_title = "ポリゴン設定";
constexpr const char* nurbs_title = "NURBS設定";

/// Runs a dialog of settings; whether OK or Apply was pressed.
bool was_applied(Gtk::Dialog& dialog) {
    bool applied = false;
    run_until_closed(dialog, [&](int answer) { applied |= writes_back(answer); });
    return applied;
}

}  // namespace

model_entry_t* ViewWindow::current_of_kind(std::uint32_t kind) {
    model_entry_t* const entry = viewarea.editor().current_model();
    return entry != nullptr && entry->kind == kind ? entry : nullptr;
}

bool ViewWindow::run_settings_dialog(model_entry_t& entry) {
    if (entry.kind == kind_polygon) {
        PolygonDialog dialog(entry, polygon_title, *this, viewarea);
        return was_applied(dialog);
    }
    if (entry.kind == kind_nurbs) {
        NurbsDialog dialog(entry, nurbs_title, *this, viewarea);
        return was_applied(dialog);
    }
    return false;
}

void ViewWindow::on_add_polygon() {
    viewarea.add_polygon();
    menubar.add_polygon_row();
    rebuild_model_menu();
    model_entry_t* const entry = current_of_kind(kind_polygon);
    if (entry != nullptr && run_settings_dialog(*entry)) {
        set_model_title();
        return;
    }
    viewarea.delete_current();
    menubar.remove_row(viewarea.scene().current_index());
    rebuild_model_menu();
}

void ViewWindow::on_add_nurbs() {
    viewarea.add_nurbs();
    menubar.add_nurbs_row();
    rebuild_model_menu();
    model_entry_t* const entry = current_of_kind(kind_nurbs);
    if (entry != nullptr && run_settings_dialog(*entry)) {
        set_model_title();
        return;
    }
    // Here the menu goes first, unlike with a polygon model: its row is the one that is current before.
    menubar.remove_row(viewarea.scene().current_index());
    rebuild_model_menu();
    viewarea.delete_current();
}

void ViewWindow::on_option_dialog() {
    if (model_entry_t* const entry = viewarea.editor().current_model())
        run_settings_dialog(*entry);
}

void ViewWindow::on_environment_dialog() {
    // The map lies where a scene file would name it: beside the file of the current model.
    const model_entry_t* const entry = viewarea.scene().current_model();
    const modeling_t* const model = entry == nullptr ? nullptr : modeling_of(*entry);
    const std::string base = model == nullptr ? std::string() : model->name;
    EnvDialog dialog(viewarea.editor().environment(), base.empty() ? nullptr : base.c_str(), "環境設定",
                     *this, viewarea);
    run_until_closed(dialog);
}

void ViewWindow::run_vertex_dialog(std::uint64_t group, std::uint64_t member, const char* title) {
    model_entry_t* const entry = current_of_kind(kind_polygon);
    if (entry == nullptr)
        return;
    VertexDialog dialog(group, member, entry->polygon, title, *this, viewarea);
    run_until_closed(dialog, [this](int) { viewarea.redraw(); });
}

void ViewWindow::on_vertex_dialog() {
    run_vertex_dialog(0, 0, "頂点設定");
}

void ViewWindow::on_vertex_color_dialog() {
    run_vertex_dialog(0, 1, "カラー設定");
}

void ViewWindow::on_texcoord_dialog() {
    run_vertex_dialog(0, 2, "テクスチャ座標設定");
}

void ViewWindow::on_tangent_dialog() {
    run_vertex_dialog(1, 0, "tangent(X軸法線)設定");
}

void ViewWindow::on_binormal_dialog() {
    run_vertex_dialog(1, 1, "binormal(Y軸法線)設定");
}

void ViewWindow::on_normal_dialog() {
    run_vertex_dialog(1, 2, "normal(Z軸法線)設定");
}

void ViewWindow::on_element_dialog() {
    model_entry_t* const entry = current_of_kind(kind_polygon);
    if (entry == nullptr)
        return;
    ElementDialog dialog(entry->polygon, "エレメント設定", *this, viewarea);
    run_until_closed(dialog, [this](int) { viewarea.redraw(); });
}

}  // namespace ulk3d
