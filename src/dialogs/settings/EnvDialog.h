#pragma once

#include <gtkmm/dialog.h>

#include <string>

#include "dialogs/controls/labelled_row.h"

namespace ulk3d {

class ViewArea;
struct environment_t;

/// The cube map of the scene's surroundings, and how much of it models reflect and refract. OK and Apply set
/// the values and load the map, whether or not anything was changed.
class EnvDialog : public Gtk::Dialog {
  public:
    /// `base_file` is the path in whose directory the map is looked for, null for the working directory. It
    /// and the environment and the view area are not owned and outlive the dialog.
    EnvDialog(environment_t& environment, const char* base_file, const Glib::ustring& title,
              Gtk::Window& window, ViewArea& viewarea);
    ~EnvDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    environment_t& environment;
    const char* base_file;
    ViewArea& viewarea;
    Gtk::HBox name_row, reflect_row, refract_row, factor_row;
    name_entry_t cubetex;
    Gtk::SpinButton reflectalpha, refractalpha, refractfactor;
};

}  // namespace ulk3d
