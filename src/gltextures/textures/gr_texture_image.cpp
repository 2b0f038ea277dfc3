#include <algorithm>
#include <array>
#include <iostream>
#include <limits>

#include "gltextures/gr_check_error.h"
#include "gltextures/textures/gr_texture_object.h"

namespace libgr {

namespace {

/// The type code of a channel and the bytes that GL writes for it when it is asked for that type; 0 for a
/// type that is none in memory, which GL refuses.
struct channel_type_t {
    GLint gl_type;
    std::uint32_t type;
    std::uint64_t bytes;
};

constexpr channel_type_t channel_types[] = {
    {GL_INT, libutils::image_type::signed_integer, 4},
    {GL_UNSIGNED_INT, libutils::image_type::unsigned_integer, 4},
    {GL_FLOAT, libutils::image_type::floating_point, 4},
    {GL_UNSIGNED_NORMALIZED, libutils::image_type::floating_point, 0},
    {GL_SIGNED_NORMALIZED, libutils::image_type::floating_point, 0},
};

/// Bits of a channel by their code.
constexpr std::array<GLint, 9> channel_bits{1, 2, 4, 8, 12, 16, 24, 32, 64};

/// Reads a parameter of a level and reports a GL error under its error label.
template <class GetParameter>
GLint checked_parameter(GetParameter get, GLenum parameter, const char* mark) {
    GLint value = 0;
    get(parameter, &value);
    grCheckError(mark);
    return value;
}

/// Both forms of the read: `get` asks for a parameter of the level, `read` for its pixels of a type.
template <class GetParameter, class Read>
bool read_texture_image(libutils::image2d& image, GetParameter get, Read read) {
    image.clear();
    image.width = static_cast<std::uint32_t>(
        checked_parameter(get, GL_TEXTURE_WIDTH, "get texture level parameter (width)"));
    image.height = static_cast<std::uint32_t>(
        checked_parameter(get, GL_TEXTURE_HEIGHT, "get texture level parameter (height)"));
    image.format = libutils::image_format::rgba;

    const GLint red_type =
        checked_parameter(get, GL_TEXTURE_RED_TYPE, "get texture level parameter (red_type)");
    const auto* const type = std::find_if(std::begin(channel_types), std::end(channel_types),
                                          [&](const channel_type_t& row) { return row.gl_type == red_type; });
    if (type == std::end(channel_types))
        return false;
    image.type = type->type;

    const GLint red_size =
        checked_parameter(get, GL_TEXTURE_RED_SIZE, "get texture level parameter (red_size)");
    const auto* const bits = std::find(channel_bits.begin(), channel_bits.end(), red_size);
    if (bits == channel_bits.end()) {
        std::cerr << "red size is not recognized." << std::endl;
        return false;
    }
    image.bits = static_cast<std::uint32_t>(bits - channel_bits.begin());

    image.compressed = false;
    image.pack = nullptr;
    if (!image.allocate()) {
        std::cerr << "grTextureObject::GetTextureImage() img allocate fail." << std::endl;
        return false;
    }
    return read(*type, image);
}

std::uint64_t bytes_written(const channel_type_t& type, const libutils::image2d& image) {
    return libutils::size_product(std::uint64_t{image.width} * image.height, 4 * type.bytes);
}

}  // namespace

bool grTextureObject::GetTextureImage(GLenum target, GLint level, libutils::image2d& image) {
    return read_texture_image(
        image,
        [&](GLenum parameter, GLint* value) { glGetTexLevelParameteriv(target, level, parameter, value); },
        [&](const channel_type_t& type, libutils::image2d& store) {
            if (bytes_written(type, store) > store.elements().size())
                return false;
            glGetTexImage(target, level, GL_RGBA, static_cast<GLenum>(type.gl_type), store.begin());
            return true;
        });
}

bool grTextureObject::GetTextureImage(GLint level, libutils::image2d& image) const {
    image.clear();
    if (!name)
        return false;
    const GLuint id = name->name;
    if (glGetTextureImage == nullptr || glGetTextureLevelParameteriv == nullptr) {
        glBindTexture(target, id);
        return GetTextureImage(target, level, image);
    }
    return read_texture_image(
        image,
        [&](GLenum parameter, GLint* value) { glGetTextureLevelParameteriv(id, level, parameter, value); },
        [&](const channel_type_t& type, libutils::image2d& store) {
            const std::uint64_t room = store.elements().size();
            const auto size =
                static_cast<GLsizei>(std::min<std::uint64_t>(room, std::numeric_limits<GLsizei>::max()));
            glGetTextureImage(id, level, GL_RGBA, static_cast<GLenum>(type.gl_type), size, store.begin());
            return true;
        });
}

}  // namespace libgr
