#include "dialogs/settings/EnvDialog.h"

#include "app/window/ViewArea.h"
#include "dialogs/controls/dialog_answers.h"
#include "model/environment.h"

namespace ulk3d {

namespace {

constexpr spin_range_t strength{0.0, 1.0, 0.025, 0.1, 5};
constexpr spin_range_t refraction_index{0.0, 100.0, 0.125, 1.0, 5};

}  // namespace

EnvDialog::EnvDialog(environment_t& scene_environment, const char* base, const Glib::ustring& title,
                     Gtk::Window& window, ViewArea& area)
    : Gtk::Dialog(title, window, true),
      environment(scene_environment),
      base_file(base),
      viewarea(area),
      cubetex(scene_environment.cubetex) {
    configure(reflectalpha, strength, environment.reflectalpha);
    configure(refractalpha, strength, environment.refractalpha);
    configure(refractfactor, refraction_index, environment.refractfactor);

    add_labelled(name_row, "キューブマップテクスチャファイル名", cubetex, Gtk::PACK_EXPAND_WIDGET);
    add_labelled(reflect_row, "反射強度", reflectalpha);
    add_labelled(refract_row, "屈折強度", refractalpha);
    add_labelled(factor_row, "屈折率", refractfactor);
    for (Gtk::HBox* row : {&name_row, &reflect_row, &refract_row, &factor_row})
        get_content_area()->pack_start(*row, Gtk::PACK_SHRINK);
    add_answer_buttons(*this);
    show_all_children(true);
}

void EnvDialog::on_response(int answer) {
    Gtk::Dialog::on_response(answer);
    if (!writes_back(answer))
        return;
    finish_typing(*this);
    environment.cubetex = cubetex.name();
    environment.reflectalpha = static_cast<float>(reflectalpha.get_value());
    environment.refractalpha = static_cast<float>(refractalpha.get_value());
    environment.refractfactor = static_cast<float>(refractfactor.get_value());
    viewarea.make_current();
    environment.initex(base_file);
    viewarea.redraw();
}

}  // namespace ulk3d
