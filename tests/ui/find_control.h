#pragma once

#include <gtkmm/container.h>

namespace ulk_test {

/// The first control of a type below a widget; null when there is none.
template <class Control>
Control* find_control(Gtk::Widget& widget) {
    if (auto* const control = dynamic_cast<Control*>(&widget))
        return control;
    if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
        for (Gtk::Widget* child : container->get_children())
            if (auto* const control = find_control<Control>(*child))
                return control;
    return nullptr;
}

}  // namespace ulk_test
