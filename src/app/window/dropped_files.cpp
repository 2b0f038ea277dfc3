// Files that are dragged over ViewWindow and dropped there.

#include <glibmm/convert.h>
#include <glibmm/main.h>
#include <gtkmm/main.h>

#include "app/window/ViewWindow.h"

namespace ulk3d {

namespace {

/// The path of a file of this machine; for anything else its name as it is, which no file has.
std::string path_of(const std::string& uri) {
    try {
        return Glib::filename_from_uri(uri);
    } catch (const Glib::Error&) {
        return uri;
    }
}

}  // namespace

bool ViewWindow::takes_files() const {
    // A dialog, or an open menu, has a grab.
    return gtk_grab_get_current() == nullptr && !viewarea.scene().cut_is_running();
}

bool ViewWindow::on_drag_motion(const Glib::RefPtr<Gdk::DragContext>& context, int, int, guint time) {
    const bool wanted = takes_files() && !drag_dest_find_target(context).empty();
    context->drag_status(wanted ? Gdk::ACTION_COPY : Gdk::DragAction(0), time);
    return wanted;
}

bool ViewWindow::on_drag_drop(const Glib::RefPtr<Gdk::DragContext>& context, int, int, guint time) {
    const std::string target = drag_dest_find_target(context);
    if (!takes_files() || target.empty())
        return false;
    drag_get_data(context, target, time);
    return true;
}

void ViewWindow::on_drag_data_received(const Glib::RefPtr<Gdk::DragContext>& context, int, int,
                                       const Gtk::SelectionData& data, guint, guint time) {
    std::vector<std::string> paths;
    for (const Glib::ustring& uri : data.get_uris())
        paths.push_back(path_of(uri));
    context->drag_finish(true, false, time);
    // The program that they come from waits for the end of this, and a file may need a dialog.
    Glib::signal_idle().connect_once(sigc::bind(sigc::mem_fun(*this, &ViewWindow::open_dropped), paths));
}

void ViewWindow::open_dropped(const std::vector<std::string>& paths) {
    if (takes_files())
        open_files(paths);
}

}  // namespace ulk3d
