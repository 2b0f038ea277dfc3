#pragma once

#include <gtkmm/glarea.h>

#include <iosfwd>
#include <string>

#include "app/editor/ulkedit.h"
#include "model/try_allocate.h"

namespace ulk3d {

/// The GL area of the window, around the editor. Every access to the editor from outside goes through one of
/// the functions below, which make the GL context current for it.
class ViewArea : public Gtk::GLArea {
  public:
    explicit ViewArea(const char* argv0);
    ~ViewArea() override;

    /// Runs `work(editor)` with the GL context current, asks for a new frame, and returns its result; an
    /// empty one, after a line on the standard error stream, when memory runs out.
    template <class Work>
    auto with_gl(Work&& work) {
        make_current();
        const redraw_t after(*this);
        return carry_out(work);
    }
    /// The same for work that draws outside a frame, as picks and updates of NURBS models do: makes sure that
    /// the area's framebuffer is complete.
    template <class Work>
    auto with_input_gl(Work&& work) {
        make_input_current();
        const redraw_t after(*this);
        return carry_out(work);
    }
    /// The same for work that changes nothing visible: no new frame is asked for.
    template <class Work>
    auto with_gl_unseen(Work&& work) {
        make_current();
        return carry_out(work);
    }

    /// Asks the toolkit for a new frame. Other repaints of the window show the last one again.
    void redraw();

    // Commands on the scene; see ulkedit_t.
    [[nodiscard]] bool open_file(const std::string& name, std::ostream& errors);
    [[nodiscard]] bool save_models_to(const std::string& name);
    [[nodiscard]] bool save_current_to(const std::string& name);
    /// False when memory runs out. They do not redraw: the dialog that follows does.
    [[nodiscard]] bool add_polygon();
    [[nodiscard]] bool add_nurbs();
    void polygonize_current();
    void select_model(std::uint64_t index);
    void delete_current();

    // Switches and settings of the toolbar.
    void set_control_points(bool on);
    void set_grid(bool on);
    void set_grid_step(double step);
    void set_fold_angle(double degrees);
    void set_selection_mode();
    void set_punish_mode();
    void set_clipping_mode();
    void set_folding_mode();
    [[nodiscard]] bool fold();
    /// Rings the bell when the cut has finished.
    void cut_current(const sigc::slot<void, double>& receiver);

    /// Keys that the window passes on; true when the view has handled the key.
    bool key_press(const GdkEventKey& event);
    bool key_release(const GdkEventKey& event);
    /// For the time when releases of keys go elsewhere: no modifier key counts as held any more.
    void forget_keys();

    const ulkedit_t& scene() const { return ulkedit; }

  protected:
    void on_realize() override;
    void on_unrealize() override;
    bool on_button_press_event(GdkEventButton* event) override;
    bool on_button_release_event(GdkEventButton* event) override;
    bool on_scroll_event(GdkEventScroll* event) override;
    bool on_motion_notify_event(GdkEventMotion* event) override;
    bool on_render(const Glib::RefPtr<Gdk::GLContext>& context) override;
    void on_resize(int width, int height) override;

  private:
    struct redraw_t {
        explicit redraw_t(ViewArea& view_area) : area(view_area) {}
        ~redraw_t() { area.redraw(); }
        redraw_t(const redraw_t&) = delete;
        redraw_t& operator=(const redraw_t&) = delete;
        ViewArea& area;
    };

    struct bell_t {
        explicit bell_t(ViewArea& view_area) : area(view_area) {}
        ~bell_t() { area.ring_for_refusals(); }
        bell_t(const bell_t&) = delete;
        bell_t& operator=(const bell_t&) = delete;
        ViewArea& area;
    };

    /// Runs work with the editor, and rings the bell for a command that does nothing because a cut is
    /// running. The toolkit's callbacks never see an exception of the allocator: it ends here.
    template <class Work>
    auto carry_out(Work&& work) {
        const bell_t after(*this);
        return try_command("ulkedit", [&] { return work(ulkedit); });
    }

    void ring_for_refusals();
    void make_input_current();
    void set_mode(operation_mode_t mode);
    /// Runs the handling of an event, which may draw outside a frame, and redraws when the handling asks for
    /// it, or when memory ran out in the middle of it.
    template <class Handling>
    bool handle(Handling&& handling) {
        make_input_current();
        bool needs_frame = true;
        carry_out([&](ulkedit_t& editor) { needs_frame = handling(editor); });
        if (needs_frame)
            redraw();
        return needs_frame;
    }

    struct device_position_t {
        int x, y;
    };
    /// Converts a position: events are in logical pixels, the views in device pixels.
    device_position_t device_position(double x, double y) const;

    ulkedit_t ulkedit;
    std::uint64_t told_refusals = 0;  ///< those for which the bell has rung
    bool frame_is_due = true;         ///< the area's framebuffer does not hold the picture of now
};

}  // namespace ulk3d
