#pragma once

#include <gtkmm/dialog.h>

#include <functional>

namespace ulk3d {

/// Adds the buttons of an editing dialog, in this order: OK (Gtk::RESPONSE_OK), Cancel (RESPONSE_CANCEL),
/// Apply (RESPONSE_APPLY).
void add_answer_buttons(Gtk::Dialog& dialog);

/// True for the answers on which an editing dialog writes into the model: OK and Apply.
bool writes_back(int answer);

/// Runs an editing dialog until an answer other than Apply, which leaves it open, and returns that answer.
/// `after_answer` is called with every answer, Apply included.
int run_until_closed(Gtk::Dialog& dialog, const std::function<void(int)>& after_answer = {});

}  // namespace ulk3d
