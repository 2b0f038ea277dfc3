#pragma once

#include <gtkmm/glarea.h>

#include <iosfwd>
#include <string>

#include "app/editor/ulkedit.h"

namespace ulk3d {

/// The GL area of the window: makes the context current, forwards to the ulkedit_t that it holds, and asks
/// for a new frame.
class ViewArea : public Gtk::GLArea {
  public:
    explicit ViewArea(const char* argv0);
    ~ViewArea() override;

    /// Asks the toolkit for a new frame.
    void redraw();

    // Commands on the scene; see ulkedit_t. Those that change the picture redraw.
    bool open_file(const std::string& name, std::ostream& errors);
    bool save_models_to(const std::string& name);
    bool save_current_to(const std::string& name);
    void add_polygon();  ///< does not redraw: the dialog that follows does
    void add_nurbs();    ///< does not redraw: the dialog that follows does
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
    bool fold();
    /// Rings the bell when it has finished.
    void cut_current(const sigc::slot<void, double>& receiver);

    /// Keys that the window passes on; true when the key meant something here.
    bool key_press(const GdkEventKey& event);
    bool key_release(const GdkEventKey& event);

    /// Makes the context current for work that draws outside of a frame.
    void make_input_current();

    const ulkedit_t& scene() const { return ulkedit; }
    /// For dialogs, which write into the models themselves: they make the context current first.
    ulkedit_t& editor() { return ulkedit; }

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
    void set_mode(operation_mode_t mode);
    /// Redraws when an input operation asks for it, and passes its answer on.
    bool redraw_if(bool needed);

    struct device_position_t {
        int x, y;
    };
    /// Events come in logical pixels, the views are in device pixels.
    device_position_t device_position(double x, double y) const;

    ulkedit_t ulkedit;
};

}  // namespace ulk3d
