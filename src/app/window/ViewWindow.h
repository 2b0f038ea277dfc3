#pragma once

#include <gtkmm/box.h>
#include <gtkmm/window.h>

#include <cstdint>
#include <string>
#include <vector>

#include "app/window/ViewArea.h"
#include "app/window/ViewIconButtons.h"
#include "app/window/ViewMenuBar.h"
#include "app/window/event_pace.h"
#include "dialogs/tables/OptionArrayDialog.h"

namespace ulk3d {

/// The main window: menu bar, toolbar row and view area, and every command that needs a dialog.
///
/// It owns no models. Each command that changes the scene's list of models also updates the menu bar's copy
/// of it here.
class ViewWindow : public Gtk::Window {
  public:
    /// `argv0` gives the name for the title and the program's directory.
    explicit ViewWindow(const char* argv0);
    ~ViewWindow() override = default;

    // Commands of the menus.
    void on_file_open();
    void on_file_save_as();
    void on_file_save_model_as();
    void on_quit();
    void on_add_polygon();
    void on_add_nurbs();
    void on_delete_model();
    void on_polygonize();
    void on_select_model(std::uint64_t index);
    void on_environment_dialog();
    void on_option_dialog();
    void on_point_dialog();
    void on_color_dialog();
    void on_weight_dialog();
    void on_hknot_dialog();
    void on_vknot_dialog();
    void on_vertex_dialog();
    void on_vertex_color_dialog();
    void on_texcoord_dialog();
    void on_tangent_dialog();
    void on_binormal_dialog();
    void on_normal_dialog();
    void on_element_dialog();
    void on_fullscreen();
    void on_maximize();
    void on_cut_model();
    void on_fold_execute();  ///< the toolbar's fold button

    /// Receives how much of a cut is done: moves the bar and handles the window's events. When the user quits
    /// meanwhile, it ends the process in the middle of the cut.
    void on_cut_progress(double fraction);

    /// Puts the file name from a path, and the program's name, into the window title.
    void set_file_title(const std::string& path);

    ViewArea& area() { return viewarea; }

  protected:
    /// Passes keys that no widget takes on to the view.
    bool on_key_press_event(GdkEventKey* event) override;
    bool on_key_release_event(GdkEventKey* event) override;
    /// Keys that are released while another window has the keyboard are not heard here.
    bool on_focus_out_event(GdkEventFocus* event) override;

    // Files that are dragged over the window and dropped there. Nothing is taken while a cut is running or a
    // dialog is open.
    bool on_drag_motion(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y, guint time) override;
    bool on_drag_drop(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y, guint time) override;
    void on_drag_data_received(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y,
                               const Gtk::SelectionData& data, guint info, guint time) override;

  private:
    /// Whether files that are dropped now would be taken.
    bool takes_files() const;
    /// Opens dropped files, unless a cut or a dialog has begun since.
    void open_dropped(const std::vector<std::string>& paths);
    /// Opens one file after the other, each as the command of the menu does.
    void open_files(const std::vector<std::string>& paths);
    /// Shows a file that was opened, or the messages of one that was not.
    void show_opened(const std::string& path, bool opened, const std::string& errors);

    /// The current model when it is of the given kind, else null.
    const model_entry_t* current_of_kind(model_kind_t kind) const;
    /// Runs the dialog of the current model's settings; returns whether OK or Apply was pressed.
    bool run_settings_dialog();
    /// Edits an attribute of the current model's vertices or control points in a dialog.
    void run_vertex_dialog(attribute_t attribute, const char* title);
    void run_array_dialog(attribute_t attribute, const char* title);
    /// Edits an option table of the current model in a dialog, when that is a NURBS model.
    void run_option_array_dialog(const OptionArrayDialog::form_t& form, const char* title);

    /// Shows the current model in the title; the program's name alone when there is none.
    void set_model_title();
    void rebuild_model_menu();
    void copy_models_to_menu();
    void show_error(const Glib::ustring& text, const char* title);

    std::string title_base;
    bool fullscreen_on = false;
    bool maximized_on = false;
    event_pace_t cut_pace;
    double cut_fraction = 0;
    Gtk::VBox vbox{false, 0};
    ViewMenuBar menubar;
    ViewIconButtons iconbuttons;
    ViewArea viewarea;
};

}  // namespace ulk3d
