#include "dialogs/tables/KnotViewerDialog.h"

#include <gtkmm/stock.h>

namespace ulk3d {

KnotViewerDialog::KnotViewerDialog(Gtk::Window& parent, std::uint64_t order, std::uint64_t count,
                                   std::uint64_t row, const matrix_t<float>& knots,
                                   const Glib::ustring& title, const std::string& shader_folder)
    : Gtk::Dialog(title, parent, true), draw(order, count, row, knots, shader_folder) {
    draw.set_size_request(400, 400);
    get_content_area()->pack_start(draw, Gtk::PACK_EXPAND_WIDGET);
    add_button(Gtk::Stock::OK, Gtk::RESPONSE_OK);
    show_all_children(true);
}

}  // namespace ulk3d
