#include "dialogs/controls/labelled_row.h"

#include <atkmm/object.h>

#include "dialogs/controls/system_text.h"

namespace ulk3d {

Gtk::Label& make_label_of(Gtk::Widget& control, const char* label) {
    auto* const text = Gtk::make_managed<Gtk::Label>(label);
    text->set_mnemonic_widget(control);
    control.get_accessible()->set_name(label);
    return *text;
}

void add_labelled(Gtk::Box& row, const char* label, Gtk::Widget& control, Gtk::PackOptions control_packing) {
    row.pack_start(make_label_of(control, label), Gtk::PACK_SHRINK);
    row.pack_start(control, control_packing);
}

name_entry_t::name_entry_t(const std::string& name) : first_name(name) {
    set_text(widget_text(name));
}

std::string name_entry_t::name() const {
    const Glib::ustring text = get_text();
    // Compared as bytes: comparing the texts themselves takes half-width and full-width letters for the same.
    return text.raw() == widget_text(first_name).raw() ? first_name : system_bytes(text);
}

count_spin_t::count_spin_t(double highest, std::uint64_t value)
    : number_spin_t({0, highest, 1, 10, 0}, static_cast<double>(value)), first_value(value) {}

std::uint32_t count_spin_t::count() const {
    return is_touched() ? static_cast<std::uint32_t>(get_value_as_int())
                        : static_cast<std::uint32_t>(first_value);
}

}  // namespace ulk3d
