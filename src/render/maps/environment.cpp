#include "model/environment.h"

#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <exception>
#include <iostream>

#include "gltextures/textures/texture_stores.h"
#include "render/maps/load_picture.h"
#include "utils/text/paths.h"

namespace ulk3d {

using libgr::cube_entry_t;
using libgr::cube_textures;

namespace {

/// What the file names of the faces have before the extension, in GL's order.
constexpr std::array<const char*, 6> face_suffixes{"_posx", "_negx", "_posy", "_negy", "_posz", "_negz"};

void upload(cube_entry_t& entry) {
    entry.parameters = {.min_filter = GL_LINEAR_MIPMAP_LINEAR, .mag_filter = GL_LINEAR, .aniso = 1.0F};
    entry.content.set_border(false);
    entry.content.set_mipmap(true);
    entry.content.set_parameters(&entry.parameters);
    entry.content.set_level(entry.images, 0, 0);
    entry.object.Set(&entry.content);
}

/// One black pixel to each face: nothing to see.
bool make_black(cube_entry_t& entry) {
    libutils::image2d& first = entry.images.front();
    first.format = libutils::image_format::rgb;
    first.type = libutils::image_type::unsigned_integer;
    first.bits = libutils::image_bits::bits_8;
    first.width = 1;
    first.height = 1;
    first.compressed = false;
    if (!first.allocate()) {
        std::cerr << "environment_t::initex(): allocate fail." << std::endl;
        return false;
    }
    std::fill_n(first.begin(), 3, static_cast<unsigned char>(0));
    std::fill(entry.images.begin() + 1, entry.images.end(), first);
    return true;
}

/// The file of a cube map, and with a suffix in its name that of a face. Only the directory of the cube map's
/// name is looked at, never its drive: it lies in or below the scene's directory.
class cube_path_t {
  public:
    /// Both must outlive this.
    cube_path_t(const char* base_file, const std::string& cubetex)
        : base(libutils::view_path(base_file)), cube(libutils::view_path(cubetex)) {}

    std::string with_suffix(const char* suffix) const {
        std::string path = base.folder();
        return path.append(cube.directory).append(cube.name).append(suffix).append(cube.extension);
    }

  private:
    libutils::path_views_t base;
    libutils::path_views_t cube;
};

bool load_faces(cube_entry_t& entry, const cube_path_t& path, const char* base_file) {
    for (std::size_t face = 0; face < face_suffixes.size(); ++face) {
        const std::string face_path = path.with_suffix(face_suffixes[face]);
        if (!load_picture(entry.images[face], face_path, GL_TEXTURE_CUBE_MAP)) {
            std::cerr << base_file << ": base filename.\n"
                      << face_path << ": autoloadformat failed." << std::endl;
            return false;
        }
    }
    return true;
}

/// Takes a new entry back when it is left by an exception: it has not got its pictures.
class new_entry_t {
  public:
    explicit new_entry_t(const std::string& entry_key) : key(entry_key) {}
    ~new_entry_t() {
        if (std::uncaught_exceptions() > exceptions)
            cube_textures.remove(key);
    }
    new_entry_t(const new_entry_t&) = delete;
    new_entry_t& operator=(const new_entry_t&) = delete;

  private:
    const int exceptions = std::uncaught_exceptions();
    const std::string& key;
};

}  // namespace

bool environment_t::initex(const char* base_file) {
    const char* const base = base_file != nullptr ? base_file : "";
    const cube_path_t path(base, cubetex);
    const std::string key = cubetex.empty() ? "cube" : path.with_suffix("");
    cube_handle = cube_textures.find(key);
    if (cube_handle != 0)
        return true;
    cube_handle = cube_textures.insert(key, {});
    if (cube_handle == 0)
        return false;
    const new_entry_t taken_back(key);
    cube_entry_t& entry = *cube_textures.get(cube_handle);
    if (cubetex.empty() ? !make_black(entry) : !load_faces(entry, path, base))
        return false;
    upload(entry);
    return true;
}

std::string environment_t::face_path(const char* base_file, std::size_t face) const {
    return cube_path_t(base_file != nullptr ? base_file : "", cubetex).with_suffix(face_suffixes[face]);
}

}  // namespace ulk3d
