#include "app/window/ViewMenuBar.h"

#include <gtkmm/main.h>

#include <iterator>

#include "app/window/ViewWindow.h"
#include "dialogs/controls/system_text.h"
#include "utils/text/numbers.h"

namespace ulk3d {

ViewMenuBar::ViewMenuBar(ViewWindow& commands) : window(commands) {}

void ViewMenuBar::build() {
    fill(file_menu, {{"_Open", &ViewWindow::on_file_open},
                     {"Save_As", &ViewWindow::on_file_save_as},
                     {"Save_CurrentModelAs", &ViewWindow::on_file_save_model_as},
                     {"e_Xit", &ViewWindow::on_quit, true}});
    fill(edit_menu, {{"Add _Polygon", &ViewWindow::on_add_polygon},
                     {"Add _Nurbs", &ViewWindow::on_add_nurbs},
                     {"_Delete current Model", &ViewWindow::on_delete_model},
                     {"Polygoni_ze", &ViewWindow::on_polygonize},
                     {"_Cut the Model", &ViewWindow::on_cut_model}});
    select_model_item.set_submenu(model_menu);
    edit_menu.append(select_model_item);
    fill(nurbs_dialog_menu, {{"Env_ironmentDialog", &ViewWindow::on_environment_dialog},
                             {"_PointDialog", &ViewWindow::on_point_dialog},
                             {"_ColorDialog", &ViewWindow::on_color_dialog},
                             {"_WeightDialog", &ViewWindow::on_weight_dialog},
                             {"_Horizontal KnotDialog", &ViewWindow::on_hknot_dialog},
                             {"_Vertical KnotDialog", &ViewWindow::on_vknot_dialog},
                             {"_OptionDialog", &ViewWindow::on_option_dialog}});
    fill(polygon_dialog_menu, {{"Env_ironmentDialog", &ViewWindow::on_environment_dialog},
                               {"_VertexDialog", &ViewWindow::on_vertex_dialog},
                               {"_ColorDialog", &ViewWindow::on_vertex_color_dialog},
                               {"Te_xCoordDialog", &ViewWindow::on_texcoord_dialog},
                               {"_Tangent(X軸法線)Dialog", &ViewWindow::on_tangent_dialog},
                               {"_Binormal(Y軸法線)Dialog", &ViewWindow::on_binormal_dialog},
                               {"_Normal(Z軸法線)Dialog", &ViewWindow::on_normal_dialog},
                               {"_ElementDialog", &ViewWindow::on_element_dialog},
                               {"_OptionDialog", &ViewWindow::on_option_dialog}});
    fill(view_menu,
         {{"_FullScreen", &ViewWindow::on_fullscreen, true}, {"_Maximize", &ViewWindow::on_maximize, true}});

    file_item.set_submenu(file_menu);
    edit_item.set_submenu(edit_menu);
    view_item.set_submenu(view_menu);
    for (Gtk::MenuItem* item : {&file_item, &edit_item, &dialog_item, &view_item})
        append(*item);

    // Alt with a letter opens a menu, which then receives the release of Alt instead of the window. If it
    // were lost, the view would take the next drag for a camera move.
    for (Gtk::Menu* menu :
         {&file_menu, &edit_menu, &view_menu, &nurbs_dialog_menu, &polygon_dialog_menu, &model_menu})
        menu->signal_key_release_event().connect(
            [this](GdkEventKey* event) { return window.area().key_release(*event); });
}

void ViewMenuBar::fill(Gtk::Menu& menu, std::initializer_list<menu_row_t> rows) {
    for (const menu_row_t& row : rows) {
        auto* item = Gtk::make_managed<Gtk::MenuItem>(row.label, true);
        item->signal_activate().connect([this, row] {
            if (row.works_during_cut || !window.area().scene().cut_is_running())
                (window.*row.command)();
            else
                window.error_bell();
        });
        menu.append(*item);
    }
    menu.show_all_children(true);
}

void ViewMenuBar::set_dialog_menu(bool empty, model_kind_t kind) {
    if (empty)
        dialog_item.unset_submenu();
    else if (kind == model_kind_t::polygon)
        dialog_item.set_submenu(polygon_dialog_menu);
    else if (kind == model_kind_t::nurbs)
        dialog_item.set_submenu(nurbs_dialog_menu);
}

void ViewMenuBar::rebuild_model_menu(bool empty, model_kind_t kind, std::uint64_t current_index) {
    set_dialog_menu(empty, kind);
    for (Gtk::MenuItem& item : model_items)
        model_menu.remove(item);
    retired_items = std::move(model_items);
    model_items.clear();

    std::uint64_t index = 0;
    for (const model_row_t& row : model_list) {
        Gtk::MenuItem& item = model_items.emplace_back(row_label(row, index, index == current_index), true);
        item.signal_activate().connect([this, index] {
            if (!window.area().scene().cut_is_running())
                window.on_select_model(index);
            else
                window.error_bell();
        });
        model_menu.append(item);
        ++index;
    }
    show_all_children(true);
    model_menu.show_all_children(true);
}

Glib::ustring ViewMenuBar::row_label(const model_row_t& row, std::uint64_t index, bool is_current) const {
    // The text shows which model is current, so that no check item is needed.
    std::string label = is_current ? "v _" : "  _";
    libutils::append_number(label, index);
    if (row.kind == model_kind_t::polygon)
        label += " Polygon ";
    else if (row.kind == model_kind_t::nurbs)
        label += " Nurbs ";
    for (const char c : row.name) {
        label += c;
        if (c == '_')
            label += c;  // doubled, as a single one would make a mnemonic
    }
    return widget_text(label);
}

void ViewMenuBar::add_polygon_row() {
    model_list.push_back({model_kind_t::polygon, {}});
}

void ViewMenuBar::add_nurbs_row() {
    model_list.push_back({model_kind_t::nurbs, {}});
}

bool ViewMenuBar::remove_row(std::uint64_t index) {
    if (index >= model_list.size())
        return false;
    model_list.erase(std::next(model_list.begin(), static_cast<std::ptrdiff_t>(index)));
    return true;
}

void ViewMenuBar::copy_rows(const model_list_t& models) {
    model_list.clear();
    for (const auto& entry : models) {
        model_list.push_back({entry->kind, entry->modeling().name});
    }
}

}  // namespace ulk3d
