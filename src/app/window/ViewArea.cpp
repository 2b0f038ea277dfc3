#include "app/window/ViewArea.h"

#include <atkmm/object.h>
#include <gdk/gdkkeysyms.h>

#include "gltextures/gr_check_error.h"
#include "render/gl/gl_loader.h"
#include "render/gl/gl_requirement.h"

namespace ulk3d {

using libgr::grCheckError;

ViewArea::ViewArea(const char* argv0) : ulkedit(argv0) {
    // Requested so that the toolkit creates the newest context there is; the programs need only 3.3.
    set_required_version(4, 5);
    set_has_alpha(true);
    set_has_depth_buffer(true);
    set_hexpand(true);
    set_vexpand(true);
    set_auto_render(true);
    get_accessible()->set_name("編集画面");
    add_events(Gdk::BUTTON1_MOTION_MASK | Gdk::BUTTON2_MOTION_MASK | Gdk::BUTTON3_MOTION_MASK |
               Gdk::BUTTON_PRESS_MASK | Gdk::BUTTON_RELEASE_MASK | Gdk::SCROLL_MASK);
    signal_grab_broken_event().connect([this](GdkEventGrabBroken*) {
        forget_keys();
        return false;
    });
}

ViewArea::~ViewArea() {
    // The members release their GL objects in their destructors, which run after this.
    if (get_realized())
        make_current();
}

void ViewArea::ring_for_refusals() {
    if (told_refusals != ulkedit.refusals())
        error_bell();
    told_refusals = ulkedit.refusals();
}

void ViewArea::redraw() {
    // The whole widget, wherever it lies in its window: the area has no window of its own to draw into, and a
    // rectangle of the window that has would begin at the menu bar.
    frame_is_due = true;
    queue_render();
}

namespace {

/// The toolkit drops motion events that wait behind others. A brush has to meet every place that it passes.
void keep_every_motion(Gtk::Widget& widget, const Glib::RefPtr<Gdk::Window>& parent) {
    for (const Glib::RefPtr<Gdk::Window>& window : parent->get_children()) {
        gpointer owner = nullptr;
        gdk_window_get_user_data(window->gobj(), &owner);
        if (owner == widget.gobj())
            gdk_window_set_event_compression(window->gobj(), FALSE);
    }
}

}  // namespace

void ViewArea::on_realize() {
    Gtk::GLArea::on_realize();
    keep_every_motion(*this, get_window());
    make_current();
    require_gl_context(!has_error());
    static bool loader_has_run = false;
    if (!loader_has_run) {
        grCheckError("on_realize(0)");
        // Missing entry points are reported by the test for GL 3.3 that init begins with.
        loader_has_run = load_gl_entry_points();
        grCheckError("on_realize(1)");
    }
    ulkedit.init();
}

void ViewArea::on_unrealize() {
    Gtk::GLArea::on_unrealize();
}

bool ViewArea::on_render(const Glib::RefPtr<Gdk::GLContext>&) {
    // The toolkit may be repainting another part of the window; it shows the view's last frame again.
    if (!frame_is_due)
        return true;
    glDrawBuffer(GL_COLOR_ATTACHMENT0);
    frame_is_due = false;
    bool is_whole = false;
    carry_out([&](ulkedit_t& editor) {
        editor.display();
        is_whole = true;
    });
    if (!is_whole)
        frame_is_due = true;
    // Nothing that is drawn outside a frame, as by the frame pass, gets into the picture.
    glDrawBuffer(GL_NONE);
    return true;
}

void ViewArea::on_resize(int width, int height) {
    // Called before the first frame in each new framebuffer: also after a realization, and when the scale of
    // the screen has changed.
    frame_is_due = true;
    make_current();
    carry_out([=, this](ulkedit_t& editor) {
        editor.set_pixel_scale(get_scale_factor());
        editor.reshape(width, height);
    });
}

void ViewArea::make_input_current() {
    make_current();
    // Picks and the frame pass draw, which needs a complete framebuffer outside a frame too.
    attach_buffers();
}

bool ViewArea::open_file(const std::string& name, std::ostream& errors) {
    return with_input_gl([&](ulkedit_t& editor) { return editor.file_open(name.c_str(), errors); });
}

bool ViewArea::save_models_to(const std::string& name) {
    return with_gl_unseen([&](ulkedit_t& editor) { return editor.save_models_to(name.c_str()); });
}

bool ViewArea::save_current_to(const std::string& name) {
    return with_gl_unseen([&](ulkedit_t& editor) { return editor.save_current_to(name.c_str()); });
}

bool ViewArea::add_polygon() {
    return with_gl_unseen([](ulkedit_t& editor) { return editor.add_model(model_kind_t::polygon); });
}

bool ViewArea::add_nurbs() {
    return with_gl_unseen([](ulkedit_t& editor) { return editor.add_model(model_kind_t::nurbs); });
}

void ViewArea::polygonize_current() {
    with_gl([](ulkedit_t& editor) { editor.polygonize_current(); });
}

void ViewArea::select_model(std::uint64_t index) {
    with_gl([index](ulkedit_t& editor) { editor.select_model(index); });
}

void ViewArea::delete_current() {
    with_gl([](ulkedit_t& editor) { editor.delete_current(); });
}

void ViewArea::set_control_points(bool on) {
    with_gl([on](ulkedit_t& editor) { editor.set_control_points(on); });
}

void ViewArea::set_grid(bool on) {
    with_gl([on](ulkedit_t& editor) { editor.set_grid(on); });
}

void ViewArea::set_grid_step(double step) {
    with_gl([step](ulkedit_t& editor) { editor.set_grid_step(step); });
}

void ViewArea::set_fold_angle(double degrees) {
    with_gl([degrees](ulkedit_t& editor) { editor.set_fold_angle(degrees); });
}

void ViewArea::set_selection_mode() {
    set_mode(operation_mode_t::selection);
}

void ViewArea::set_punish_mode() {
    set_mode(operation_mode_t::punish);
}

void ViewArea::set_clipping_mode() {
    set_mode(operation_mode_t::clipping);
}

void ViewArea::set_folding_mode() {
    set_mode(operation_mode_t::folding);
}

void ViewArea::set_mode(operation_mode_t mode) {
    with_gl([mode](ulkedit_t& editor) { editor.set_mode(mode); });
}

bool ViewArea::fold() {
    // While a cut is running the button shows no message.
    return with_gl([](ulkedit_t& editor) {
        const bool refused = editor.cut_is_running();
        return editor.fold() || refused;
    });
}

void ViewArea::cut_current(const sigc::slot<void, double>& receiver) {
    with_gl([&](ulkedit_t& editor) { editor.cut_current(receiver); });
    error_bell();
}

ViewArea::device_position_t ViewArea::device_position(double x, double y) const {
    const int scale = get_scale_factor();
    return {static_cast<int>(x * scale), static_cast<int>(y * scale)};
}

bool ViewArea::on_button_press_event(GdkEventButton* event) {
    const auto [x, y] = device_position(event->x, event->y);
    const std::uint32_t button = event->button - 1;
    const bool is_double = event->type == GDK_2BUTTON_PRESS;
    return handle([&, x = x, y = y](ulkedit_t& editor) {
        return is_double ? editor.double_click(button, x, y) : editor.mouse_button(button, false, x, y);
    });
}

bool ViewArea::on_button_release_event(GdkEventButton* event) {
    const auto [x, y] = device_position(event->x, event->y);
    return handle(
        [&, x = x, y = y](ulkedit_t& editor) { return editor.mouse_button(event->button - 1, true, x, y); });
}

bool ViewArea::on_motion_notify_event(GdkEventMotion* event) {
    const auto [x, y] = device_position(event->x, event->y);
    return handle([x = x, y = y](ulkedit_t& editor) { return editor.mouse_motion(x, y); });
}

bool ViewArea::on_scroll_event(GdkEventScroll* event) {
    const auto [x, y] = device_position(event->x, event->y);
    const int delta = event->direction == GDK_SCROLL_UP ? 1 : event->direction == GDK_SCROLL_DOWN ? -1 : 0;
    return handle([delta, x = x, y = y](ulkedit_t& editor) { return editor.mouse_wheel(delta, x, y); });
}

namespace {

/// The modifier state that a key stands for; modifier_none for other keys.
std::uint32_t modifier_of(guint keyval) {
    switch (keyval) {
        case GDK_KEY_Shift_L:
        case GDK_KEY_Shift_R:
            return modifier_shift;
        case GDK_KEY_Control_L:
        case GDK_KEY_Control_R:
            return modifier_ctrl;
        case GDK_KEY_Alt_L:
        case GDK_KEY_Alt_R:
            return modifier_alt;
        default:
            return modifier_none;
    }
}

}  // namespace

bool ViewArea::key_press(const GdkEventKey& event) {
    return handle([&](ulkedit_t& editor) {
        const std::uint32_t modifier = modifier_of(event.keyval);
        return modifier == modifier_none ? editor.key_command(event.keyval)
                                         : editor.press_modifier(modifier, event.hardware_keycode);
    });
}

bool ViewArea::key_release(const GdkEventKey& event) {
    return handle([&](ulkedit_t& editor) {
        if (editor.release_key(event.hardware_keycode))
            return true;
        editor.key_released(event.keyval);
        return false;
    });
}

void ViewArea::forget_keys() {
    handle([](ulkedit_t& editor) { return editor.forget_modifiers(); });
}

}  // namespace ulk3d
