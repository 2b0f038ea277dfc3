#include "gltextures/textures/gr_tex_parameter.h"

#include "gltextures/gr_check_error.h"

namespace libgr {

void grTexParameter(const tex_parameters_1d_t* parameters) {
    if (parameters == nullptr)
        return;
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, parameters->min_filter);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, parameters->mag_filter);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, parameters->wrap_s);
}

void grTexParameter(const tex_parameters_2d_t* parameters) {
    if (parameters == nullptr)
        return;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, parameters->min_filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, parameters->mag_filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, parameters->wrap_s);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, parameters->wrap_t);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT, parameters->aniso);
}

void grTexParameter(const tex_parameters_3d_t* parameters) {
    if (parameters == nullptr)
        return;
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_MIN_FILTER, parameters->min_filter);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_MAG_FILTER, parameters->mag_filter);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_WRAP_S, parameters->wrap_s);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_WRAP_T, parameters->wrap_t);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_WRAP_R, parameters->wrap_r);
    if (GLEW_EXT_texture_filter_anisotropic)
        glTexParameterf(GL_TEXTURE_3D, GL_TEXTURE_MAX_ANISOTROPY_EXT, parameters->aniso);
}

void grTexParameter(const tex_parameters_cube_t* parameters) {
    if (parameters == nullptr)
        return;
    grCheckError("grTexParameter(cubemap) start");
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, parameters->min_filter);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, parameters->mag_filter);
    if (GLEW_EXT_texture_filter_anisotropic)
        glTexParameterf(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAX_ANISOTROPY_EXT, parameters->aniso);
    grCheckError("grTexParameter(cubemap) end");
}

void grTexBorderColor(GLenum target, const GLfloat* color) {
    if (color != nullptr)
        glTexParameterfv(target, GL_TEXTURE_BORDER_COLOR, color);
}

}  // namespace libgr
