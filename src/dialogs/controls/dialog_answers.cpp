#include "dialogs/controls/dialog_answers.h"

#include <gtkmm/stock.h>

namespace ulk3d {

void add_answer_buttons(Gtk::Dialog& dialog) {
    dialog.add_button(Gtk::Stock::OK, Gtk::RESPONSE_OK);
    dialog.add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
    dialog.add_button(Gtk::Stock::APPLY, Gtk::RESPONSE_APPLY);
}

bool writes_back(int answer) {
    return answer == Gtk::RESPONSE_OK || answer == Gtk::RESPONSE_APPLY;
}

int run_until_closed(Gtk::Dialog& dialog, const std::function<void(int)>& after_answer) {
    for (;;) {
        const int answer = dialog.run();
        if (after_answer)
            after_answer(answer);
        if (answer != Gtk::RESPONSE_APPLY)
            return answer;
    }
}

}  // namespace ulk3d
