#include "formats/scene/scene_text.h"
#include "model/texture.h"

namespace ulk3d {

namespace {

void write_flag(std::string_view key, bool value, text_output& output) {
    output.line(key, value ? " true" : " false");
}

}  // namespace

bool write_texture_keys(const texture_t& texture, text_output& output) {
    output.line("refractfactor ", texture.refractfactor);
    if (!texture.texture.empty()) {
        output.line("texture ", texture.texture);
        write_flag("mipmap", texture.mipmap, output);
        write_flag("nearlinear", texture.nearlinear, output);
        write_flag("maglinear", texture.maglinear, output);
        output.line("aniso ", texture.aniso);
    }
    if (!texture.bumpmap.empty()) {
        output.line("bumpmap ", texture.bumpmap);
        write_flag("bumpofs", texture.bumpofs, output);
        write_flag("bump2mono", texture.bump2mono, output);
    }
    if (!texture.specular.empty())
        output.line("specular ", texture.specular);
    write_flag("mercatorsphere", texture.mercatorsphere, output);
    return true;
}

}  // namespace ulk3d
