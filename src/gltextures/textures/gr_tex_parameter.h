#pragma once

#include <GL/glew.h>

namespace libgr {

/// Filters and wraps of a texture, as GL names them; `aniso` is the most samples of the anisotropic filter.
/// A record exists for each kind of texture.
struct tex_parameters_1d_t {
    GLint min_filter = GL_NEAREST_MIPMAP_LINEAR;
    GLint mag_filter = GL_LINEAR;
    GLint wrap_s = GL_REPEAT;
};

struct tex_parameters_2d_t {
    GLint min_filter = GL_NEAREST_MIPMAP_LINEAR;
    GLint mag_filter = GL_LINEAR;
    GLint wrap_s = GL_REPEAT;
    GLint wrap_t = GL_REPEAT;
    GLfloat aniso = 1.0F;
    bool operator==(const tex_parameters_2d_t&) const = default;
};

struct tex_parameters_3d_t {
    GLint min_filter = GL_NEAREST_MIPMAP_LINEAR;
    GLint mag_filter = GL_LINEAR;
    GLint wrap_s = GL_REPEAT;
    GLint wrap_t = GL_REPEAT;
    GLint wrap_r = GL_REPEAT;
    GLfloat aniso = 1.0F;
};

/// The wraps of a cube map stay as GL has them.
struct tex_parameters_cube_t {
    GLint min_filter = GL_NEAREST_MIPMAP_LINEAR;
    GLint mag_filter = GL_LINEAR;
    GLfloat aniso = 1.0F;
};

/// Sets a record's parameters on the texture that is bound to its target; null does nothing. The anisotropy
/// of volumes and cube maps is set only where GL has it, that of 2D textures always.
void grTexParameter(const tex_parameters_1d_t* parameters);
void grTexParameter(const tex_parameters_2d_t* parameters);
void grTexParameter(const tex_parameters_3d_t* parameters);
void grTexParameter(const tex_parameters_cube_t* parameters);

/// Sets the border colour (four floats, RGBA) of the texture bound to `target`; null does nothing.
void grTexBorderColor(GLenum target, const GLfloat* color);

}  // namespace libgr
