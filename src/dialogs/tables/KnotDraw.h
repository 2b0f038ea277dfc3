#pragma once

#include <gtkmm/glarea.h>

#include <cstdint>
#include <optional>
#include <string>

#include "model/matrix.h"
#include "render/overlays/knot_plot.h"

namespace ulk3d {

/// A plot of the basis functions of one knot vector, which is a row of a matrix: `count` functions of
/// `order`, with one sample for each column of pixels.
class KnotDraw : public Gtk::GLArea {
  public:
    /// The matrix must outlive this widget. Shader files are looked for in `shader_folder`; empty for none.
    KnotDraw(std::uint64_t order, std::uint64_t count, std::uint64_t row, const matrix_t<float>& knots,
             std::string shader_folder);
    ~KnotDraw() override;

  protected:
    void on_realize() override;
    void on_unrealize() override;
    void on_resize(int width, int height) override;
    bool on_render(const Glib::RefPtr<Gdk::GLContext>& context) override;

  private:
    std::uint64_t order;
    std::uint64_t count;
    std::uint64_t row;
    const matrix_t<float>& knots;
    std::string shader_folder;
    std::optional<knot_plot_t> plot;  ///< while the widget is realized: GL objects belong to its context
};

}  // namespace ulk3d
