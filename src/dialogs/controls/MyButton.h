#pragma once

#include <gtkmm/button.h>

namespace ulk3d {

/// A button that says by a signal of its own that it was clicked, after the toolkit's handling of the click.
class MyButton : public Gtk::Button {
  public:
    using Gtk::Button::Button;

    sigc::signal<void> pressed_signal;

  protected:
    void on_clicked() override {
        Gtk::Button::on_clicked();
        pressed_signal.emit();
    }
};

}  // namespace ulk3d
