#pragma once

#include <gtkmm/entry.h>

namespace ulk3d {

/// Remembers whether the text of an entry has changed since this was made: by typing, also of what stood there,
/// by arrows and by the wheel. A spin button that formats its number to the same text again has not.
class touched_text_t : public sigc::trackable {
  public:
    /// `entry` has its first text, and outlives this.
    explicit touched_text_t(Gtk::Entry& entry) {
        entry.signal_changed().connect(sigc::mem_fun(*this, &touched_text_t::touch));
    }
    touched_text_t(const touched_text_t&) = delete;
    touched_text_t& operator=(const touched_text_t&) = delete;

    bool is_touched() const { return touched; }

  private:
    void touch() { touched = true; }

    bool touched = false;
};

}  // namespace ulk3d
