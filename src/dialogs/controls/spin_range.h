#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/spinbutton.h>
#include <gtkmm/window.h>

namespace ulk3d {

/// How a spin button counts: its limits, its steps for the arrow and the page keys, and its digits after the
/// decimal point. None of these buttons wraps.
struct spin_range_t {
    double low, high, step, page;
    unsigned digits;
};

/// The adjustment to construct a spin button of this range with: `value` is moved to the nearest limit when
/// it lies outside; not-a-number counts as 0. A button constructed from it formats its text only once, which
/// matters for tables of thousands.
Glib::RefPtr<Gtk::Adjustment> make_adjustment(const spin_range_t& range, double value);

/// Gives an existing spin button its range and value.
void configure(Gtk::SpinButton& spin, const spin_range_t& range, double value);

/// Takes over the number that is being typed into a spin button of the window: a dialog accepted by a
/// mnemonic leaves the focus where it is, and the toolkit reads a number only when the focus leaves its
/// button.
void finish_typing(Gtk::Window& window);

}  // namespace ulk3d
