#include "dialogs/settings/model_name_rows.h"

#include <initializer_list>
#include <utility>

namespace ulk3d {

model_name_rows_t::model_name_rows_t(const model_names_t& names)
    : name(names.name), texture(names.texture), bumpmap(names.bumpmap), specular(names.specular) {
    add_labelled(name_row, "保存ファイル名", name, Gtk::PACK_EXPAND_WIDGET);
    for (const auto& [label, entry] :
         std::initializer_list<std::pair<const char*, Gtk::Entry*>>{{"色テクスチャ", &texture},
                                                                    {"バンプマップテクスチャ", &bumpmap},
                                                                    {"スペキュラテクスチャ", &specular}}) {
        map_labels.pack_start(make_label_of(*entry, label), Gtk::PACK_EXPAND_WIDGET);
        map_entries.pack_start(*entry, Gtk::PACK_SHRINK);
    }
    map_rows.pack_start(map_labels, Gtk::PACK_SHRINK);
    map_rows.pack_start(map_entries, Gtk::PACK_EXPAND_WIDGET);
}

void model_name_rows_t::add_name_to(Gtk::Box& dialog_box) {
    dialog_box.pack_start(name_row, Gtk::PACK_SHRINK);
}

void model_name_rows_t::add_maps_to(Gtk::Box& dialog_box) {
    dialog_box.pack_start(map_rows, Gtk::PACK_SHRINK);
}

model_names_t model_name_rows_t::names() const {
    return {name.name(), texture.name(), bumpmap.name(), specular.name()};
}

}  // namespace ulk3d
