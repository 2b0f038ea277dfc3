#include "app/ViewArea.h"

#include <GL/glew.h>

#include <cstdlib>
#include <iostream>

#include "gltextures/gr_check_error.h"
#include "render/gl/gl_loader.h"

namespace ulk3d {

using libgr::grCheckError;

ViewArea::ViewArea(const char* argv0) : ulkedit(argv0) {
    // Asked for so that the toolkit gives the newest context there is; 3.3 is all that the programs need.
    set_required_version(4, 5);
    set_has_alpha(true);
    set_has_depth_buffer(true);
    set_hexpand(true);
    set_vexpand(true);
    set_auto_render(true);
    add_events(Gdk::BUTTON1_MOTION_MASK | Gdk::BUTTON2_MOTION_MASK | Gdk::BUTTON3_MOTION_MASK |
               Gdk::BUTTON_PRESS_MASK | Gdk::BUTTON_RELEASE_MASK | Gdk::SCROLL_MASK);
}

ViewArea::~ViewArea() {
    // The members release their GL objects after this.
    if (get_realized())
        make_current();
}

void ViewArea::redraw() {
    if (const Glib::RefPtr<Gdk::Window> window = get_window())
        window->invalidate_rect(Gdk::Rectangle(0, 0, get_width(), get_height()), false);
}

void ViewArea::on_realize() {
    Gtk::GLArea::on_realize();
    make_current();
    if (has_error()) {
        std::cerr << "OpenGL is not available: the GL context could not be made." << std::endl;
        std::exit(EXIT_FAILURE);
    }
    static bool loader_has_run = false;
    if (!loader_has_run) {
        grCheckError("on_realize(0)");
        // What was not found is told by the test for GL 3.3 that init begins with.
        loader_has_run = load_gl_entry_points();
        grCheckError("on_realize(1)");
    }
    ulkedit.init();
}

void ViewArea::on_unrealize() {
    Gtk::GLArea::on_unrealize();
}

bool ViewArea::on_render(const Glib::RefPtr<Gdk::GLContext>&) {
    // The toolkit leaves the texture that it draws the area into bound here: a surface without a map of its
    // own would show the area's picture.
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    ulkedit.display();
    return true;
}

void ViewArea::on_resize(int width, int height) {
    make_current();
    ulkedit.reshape(width, height);
}

bool ViewArea::open_file(const std::string& name, std::ostream& errors) {
    make_current();
    // The frame pass draws, which needs a complete framebuffer outside of a frame too.
    attach_buffers();
    const bool opened = ulkedit.file_open(name.c_str(), errors);
    redraw();
    return opened;
}

bool ViewArea::save_models_to(const std::string& name) {
    make_current();
    return ulkedit.save_models_to(name.c_str());
}

bool ViewArea::save_current_to(const std::string& name) {
    make_current();
    return ulkedit.save_current_to(name.c_str());
}

void ViewArea::add_polygon() {
    make_current();
    ulkedit.add_model(kind_polygon);
}

void ViewArea::add_nurbs() {
    make_current();
    ulkedit.add_model(kind_nurbs);
}

void ViewArea::polygonize_current() {
    make_current();
    ulkedit.polygonize_current();
    redraw();
}

void ViewArea::select_model(std::uint64_t index) {
    make_current();
    ulkedit.select_model(index);
    redraw();
}

void ViewArea::delete_current() {
    make_current();
    ulkedit.delete_current();
    redraw();
}

}  // namespace ulk3d
