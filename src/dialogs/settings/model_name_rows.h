#pragma once

#include "dialogs/controls/labelled_row.h"
#include "operations/settings/model_settings.h"

namespace ulk3d {

/// The file names in a model's dialog: its own above the dialog's counts, those of its maps below them.
class model_name_rows_t {
  public:
    explicit model_name_rows_t(const model_names_t& names);

    void add_name_to(Gtk::Box& dialog_box);
    /// Adds a row for each map, with labels on the left and entries on the right.
    void add_maps_to(Gtk::Box& dialog_box);

    /// The names as they are in the entries now.
    model_names_t names() const;

  private:
    Gtk::HBox name_row, map_rows;
    Gtk::VBox map_labels, map_entries;
    name_entry_t name, texture, bumpmap, specular;
};

}  // namespace ulk3d
