#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "gltextures/gl_no_object.h"
#include "gltextures/textures/gr_tex_parameter.h"
#include "gltextures/textures/gr_texturable.h"
#include "gltextures/upload/gr_format.h"
#include "gltextures/upload/gr_load.h"

namespace libgr {

/// `max_size` as a texture keeps it: 0 for storage at the image's own size, else the side that storage must
/// have for this image, at least `max_size`.
std::uint64_t storage_demand(const pixel_source_t& image, std::uint64_t max_size);

/// The internal format of an image, `gl_no_object` for one that is not supported.
GLenum internal_format_of(const pixel_source_t& image);

/// The settings of an image texture. What pointers point at is not owned and is read at each `Load`.
template <class Parameters, class Size = std::uint32_t>
class grImageTexture : public grTexturableImageGL {
  public:
    /// Asks for a compressed internal format. No command reaches this.
    void set_compressed(bool value) { compressed = value; }
    /// Asks for mipmaps to be built.
    void set_mipmap(bool value) { mipmap = value; }
    bool has_mipmap() const { return mipmap; }
    /// The image has a border.
    void set_border(bool value) { border = value; }
    /// Null for none.
    void set_parameters(const Parameters* value) { parameters = value; }

  protected:
    upload_settings_t settings(transfer_t transfer) const {
        return {.max_size = max_size,
                .compressed = compressed,
                .mipmap = mipmap,
                .border = border,
                .transfer = transfer};
    }

    Size max_size = 0;
    bool compressed = false;
    bool mipmap = false;
    bool border = false;
    const Parameters* parameters = nullptr;
};

/// Colour of the texels around an image.
class grBorderColor {
  public:
    /// Four floats, RGBA, not owned; null for none. No command reaches this.
    void set_border_color(const GLfloat* value) { border_color = value; }

  protected:
    ~grBorderColor() = default;

    const GLfloat* border_color = nullptr;
};

/// An image texture of mip levels, each of `records` images. Images are taken by reference: their bytes are
/// shared.
template <class Image, class Parameters, class Size = std::uint32_t, std::size_t records = 1>
class grLevelTexture : public grImageTexture<Parameters, Size> {
  public:
    GLenum GetInternalFormat() const override {
        return levels.empty() ? gl_no_object : internal_format_of(pixel_source(levels.front()));
    }

  protected:
    /// Sets the images of a level, which becomes the last one.
    void put_level(std::span<const Image, records> images, Size side, std::size_t level) {
        levels.resize((level + 1) * records);
        std::copy(images.begin(), images.end(), levels.end() - records);
        this->max_size = demand(images, side);
    }

    /// Sets the images of a run of levels; levels above the run stay.
    void put_levels(std::span<const Image> images, Size side, std::size_t first_level) {
        const std::size_t first = first_level * records;
        levels.resize(std::max(levels.size(), first + images.size()));
        std::copy(images.begin(), images.end(), levels.begin() + static_cast<std::ptrdiff_t>(first));
        this->max_size = demand(images, side);
    }

    std::vector<pixel_source_t> sources() const {
        std::vector<pixel_source_t> result;
        result.reserve(levels.size());
        for (const Image& image : levels)
            result.push_back(pixel_source(image));
        return result;
    }

    std::vector<Image> levels;

  private:
    static Size demand(std::span<const Image> images, Size side) {
        std::uint64_t result = side;
        for (const Image& image : images)
            result = storage_demand(pixel_source(image), result);
        return static_cast<Size>(result);
    }
};

}  // namespace libgr
