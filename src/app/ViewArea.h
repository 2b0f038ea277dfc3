#pragma once

#include <gtkmm/glarea.h>

#include <iosfwd>
#include <string>

#include "app/ulkedit.h"

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

    const ulkedit_t& scene() const { return ulkedit; }

  protected:
    void on_realize() override;
    void on_unrealize() override;
    bool on_render(const Glib::RefPtr<Gdk::GLContext>& context) override;
    void on_resize(int width, int height) override;

  private:
    ulkedit_t ulkedit;
};

}  // namespace ulk3d
