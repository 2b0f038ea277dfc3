#include "dialogs/controls/spin_range.h"

#include <algorithm>
#include <cmath>

namespace ulk3d {

Glib::RefPtr<Gtk::Adjustment> make_adjustment(const spin_range_t& range, double value) {
    const double shown = std::clamp(std::isnan(value) ? 0.0 : value, range.low, range.high);
    return Gtk::Adjustment::create(shown, range.low, range.high, range.step, range.page, 0);
}

void configure(Gtk::SpinButton& spin, const spin_range_t& range, double value) {
    spin.configure(make_adjustment(range, value), 0, range.digits);
    spin.set_wrap(false);
}

void finish_typing(Gtk::Window& window) {
    if (auto* const spin = dynamic_cast<Gtk::SpinButton*>(window.get_focus()))
        spin->update();
}

}  // namespace ulk3d
