#pragma once

#include <gtkmm/menu.h>
#include <gtkmm/menubar.h>
#include <gtkmm/menuitem.h>

#include <cstdint>
#include <initializer_list>
#include <list>
#include <string>

#include "model/scene.h"

namespace ulk3d {

class ViewWindow;

/// The menus of the window. Every item runs a command of ViewWindow. Two submenus follow the scene: "_Select
/// Model..." lists the models, and "_Dialog" is swapped according to the kind of the current model.
///
/// The list of models is a copy of the scene's, and it changes only when the window says so.
class ViewMenuBar : public Gtk::MenuBar {
  public:
    explicit ViewMenuBar(ViewWindow& commands);
    ~ViewMenuBar() override = default;

    /// Makes the fixed items and connects them; call once.
    void build();

    /// Attaches the "_Dialog" submenu for the kind of the current model, or none when the scene is empty.
    void set_dialog_menu(bool empty, model_kind_t kind);

    /// Calls set_dialog_menu, and rebuilds the list of models with "v " before the current one.
    void rebuild_model_menu(bool empty, model_kind_t kind, std::uint64_t current_index);

    /// Edits of the copied list; no menu changes before the next rebuild.
    void add_polygon_row();
    void add_nurbs_row();
    bool remove_row(std::uint64_t index);  ///< false when there is no such row
    void copy_rows(const model_list_t& models);

  private:
    struct model_row_t {
        model_kind_t kind;
        std::string name;
    };

    struct menu_row_t {
        const char* label;  ///< with mnemonic
        void (ViewWindow::*command)();
        /// The window stays usable while a cut is running; until its end, commands that would interfere do
        /// nothing.
        bool works_during_cut = false;
    };

    void fill(Gtk::Menu& menu, std::initializer_list<menu_row_t> rows);
    Glib::ustring row_label(const model_row_t& row, std::uint64_t index, bool is_current) const;

    Gtk::Menu file_menu, edit_menu, view_menu;
    Gtk::Menu nurbs_dialog_menu, polygon_dialog_menu;
    Gtk::Menu model_menu;
    Gtk::MenuItem file_item{"_File", true}, edit_item{"_Edit", true};
    Gtk::MenuItem dialog_item{"_Dialog", true}, view_item{"_View", true};
    Gtk::MenuItem select_model_item{"_Select Model...", true};
    std::list<Gtk::MenuItem> model_items;    ///< the items of model_menu
    std::list<Gtk::MenuItem> retired_items;  ///< those before: the command of one of them may be running
    std::list<model_row_t> model_list;
    ViewWindow& window;
};

}  // namespace ulk3d
