#include "dialogs/texts/text_dialogs.h"

#include <utility>

#include "dialogs/controls/dialog_answers.h"

namespace ulk3d {

ApplyTextDialog::ApplyTextDialog(const std::string& shown, apply_t apply_text, const Glib::ustring& title,
                                 Gtk::Window& window)
    : Gtk::Dialog(title, window, true), apply(std::move(apply_text)) {
    page.put_into(*this, shown);
    add_answer_buttons(*this);
    show_all_children(true);
}

void ApplyTextDialog::on_response(int answer) {
    Gtk::Dialog::on_response(answer);
    if (writes_back(answer))
        apply(page.text());
}

}  // namespace ulk3d
