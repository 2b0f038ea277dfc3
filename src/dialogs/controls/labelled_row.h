#pragma once

#include <gtkmm/box.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <cstdint>
#include <string>

#include "dialogs/controls/number_spin.h"

namespace ulk3d {

/// Puts a label before a control in a row of a dialog, and names the control after it for screen readers.
void add_labelled(Gtk::Box& row, const char* label, Gtk::Widget& control,
                  Gtk::PackOptions control_packing = Gtk::PACK_SHRINK);

/// Makes a label that names, for screen readers, a control placed elsewhere. The label is managed by the
/// toolkit.
Gtk::Label& make_label_of(Gtk::Widget& control, const char* label);

/// A file name in a dialog. Bytes that can not be shown are preserved as long as the user does not edit the
/// entry.
class name_entry_t : public Gtk::Entry {
  public:
    explicit name_entry_t(const std::string& name);

    /// The bytes of the name, as the entry is now.
    std::string name() const;

  private:
    std::string first_name;
};

/// A whole number from 0 up to a limit, in steps of 1 and 10. A number beyond the limit, which a file may
/// contain, is shown as the limit and preserved as long as the user does not edit it.
class count_spin_t : public number_spin_t {
  public:
    count_spin_t(double highest, std::uint64_t value);

    std::uint32_t count() const;

  private:
    std::uint64_t first_value;
};

}  // namespace ulk3d
