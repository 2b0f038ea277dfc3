#include "dialogs/tables/open_array_dialog.h"

#include "dialogs/controls/dialog_answers.h"
#include "dialogs/tables/ArrayDialogColor.h"
#include "dialogs/tables/ArrayDialogPoint.h"
#include "model/nurbs/nurbs.h"

namespace ulk3d {

void open_array_dialog(std::uint32_t element, std::uint32_t member, glpolygon_t& gl, nurbs_t& nurbs,
                       edit_history_t& history, const Glib::ustring& title, Gtk::Window& window,
                       ViewArea& viewarea) {
    const std::optional<e_type_t> kind = tabulated_kind(nurbs, element, member);
    const array_dialog_target_t target{element, member, gl, nurbs, history, viewarea};
    if (kind == e_type_t::Position) {
        ArrayDialogPoint dialog(target, title, window);
        run_until_closed(dialog);
    } else if (kind == e_type_t::RGBA) {
        ArrayDialogColor dialog(target, title, window);
        run_until_closed(dialog);
    }
}

}  // namespace ulk3d
