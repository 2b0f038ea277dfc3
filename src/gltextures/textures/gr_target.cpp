#include "gltextures/textures/gr_target.h"

#include "gltextures/gl_no_object.h"

namespace libgr {

namespace {

struct target_row_t {
    std::uint32_t code;
    GLenum target;
};

constexpr target_row_t target_rows[] = {
    {1, GL_TEXTURE_1D},
    {2, GL_TEXTURE_2D},
    {3, GL_TEXTURE_3D},
    {6, GL_TEXTURE_CUBE_MAP},
};

}  // namespace

GLenum target_of_code(std::uint32_t code) {
    for (const target_row_t& row : target_rows)
        if (row.code == code)
            return row.target;
    return gl_no_object;
}

std::uint32_t code_of_target(GLenum target) {
    for (const target_row_t& row : target_rows)
        if (row.target == target)
            return row.code;
    return 0;
}

}  // namespace libgr
