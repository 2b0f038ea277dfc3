#include "gltextures/textures/gr_texture_object.h"

#include "gltextures/gr_check_error.h"
#include "gltextures/gr_context.h"
#include "gltextures/textures/gr_target.h"
#include "gltextures/upload/gr_core_format.h"

namespace libgr {

texture_name_t::~texture_name_t() {
    if (allocated && grContextIsCurrent())
        glDeleteTextures(1, &name);
}

std::uint32_t grTextureObject::GetTarget() const {
    return code_of_target(target);
}

void grTextureObject::Load() {
    if (!name)
        return;
    grCheckError("grTextureObject::Load(0)");
    if (!GLEW_VERSION_3_0) {
        glEnable(target);
        grCheckError("grTextureObject::Load(1)");
    }
    glBindTexture(target, name->name);
    grCheckError("grTextureObject::Load(2)");
}

void grTextureObject::Reload() {
    if (!loaded)
        return;
    glBindTexture(target, name->name);
    content->Reload();
}

void grTextureObject::Unload() {
    if (!name)
        return;
    if (!GLEW_VERSION_3_0)
        glDisable(target);
    glBindTexture(target, 0);
}

void grTextureObject::Set(grTexturableImageGL* new_content) {
    if (!name)
        name = libutils::shared_holder<texture_name_t>::make();
    target = target_of_code(new_content->GetTarget());
    if (!name->allocated) {
        glGenTextures(1, &name->name);
        name->allocated = true;
    }
    glBindTexture(target, name->name);
    // Not loaded when the content runs out of memory on its way.
    loaded = false;
    new_content->Load();
    loaded = true;
    content = new_content;
}

bool grTextureObject::IsResident() const {
    if (!name)
        return false;
    if (is_core_context())
        return glIsTexture(name->name) == GL_TRUE;
    GLboolean resident = GL_FALSE;
    return glAreTexturesResident(1, &name->name, &resident) == GL_TRUE;
}

void grTextureObject::Release() {
    if (!loaded)
        return;
    name.reset();
    target = gl_no_object;
    loaded = false;
}

void grTextureObject::BindImage(GLuint unit, GLint level, GLenum access) const {
    if (!name || glBindImageTexture == nullptr)
        return;
    glBindImageTexture(unit, name->name, level, GL_FALSE, 0, access, content->GetInternalFormat());
}

void grTextureObject::UnbindImage(GLuint unit) const {
    if (name && glBindImageTexture != nullptr)
        glBindImageTexture(unit, 0, 0, GL_FALSE, 0, GL_READ_ONLY, GL_R8);
}

}  // namespace libgr
