#include <gtkmm/main.h>

#include "app/window/ViewWindow.h"

int main(int argc, char** argv) {
    Gtk::Main toolkit(&argc, &argv, true);
    Gtk::Window::set_default_icon_name("ulkedit");
    ulk3d::ViewWindow window(argc > 0 ? argv[0] : "");
    Gtk::Main::run(window);
    return 0;
}
