#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <exception>
#include <iostream>
#include <span>
#include <utility>

#include "gltextures/gr_check_error.h"
#include "gltextures/textures/texture_stores.h"
#include "model/texture.h"
#include "render/maps/load_picture.h"
#include "utils/pictures/image_transforms.h"
#include "utils/text/paths.h"

namespace ulk3d {

using libgr::grCheckError;
using libgr::model_textures;
using libgr::texture_entry_t;
using libutils::image2d;
namespace image_format = libutils::image_format;
namespace image_type = libutils::image_type;

namespace {

/// Filters by their row: linear adds 1, mipmaps add 2.
constexpr std::array<GLint, 4> filters{GL_NEAREST, GL_LINEAR, GL_NEAREST_MIPMAP_NEAREST,
                                       GL_LINEAR_MIPMAP_LINEAR};

/// Looks a key up and makes a new entry for one that is not there. The entry is null when the store is full.
/// A new entry that is left by an exception is taken back: it has not got its picture.
struct stored_entry_t {
    explicit stored_entry_t(std::string entry_key)
        : key(std::move(entry_key)), handle(model_textures.find(key)), is_new(handle == 0) {
        if (is_new)
            handle = model_textures.insert(key, {});
        entry = handle != 0 ? model_textures.get(handle) : nullptr;
    }
    ~stored_entry_t() {
        if (is_new && std::uncaught_exceptions() > exceptions)
            model_textures.remove(key);
    }
    stored_entry_t(const stored_entry_t&) = delete;
    stored_entry_t& operator=(const stored_entry_t&) = delete;

    const int exceptions = std::uncaught_exceptions();
    const std::string key;
    std::uint32_t handle;
    bool is_new;
    texture_entry_t* entry;
};

void upload(texture_entry_t& entry, GLint min_filter, GLint mag_filter, bool mipmap, float aniso) {
    // Without pixels there is no texture: the surface is drawn as if it had no such map.
    if (entry.image.empty())
        return;
    const libgr::tex_parameters_2d_t parameters{.min_filter = min_filter,
                                                .mag_filter = mag_filter,
                                                .wrap_s = GL_REPEAT,
                                                .wrap_t = GL_REPEAT,
                                                .aniso = aniso};
    // A picture in the store never changes: one that GL has with these settings stays as it is.
    if (entry.object.IsLoaded() && entry.parameters == parameters && entry.content.has_mipmap() == mipmap)
        return;
    entry.parameters = parameters;
    entry.content.set_border(false);
    entry.content.set_mipmap(mipmap);
    entry.content.set_parameters(&entry.parameters);
    entry.content.set_level(entry.image, 0, 0);
    entry.object.Set(&entry.content);
}

/// The upload of a picture, as the settings of the model want it.
void upload(texture_entry_t& entry, const texture_t& texture) {
    const std::size_t min_row = (texture.nearlinear ? 1U : 0U) + (texture.mipmap ? 2U : 0U);
    const std::size_t mag_row = texture.maglinear ? 1U : 0U;
    upload(entry, filters[min_row], filters[mag_row], texture.mipmap, texture.aniso);
}

/// A map of one pixel, for models without a picture: the surface is shaded without a branch.
struct default_map_t {
    const char* key;
    std::uint32_t texture_t::*handle;
    std::uint32_t format;
    std::uint32_t type;
    std::array<unsigned char, 4> pixel;
    const char* failure;
};

constexpr default_map_t default_color{"color",
                                      &texture_t::color_handle,
                                      image_format::rgba,
                                      image_type::unsigned_integer,
                                      {255, 255, 255, 255},
                                      "(color)texobj.img2d.allocate() failed."};
/// The normal of the surface itself.
constexpr default_map_t default_bump{"bump",
                                     &texture_t::bump_handle,
                                     image_format::rgb,
                                     image_type::signed_integer,
                                     {0, 0, 127},
                                     "(bump)texobj.img2d.allocate() fail."};
/// Full specular strength.
constexpr default_map_t default_specular{"specular",           &texture_t::spec_handle,
                                         image_format::rgba,   image_type::unsigned_integer,
                                         {255, 255, 255, 255}, "(spec)texobj.img2d.allocate() failed."};

bool open_default(const default_map_t& map, texture_t& texture) {
    const stored_entry_t stored(map.key);
    texture.*map.handle = stored.handle;
    if (!stored.is_new || stored.entry == nullptr)
        return stored.entry != nullptr;
    image2d& image = stored.entry->image;
    image.format = map.format;
    image.type = map.type;
    image.bits = libutils::image_bits::bits_8;
    image.width = 1;
    image.height = 1;
    if (!image.allocate()) {
        std::cerr << map.failure << std::endl;
        return false;
    }
    std::copy_n(map.pixel.begin(), image.bitsperpixel() / 8, image.begin());
    upload(*stored.entry, GL_LINEAR, GL_LINEAR, false, texture.aniso);
    return true;
}

bool open_color(texture_t& texture, const char* base_file, const std::string& folder) {
    if (texture.texture.empty())
        return open_default(default_color, texture);
    const std::string path = folder + texture.texture;
    const stored_entry_t stored(path);
    texture.color_handle = stored.handle;
    if (!stored.is_new || stored.entry == nullptr)
        return stored.entry != nullptr;
    if (!load_picture(stored.entry->image, path, GL_TEXTURE_2D)) {
        std::cerr << base_file << ": base filename.\n"
                  << path << ": color autoloadformat failed." << std::endl;
        return false;
    }
    upload(*stored.entry, texture);
    return true;
}

// --- bump maps --------------------------------------------------------------------------------------------

/// Grey of an RGB or BGR picture; `target` stays as it is for any other one.
void make_monochrome(image2d& target, const image2d& source) {
    // The conversions tell of their failures, and what they leave then is shown.
    image2d converted;
    if (source.format == image_format::bgr) {
        static_cast<void>(libutils::bgr2rgb(converted, source));
        static_cast<void>(libutils::rgb2grey(target, converted));
    } else if (source.format == image_format::rgb) {
        static_cast<void>(libutils::rgb2grey(converted, source));
        target = converted;
    }
}

/// The entry of a picture in grey.
texture_entry_t* take_monochrome(texture_t& texture, const std::string& path, const image2d& picture) {
    const stored_entry_t stored(path + ".mono");
    if (stored.entry == nullptr)
        return nullptr;
    if (stored.is_new)
        make_monochrome(stored.entry->image, picture);
    texture.bump_handle = stored.handle;
    return stored.entry;
}

/// The entry of the normals on the heights of a grey picture.
texture_entry_t* take_normals(texture_t& texture, const std::string& path, const image2d& heights) {
    const stored_entry_t stored(path + ".norm");
    if (stored.entry == nullptr)
        return nullptr;
    if (stored.is_new && !libutils::heightmap2normalmap(stored.entry->image, heights)) {
        std::cerr << "heightmap2normalmap failed." << std::endl;
        // What a refused conversion leaves are the heights, which are no normals: the surface stays smooth.
        stored.entry->image = {};
    }
    texture.bump_handle = stored.handle;
    return stored.entry;
}

/// The entry of a picture that has normals for colours: the same bytes, read as signed.
texture_entry_t* take_signed(texture_t& texture, const std::string& path, const image2d& colors) {
    const stored_entry_t stored(path + ".sint");
    if (stored.entry == nullptr)
        return nullptr;
    texture.bump_handle = stored.handle;
    stored.entry->image = colors;
    stored.entry->image.type = image_type::signed_integer;
    return stored.entry;
}

bool open_bump(texture_t& texture, const std::string& folder) {
    if (texture.bumpmap.empty())
        return open_default(default_bump, texture);
    const std::string path = folder + texture.bumpmap;
    const stored_entry_t stored(path);
    texture.bump_handle = stored.handle;
    if (stored.entry == nullptr)
        return false;
    if (stored.is_new && !load_picture(stored.entry->image, path, GL_TEXTURE_2D)) {
        std::cerr << path << ": bump autoloadformat failed." << std::endl;
        return false;
    }

    texture_entry_t* shown = stored.entry;
    if (texture.bump2mono)
        shown = take_monochrome(texture, path, shown->image);
    if (shown != nullptr && shown->image.format == image_format::grey)
        shown = take_normals(texture, path, shown->image);
    else if (shown != nullptr && shown->image.type == image_type::unsigned_integer)
        shown = take_signed(texture, path, shown->image);
    if (shown == nullptr)
        return false;

    // At every open, also for an entry that was there.
    upload(*shown, texture);
    if (texture.bumpofs && shown->image.width != 0 && shown->image.height != 0) {
        texture.bump_offset_u = -0.5F / static_cast<float>(shown->image.width);
        texture.bump_offset_v = -0.5F / static_cast<float>(shown->image.height);
    }
    return true;
}

bool open_specular(texture_t& texture, const std::string& folder) {
    if (texture.specular.empty())
        return open_default(default_specular, texture);
    const std::string path = folder + texture.specular;
    const stored_entry_t stored(path);
    texture.spec_handle = stored.handle;
    if (!stored.is_new || stored.entry == nullptr)
        return stored.entry != nullptr;
    if (!load_picture(stored.entry->image, path, GL_TEXTURE_2D)) {
        std::cerr << path << ": autoloadformat failed." << std::endl;
        return false;
    }
    upload(*stored.entry, texture);
    return true;
}

}  // namespace

bool texture_t::open(const char* base_file) {
    const char* const base = base_file != nullptr ? base_file : "";
    const std::string folder = libutils::view_path(base).folder();

    if (!open_color(*this, base, folder))
        return false;
    grCheckError("texture_t::open(5)");
    if (!open_bump(*this, folder))
        return false;
    grCheckError("texture_t::open(6)");
    return open_specular(*this, folder);
}

}  // namespace ulk3d
