#include "dialogs/settings/EnvDialog.h"

#include <utility>

#include "dialogs/controls/dialog_answers.h"

namespace ulk3d {

namespace {

constexpr spin_range_t strength{0.0, 1.0, 0.025, 0.1, 5};
constexpr spin_range_t refraction_index{0.0, 100.0, 0.125, 1.0, 5};

}  // namespace

EnvDialog::EnvDialog(const environment_settings_t& shown, apply_t apply_settings, const Glib::ustring& title,
                     Gtk::Window& window)
    : Gtk::Dialog(title, window, true),
      apply(std::move(apply_settings)),
      cubetex(shown.cubetex),
      reflectalpha(strength, shown.reflectalpha),
      refractalpha(strength, shown.refractalpha),
      refractfactor(refraction_index, shown.refractfactor) {
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
    apply({cubetex.name(), static_cast<float>(reflectalpha.get_value()),
           static_cast<float>(refractalpha.get_value()), static_cast<float>(refractfactor.get_value())});
}

}  // namespace ulk3d
