#pragma once

#include <GL/glew.h>

#include <cstdint>

namespace libgr {

/// Root of what can be put where a texture is looked up: content, or the object that has taken it in.
class grTexturable {
  public:
    /// Target code (gltextures/textures/gr_target.h).
    virtual std::uint32_t GetTarget() const = 0;
    /// Content: uploads everything to the texture that is bound. Object: binds its texture.
    virtual void Load() = 0;
    /// As `Load`, into storage that is there already where the class can do that.
    virtual void Reload() { Load(); }
    virtual ~grTexturable() = default;

  protected:
    grTexturable() = default;
    grTexturable(const grTexturable&) = default;
    grTexturable& operator=(const grTexturable&) = default;
};

/// Content of a texture that is made of images.
class grTexturableImage : public grTexturable {};

/// Such content in a format that GL may know.
class grTexturableImageGL : public grTexturableImage {
  public:
    /// The internal format of the first level, `gl_no_object` when there is none or it is not supported;
    /// grFormatSelect prints lines about the latter.
    virtual GLenum GetInternalFormat() const = 0;
};

/// The GL object of a texture.
class grTexturableObject : public grTexturable {
  public:
    /// True when content has been uploaded.
    virtual bool IsLoaded() const = 0;
    /// Takes the texture off its target.
    virtual void Unload() = 0;
};

}  // namespace libgr
