#include "app/window/ViewWindow.h"

#include <gdk/gdkkeysyms.h>
#include <glibmm/exceptionhandler.h>
#include <gtkmm/main.h>
#include <gtkmm/messagedialog.h>

#include <cstdlib>

#include "app/editor/program_path.h"
#include "dialogs/controls/system_text.h"
#include "model/try_allocate.h"
#include "utils/memory/alloc_mmap_win.h"
#include "utils/text/paths.h"

namespace ulk3d {

namespace {

void show_last_message(const char* message) {
    Gtk::MessageDialog dialog(widget_text(message), false, Gtk::MESSAGE_ERROR, Gtk::BUTTONS_OK, true);
    dialog.set_title("Error");
    dialog.run();
}

/// Where a callback of the toolkit runs out of memory before it comes to the editor, or behind it: the
/// toolkit would end the process.
void tell_out_of_memory() {
    try_command("ulkedit", [] { throw; });
}

}  // namespace

ViewWindow::ViewWindow(const char* argv0)
    : Gtk::Window(Gtk::WINDOW_TOPLEVEL), title_base(program_title(argv0)), menubar(*this), viewarea(argv0) {
    viewarea.set_size_request(1024, 768);
    menubar.build();
    menubar.set_dialog_menu(true, model_kind_t::polygon);
    vbox.pack_start(menubar, Gtk::PACK_SHRINK);
    iconbuttons.build(*this);
    vbox.pack_start(iconbuttons, Gtk::PACK_SHRINK);
    vbox.pack_start(viewarea, Gtk::PACK_EXPAND_WIDGET);
    add(vbox);
    drag_dest_set({Gtk::TargetEntry("text/uri-list")}, Gtk::DestDefaults(0), Gdk::ACTION_COPY);
    show_all_children(true);
    libutils::show_before_the_end(show_last_message);
    [[maybe_unused]] static const sigc::connection told =
        Glib::add_exception_handler(sigc::ptr_fun(tell_out_of_memory));
}

void ViewWindow::on_quit() {
    Gtk::Main::quit();
}

void ViewWindow::on_delete_model() {
    viewarea.delete_current();
    // The row removed is the one at the index that is current now: after the last of several models was
    // deleted that is the new last one, and the deleted model's row stays until the rows are copied again.
    if (menubar.remove_row(viewarea.scene().current_index()))
        rebuild_model_menu();
    set_model_title();
}

void ViewWindow::on_polygonize() {
    viewarea.polygonize_current();
    copy_models_to_menu();
}

void ViewWindow::on_select_model(std::uint64_t index) {
    viewarea.select_model(index);
    copy_models_to_menu();
    set_model_title();
}

void ViewWindow::on_fullscreen() {
    if (fullscreen_on)
        unfullscreen();
    else
        fullscreen();
    fullscreen_on = !fullscreen_on;
}

void ViewWindow::on_maximize() {
    if (maximized_on)
        unmaximize();
    else
        maximize();
    maximized_on = !maximized_on;
}

void ViewWindow::on_cut_model() {
    viewarea.cut_current(sigc::mem_fun(*this, &ViewWindow::on_cut_progress));
    iconbuttons.set_progress(cut_fraction);
    Gtk::MessageDialog dialog(*this, "ポリゴンの自動カットが終了しました。", false, Gtk::MESSAGE_INFO,
                              Gtk::BUTTONS_OK, true);
    dialog.set_title("ポリゴン編集");
    dialog.run();
}

void ViewWindow::on_cut_progress(double fraction) {
    cut_fraction = fraction;
    const auto begin = event_pace_t::clock::now();
    if (!cut_pace.due(begin))
        return;
    iconbuttons.set_progress(fraction);
    while (Gtk::Main::events_pending())
        if (Gtk::Main::iteration(false))
            std::exit(EXIT_SUCCESS);
    // A repaint among these events may have made another context current.
    viewarea.make_current();
    cut_pace.handled(begin, event_pace_t::clock::now());
}

void ViewWindow::on_fold_execute() {
    if (!viewarea.fold())
        show_error("折り畳みに失敗しました.\n折目頂点を選択していないものと思われます.", "折り畳みエラー");
}

bool ViewWindow::on_key_press_event(GdkEventKey* event) {
    // The toolkit's window passes every Return to its default widget, even when it has none; in the view
    // Return fits the scene.
    const bool is_for_nobody =
        event->keyval == GDK_KEY_Return && get_focus() == nullptr && get_default_widget() == nullptr;
    return (!is_for_nobody && Gtk::Window::on_key_press_event(event)) || viewarea.key_press(*event);
}

bool ViewWindow::on_key_release_event(GdkEventKey* event) {
    return Gtk::Window::on_key_release_event(event) || viewarea.key_release(*event);
}

bool ViewWindow::on_focus_out_event(GdkEventFocus* event) {
    viewarea.forget_keys();
    return Gtk::Window::on_focus_out_event(event);
}

void ViewWindow::set_file_title(const std::string& path) {
    libutils::path_parts_t parts;
    libutils::splitpath(path.c_str(), parts);
    set_title(widget_text(std::string(parts.name) + parts.extension + " - " + title_base));
}

void ViewWindow::set_model_title() {
    const model_entry_t* entry = viewarea.scene().current_model();
    if (entry == nullptr)
        set_title(widget_text(title_base));
    else
        set_file_title(entry->modeling().name);
}

void ViewWindow::rebuild_model_menu() {
    const ulkedit_t& scene = viewarea.scene();
    const model_entry_t* entry = scene.current_model();
    menubar.rebuild_model_menu(scene.models().empty(), entry == nullptr ? model_kind_t::polygon : entry->kind,
                               scene.current_index());
}

void ViewWindow::copy_models_to_menu() {
    menubar.copy_rows(viewarea.scene().models());
    rebuild_model_menu();
}

void ViewWindow::show_error(const Glib::ustring& text, const char* title) {
    Gtk::MessageDialog dialog(*this, text, false, Gtk::MESSAGE_ERROR, Gtk::BUTTONS_OK, true);
    dialog.set_title(title);
    dialog.run();
}

}  // namespace ulk3d
