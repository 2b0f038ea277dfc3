#pragma once

#include <gtkmm/spinbutton.h>
#include <gtkmm/window.h>

namespace ulk3d {

/// How a spin button counts: its limits, its steps for the arrow and the page keys, and its digits after the
/// decimal point. None of these buttons wraps.
struct spin_range_t {
    double low, high, step, page;
    unsigned digits;

    /// `value` moved to the nearest limit when it lies outside; not-a-number counts as 0.
    double clamped(double value) const;
};

/// The spin button of all dialogs and of the toolbar. It reads what utils/text/typed_number.h reads, sums
/// included; what can not be read leaves the number that was there. A button without digits holds the whole
/// number that it shows. The decimal sign is a point in every locale.
///
/// The wheel turns a number only while it has the keyboard, so that it scrolls a table whose numbers it
/// passes over. A button that never takes the keyboard always turns.
class number_spin_t : public Gtk::SpinButton {
  public:
    /// Shows `value`, clamped.
    number_spin_t(const spin_range_t& range, double value);

    /// Shows another number, as if the button were new. What is being typed is lost.
    void show_number(double value);

    /// Whether a user has given a number since the first one was shown: typed, also what stood there, or
    /// turned. Until then get_value() is that first number with all its digits, wherever the keyboard went.
    bool is_touched() const { return touched; }

    /// Emitted with each new number that a user gives.
    sigc::signal<void, double> number_given;

  protected:
    int on_input(double* new_value) override;
    bool on_output() override;
    void on_value_changed() override;
    bool on_scroll_event(GdkEventScroll* event) override;

  private:
    bool typed = false;    ///< the text was changed by another than this button, and is not read yet
    bool touched = false;  ///< see is_touched
    bool writing = false;  ///< this button changes its text
    bool showing = false;  ///< another number is being shown
};

/// Takes over the number that is being typed into a spin button of the window: a dialog accepted by a
/// mnemonic leaves the focus where it is, and the toolkit reads a number only when the focus leaves its
/// button.
void finish_typing(Gtk::Window& window);

}  // namespace ulk3d
