#include "dialogs/tables/KnotDraw.h"

#include <atkmm/object.h>

#include <utility>

#include "render/gl/gl_requirement.h"
#include "render/gl/line_width.h"

namespace ulk3d {

KnotDraw::KnotDraw(std::uint64_t function_order, std::uint64_t function_count, std::uint64_t knot_row,
                   const matrix_t<float>& knot_matrix, std::string folder)
    : order(function_order),
      count(function_count),
      row(knot_row),
      knots(knot_matrix),
      shader_folder(std::move(folder)) {
    set_required_version(3, 3);
    set_has_alpha(true);
    set_has_depth_buffer(true);
    set_hexpand(true);
    set_vexpand(true);
    set_auto_render(true);
    get_accessible()->set_name("基底関数");
}

KnotDraw::~KnotDraw() {
    // The toolkit unrealizes the widget later, when it is no longer a KnotDraw.
    if (plot)
        make_current();
}

void KnotDraw::on_realize() {
    Gtk::GLArea::on_realize();
    make_current();
    require_gl_context(!has_error());
    plot.emplace().init(shader_folder.c_str());
}

void KnotDraw::on_unrealize() {
    make_current();
    plot.reset();
    Gtk::GLArea::on_unrealize();
}

void KnotDraw::on_resize(int width, int height) {
    make_current();
    if (plot && row < knots.rows)
        plot->reshape(width, height, count, order, knots.row(row));
}

bool KnotDraw::on_render(const Glib::RefPtr<Gdk::GLContext>&) {
    set_line_width(static_cast<float>(get_scale_factor()));
    if (plot)
        plot->draw();
    return true;
}

}  // namespace ulk3d
