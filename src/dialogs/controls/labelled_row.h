#pragma once

#include <gtkmm/box.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <gtkmm/spinbutton.h>

#include <cstdint>
#include <optional>
#include <string>

#include "dialogs/controls/spin_range.h"
#include "dialogs/controls/touched_text.h"

namespace ulk3d {

/// Puts a label before a control of a dialog's row. The label names the control for those who hear the
/// dialog.
void add_labelled(Gtk::Box& row, const char* label, Gtk::Widget& control,
                  Gtk::PackOptions control_packing = Gtk::PACK_SHRINK);

/// A label that names a control which stands elsewhere.
Gtk::Label& make_label_of(Gtk::Widget& control, const char* label);

/// A file name in a dialog. Bytes that can not be shown stay as they are while the user does not touch them.
class name_entry_t : public Gtk::Entry {
  public:
    explicit name_entry_t(const std::string& name);

    /// The name's bytes as the entry stands now.
    std::string name() const;

  private:
    std::string first_name;
};

/// A whole number from 0 up to a limit, in steps of 1 and 10. A number beyond the limit, which a file may
/// bring, shows as the limit and stays as it is while the user does not touch it.
class count_spin_t : public Gtk::SpinButton {
  public:
    count_spin_t(double highest, std::uint64_t value);

    std::uint32_t count() const;

  private:
    std::uint64_t first_value;
    std::optional<touched_text_t> text;  ///< from when the first value shows
};

}  // namespace ulk3d
