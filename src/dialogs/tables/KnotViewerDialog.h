#pragma once

#include <gtkmm/dialog.h>

#include "dialogs/tables/KnotDraw.h"

namespace ulk3d {

/// Shows the basis functions of one knot vector of a matrix. Modal; the caller runs it.
class KnotViewerDialog : public Gtk::Dialog {
  public:
    /// Shows `count` functions of `order`; their knots are row `row` of the matrix, which must outlive the
    /// dialog. Shader files are looked for in `shader_folder`; empty for none.
    KnotViewerDialog(Gtk::Window& parent, std::uint64_t order, std::uint64_t count, std::uint64_t row,
                     const matrix_t<float>& knots, const Glib::ustring& title,
                     const std::string& shader_folder);
    ~KnotViewerDialog() override = default;

  private:
    KnotDraw draw;
};

}  // namespace ulk3d
