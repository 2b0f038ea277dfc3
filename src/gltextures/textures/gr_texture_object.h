#pragma once

#include <GL/glew.h>

#include "gltextures/gl_no_object.h"
#include "gltextures/textures/gr_texturable.h"
#include "utils/memory/shared_holder.h"
#include "utils/pictures/image2d.h"

namespace libgr {

/// Owner of one GL texture name. Without a current context it drops the name without deleting it.
struct texture_name_t {
    texture_name_t() = default;
    ~texture_name_t();
    texture_name_t(const texture_name_t&) = delete;
    texture_name_t& operator=(const texture_name_t&) = delete;

    GLuint name = 0;
    bool allocated = false;
};

/// A GL texture object and the content that it shows. Copies share the GL name.
///
/// Built without a context; all else needs a current one. Until `Set` there is no name, and then nothing is
/// bound or drawn: that is how a texture whose picture could not be loaded stays out of the way. GL errors
/// and messages go to the standard error stream.
class grTextureObject : public grTexturableObject {
  public:
    std::uint32_t GetTarget() const override;
    /// Binds the texture to its target, for a draw.
    void Load() override;
    /// Binds the texture and has its content uploaded again.
    void Reload() override;
    bool IsLoaded() const override { return loaded; }
    /// Binds no texture to the target.
    void Unload() override;

    /// Takes `content`, which must outlive this, into the texture: makes the name, binds it and has the
    /// content uploaded. The binding stays.
    void Set(grTexturableImageGL* content);

    /// True when GL has the texture at hand. A core context has no such question: there, when GL knows it. No
    /// command reaches this.
    [[nodiscard]] bool IsResident() const;

    /// Drops the name; the last one deletes it. No command reaches this: textures stay.
    void Release();

    /// Gives a level to an image unit of the shaders, `access` as glBindImageTexture, and takes it from it.
    /// Nothing happens where GL has no image units. No command reaches these two.
    void BindImage(GLuint unit, GLint level, GLenum access) const;
    void UnbindImage(GLuint unit) const;

    /// Reads a level of the texture that is bound to `target` into `image`, as RGBA in the type and with the
    /// bits of the red channel.
    ///
    /// False, with `image` cleared, for a red channel that is none; with "red size is not recognized." for
    /// one of a size without a code, with "grTextureObject::GetTextureImage() img allocate fail." without
    /// memory. True else, also where GL refuses the read: the channel's type, as GL reports it, is requested
    /// unchanged, which only integers and floats can be. Pixels of a wider type than their storage are not
    /// read: false. No command reaches this or the next one.
    [[nodiscard]] static bool GetTextureImage(GLenum target, GLint level, libutils::image2d& image);
    /// The same from this object's texture, bound or not; before GL 4.5 it is bound for it and stays so. GL
    /// keeps the read inside of the image: pixels of a wider type are an error of GL, and the result is true.
    [[nodiscard]] bool GetTextureImage(GLint level, libutils::image2d& image) const;

    /// GL name, 0 when there is none.
    GLuint texture_id() const { return name ? name->name : 0; }

  private:
    libutils::shared_holder<texture_name_t> name;
    GLenum target = gl_no_object;
    bool loaded = false;
    grTexturableImageGL* content = nullptr;
};

}  // namespace libgr
