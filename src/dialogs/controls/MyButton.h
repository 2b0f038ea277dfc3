#pragma once

#include <gtkmm/button.h>

namespace ulk3d {

/// A button with a signal of its own for clicks, emitted after the toolkit has handled the click.
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
