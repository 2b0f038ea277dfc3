// The commands of ViewWindow that make models and edit their settings and texts in dialogs.

#include "app/window/ViewWindow.h"
#include "dialogs/controls/dialog_answers.h"
#include "dialogs/settings/EnvDialog.h"
#include "dialogs/settings/NurbsDialog.h"
#include "dialogs/settings/PolygonDialog.h"
#include "dialogs/texts/text_dialogs.h"

namespace ulk3d {

namespace {

constexpr const char* polygon_title = "ポリゴン設定";
constexpr const char* nurbs_title = "NURBS設定";

/// Runs a settings dialog; returns whether OK or Apply was pressed.
bool was_applied(Gtk::Dialog& dialog) {
    bool applied = false;
    run_until_closed(dialog, [&](int answer) { applied |= writes_back(answer); });
    return applied;
}

}  // namespace

const model_entry_t* ViewWindow::current_of_kind(model_kind_t kind) const {
    const model_entry_t* const entry = viewarea.scene().current_model();
    return entry != nullptr && entry->kind == kind ? entry : nullptr;
}

bool ViewWindow::run_settings_dialog() {
    if (const model_entry_t* const entry = current_of_kind(model_kind_t::polygon)) {
        const auto apply = [this](const polygon_settings_t& settings) {
            viewarea.with_gl([&](ulkedit_t& editor) { editor.set_polygon(settings); });
        };
        PolygonDialog dialog(polygon_settings(*entry), apply, polygon_title, *this);
        return was_applied(dialog);
    }
    if (const model_entry_t* const entry = current_of_kind(model_kind_t::nurbs)) {
        const auto apply = [this](const nurbs_settings_t& settings) {
            viewarea.with_input_gl([&](ulkedit_t& editor) { editor.set_nurbs(settings); });
        };
        NurbsDialog dialog(nurbs_settings(*entry), apply, nurbs_title, *this);
        return was_applied(dialog);
    }
    return false;
}

void ViewWindow::on_add_polygon() {
    // Without a new model the dialog would change another one.
    if (!viewarea.add_polygon())
        return;
    menubar.add_polygon_row();
    rebuild_model_menu();
    if (run_settings_dialog()) {
        set_model_title();
        return;
    }
    viewarea.delete_current();
    menubar.remove_row(viewarea.scene().current_index());
    rebuild_model_menu();
}

void ViewWindow::on_add_nurbs() {
    if (!viewarea.add_nurbs())
        return;
    menubar.add_nurbs_row();
    rebuild_model_menu();
    if (run_settings_dialog()) {
        set_model_title();
        return;
    }
    // Here the menu is updated first, unlike for a polygon model: its row is the one that is current before
    // the deletion.
    menubar.remove_row(viewarea.scene().current_index());
    rebuild_model_menu();
    viewarea.delete_current();
}

void ViewWindow::on_option_dialog() {
    run_settings_dialog();
}

void ViewWindow::on_environment_dialog() {
    const auto apply = [this](const environment_settings_t& settings) {
        viewarea.with_gl([&](ulkedit_t& editor) { editor.set_environment(settings); });
    };
    EnvDialog dialog(environment_settings(viewarea.scene().environment()), apply, "環境設定", *this);
    run_until_closed(dialog);
}

void ViewWindow::run_vertex_dialog(attribute_t attribute, const char* title) {
    if (current_of_kind(model_kind_t::polygon) == nullptr)
        return;
    const std::string shown =
        viewarea.with_gl_unseen([&](ulkedit_t& editor) { return editor.vertex_text(attribute); });
    const auto apply = [&](std::string text) {
        viewarea.with_gl([&](ulkedit_t& editor) { editor.set_vertex_text(attribute, std::move(text)); });
    };
    VertexDialog dialog(shown, apply, title, *this);
    run_until_closed(dialog, [this](int) { viewarea.redraw(); });
}

void ViewWindow::on_vertex_dialog() {
    run_vertex_dialog(attribute_t::position, "頂点設定");
}

void ViewWindow::on_vertex_color_dialog() {
    run_vertex_dialog(attribute_t::color, "カラー設定");
}

void ViewWindow::on_texcoord_dialog() {
    run_vertex_dialog(attribute_t::texcoord, "テクスチャ座標設定");
}

void ViewWindow::on_tangent_dialog() {
    run_vertex_dialog(attribute_t::tangent, "tangent(X軸法線)設定");
}

void ViewWindow::on_binormal_dialog() {
    run_vertex_dialog(attribute_t::binormal, "binormal(Y軸法線)設定");
}

void ViewWindow::on_normal_dialog() {
    run_vertex_dialog(attribute_t::normal, "normal(Z軸法線)設定");
}

void ViewWindow::on_element_dialog() {
    if (current_of_kind(model_kind_t::polygon) == nullptr)
        return;
    const std::string shown =
        viewarea.with_gl_unseen([](ulkedit_t& editor) { return editor.element_text(); });
    const auto apply = [this](std::string text) {
        viewarea.with_gl([&](ulkedit_t& editor) { editor.set_element_text(std::move(text)); });
    };
    ElementDialog dialog(shown, apply, "エレメント設定", *this);
    run_until_closed(dialog, [this](int) { viewarea.redraw(); });
}

}  // namespace ulk3d
