#include "dialogs/controls/number_spin.h"

#include <gtkmm/adjustment.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <utility>

#include "utils/text/typed_number.h"

namespace ulk3d {

double spin_range_t::clamped(double value) const {
    return std::clamp(std::isnan(value) ? 0.0 : value, low, high);
}

namespace {

std::string text_of(double value, unsigned digits) {
    char buffer[64];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                       static_cast<int>(digits));
    return {buffer, written.ptr};
}

}  // namespace

number_spin_t::number_spin_t(const spin_range_t& range, double value)
    // Constructed with its value, a button formats its text only once.
    : Gtk::SpinButton(
          Gtk::Adjustment::create(range.clamped(value), range.low, range.high, range.step, range.page, 0), 0,
          range.digits) {
    signal_changed().connect([this] { typed = typed || !writing; });
    // The toolkit has formatted it before this was a number_spin_t.
    number_spin_t::on_output();
}

void number_spin_t::show_number(double value) {
    showing = true;
    get_adjustment()->set_value(value);
    number_spin_t::on_output();
    // What was selected was selected in the other number.
    select_region(0, 0);
    showing = typed = touched = false;
}

int number_spin_t::on_input(double* new_value) {
    *new_value = get_value();
    if (!std::exchange(typed, false))
        return true;
    if (const auto number = libutils::parse_typed_number(get_text().raw())) {
        touched = true;
        *new_value = get_digits() == 0 ? std::round(*number) : *number;
    }
    return true;
}

bool number_spin_t::on_output() {
    const std::string text = text_of(get_value(), get_digits());
    if (get_text().raw() == text)
        return true;
    writing = true;
    set_text(text);
    writing = false;
    return true;
}

void number_spin_t::on_value_changed() {
    Gtk::SpinButton::on_value_changed();
    if (showing)
        return;
    touched = true;
    number_given.emit(get_value());
}

bool number_spin_t::on_scroll_event(GdkEventScroll* event) {
    if (get_can_focus() && !has_focus())
        return false;
    return Gtk::SpinButton::on_scroll_event(event);
}

void finish_typing(Gtk::Window& window) {
    if (auto* const spin = dynamic_cast<Gtk::SpinButton*>(window.get_focus()))
        spin->update();
}

}  // namespace ulk3d
