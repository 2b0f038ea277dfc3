#pragma once

#include <array>

#include "gltextures/textures/gr_image_texture.h"
#include "utils/pictures/image1d.h"
#include "utils/pictures/image2d.h"
#include "utils/pictures/image3d.h"

/// The image textures. Each is made empty and set up; `Load` uploads it to the texture that is bound to its
/// target, as grTextureObject::Set does.
namespace libgr {

/// No command reaches this.
class grTexture1D : public grLevelTexture<libutils::image1d, tex_parameters_1d_t, std::uint64_t>,
                    public grBorderColor {
  public:
    std::uint32_t GetTarget() const override { return 1; }
    void Load() override;

    /// Sets the image of a level; the levels above are dropped. `max_size` 0 stores images at their own size,
    /// else storage gets sides of at least that, and of those of the image.
    void set_level(const libutils::image1d& image, std::uint64_t side, std::size_t level) {
        put_level(std::span<const libutils::image1d, 1>(&image, 1), side, level);
    }
    /// Sets the images of the levels from `first_level` on; levels above them stay.
    void set_levels(std::span<const libutils::image1d> images, std::uint64_t side, std::size_t first_level) {
        put_levels(images, side, first_level);
    }
};

class grTexture2D : public grLevelTexture<libutils::image2d, tex_parameters_2d_t>, public grBorderColor {
  public:
    std::uint32_t GetTarget() const override { return 2; }
    void Load() override { upload(transfer_t::store); }
    /// Uploads into the storage that is there.
    void Reload() override { upload(transfer_t::refill); }

    /// As grTexture1D.
    void set_level(const libutils::image2d& image, std::uint32_t side, std::size_t level) {
        put_level(std::span<const libutils::image2d, 1>(&image, 1), side, level);
    }
    void set_levels(std::span<const libutils::image2d> images, std::uint32_t side, std::size_t first_level) {
        put_levels(images, side, first_level);
    }

  private:
    void upload(transfer_t transfer);
};

/// No command reaches this.
class grTexture3D : public grLevelTexture<libutils::image3d, tex_parameters_3d_t>, public grBorderColor {
  public:
    std::uint32_t GetTarget() const override { return 3; }
    void Load() override;

    /// As grTexture1D.
    void set_level(const libutils::image3d& image, std::uint32_t side, std::size_t level) {
        put_level(std::span<const libutils::image3d, 1>(&image, 1), side, level);
    }
    void set_levels(std::span<const libutils::image3d> images, std::uint32_t side, std::size_t first_level) {
        put_levels(images, side, first_level);
    }
};

/// Six images per level, in the order of the faces: +x, -x, +y, -y, +z, -z.
class grTextureCubeMap : public grLevelTexture<libutils::image2d, tex_parameters_cube_t, std::uint32_t, 6> {
  public:
    std::uint32_t GetTarget() const override { return 6; }
    void Load() override;

    /// As grTexture1D, six images to a level.
    void set_level(std::span<const libutils::image2d, 6> faces, std::uint32_t side, std::size_t level) {
        put_level(faces, side, level);
    }
    void set_levels(std::span<const libutils::image2d> faces, std::uint32_t side, std::size_t first_level) {
        put_levels(faces, side, first_level);
    }
};

/// One image, uploaded to GL_TEXTURE_RECTANGLE as it is: no mipmaps, no padding, no border, rows as the
/// unpack state has them. Its target code is nevertheless that of 2D textures, so its object binds
/// GL_TEXTURE_2D, and its parameters go there. No command reaches this.
class grTextureRectangle : public grImageTexture<tex_parameters_2d_t>, public grBorderColor {
  public:
    std::uint32_t GetTarget() const override { return 2; }
    void Load() override { upload(transfer_t::store); }
    void Reload() override { upload(transfer_t::refill); }
    GLenum GetInternalFormat() const override;

    void set_image(const libutils::image2d& value, std::uint32_t side);

  private:
    void upload(transfer_t transfer);

    libutils::image2d image;
};

}  // namespace libgr
