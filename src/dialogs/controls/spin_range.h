#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/spinbutton.h>
#include <gtkmm/window.h>

namespace ulk3d {

/// How a spin button counts: its limits, its steps for the arrow and the page keys, and the digits behind the
/// point. None of them wraps.
struct spin_range_t {
    double low, high, step, page;
    unsigned digits;
};

/// What a spin button of this range is constructed with: `value`, moved to the nearest limit when it lies
/// outside; not-a-number counts as 0. A button that is made from it formats its text once only, which tables
/// of thousands feel.
Glib::RefPtr<Gtk::Adjustment> make_adjustment(const spin_range_t& range, double value);

/// Gives a spin button that exists its range and value.
void configure(Gtk::SpinButton& spin, const spin_range_t& range, double value);

/// Takes over the number that is being typed into a spin button of the window: one that is accepted by a
/// mnemonic keeps the focus where it is, and the toolkit reads a number only when the focus leaves it.
void finish_typing(Gtk::Window& window);

}  // namespace ulk3d
