#include "render/models/neutral_maps.h"

#include <GL/glew.h>

#include "gltextures/gr_context.h"

namespace ulk3d {

namespace {

struct neutral_map_t {
    map_unit_t unit;
    GLint internal_format;
    GLenum format;
    GLenum type;
    std::array<std::uint8_t, 4> pixel;
};

constexpr neutral_map_t neutral_maps[] = {
    {map_unit_t::color, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, {255, 255, 255, 255}},
    {map_unit_t::bump, GL_RGB8_SNORM, GL_RGB, GL_BYTE, {0, 0, 127}},
    {map_unit_t::specular, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, {255, 255, 255, 255}},
};

}  // namespace

neutral_maps_t::~neutral_maps_t() {
    if (libgr::grContextIsCurrent())
        glDeleteTextures(static_cast<GLsizei>(ids.size()), ids.data());
}

void neutral_maps_t::init() {
    if (ids.front() != 0)
        return;
    glGenTextures(static_cast<GLsizei>(ids.size()), ids.data());
    for (const neutral_map_t& map : neutral_maps) {
        glBindTexture(GL_TEXTURE_2D, ids[static_cast<std::size_t>(map.unit)]);
        // With the default filter the texture would be incomplete, as it has no smaller levels.
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexImage2D(GL_TEXTURE_2D, 0, map.internal_format, 1, 1, 0, map.format, map.type, map.pixel.data());
    }
    glBindTexture(GL_TEXTURE_2D, 0);
}

bool neutral_maps_t::bind(map_unit_t unit) const {
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    if (bound != 0)
        return false;
    glBindTexture(GL_TEXTURE_2D, ids[static_cast<std::size_t>(unit)]);
    return true;
}

void neutral_maps_t::unbind() {
    glBindTexture(GL_TEXTURE_2D, 0);
}

}  // namespace ulk3d
