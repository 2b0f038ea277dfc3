#include "tool/pictures/scene_pictures.h"

#include <filesystem>
#include <fstream>

#include "gltextures/textures/texture_stores.h"
#include "render/maps/load_picture.h"
#include "tool/pictures/picture_warnings.h"
#include "utils/codecs/file_forms.h"
#include "utils/text/paths.h"

namespace ulktool {

using libutils::image2d;

namespace {

/// Why no picture could be read from a path.
std::string problem_of(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        return "no such file";
    if (!std::filesystem::is_regular_file(status))
        return "not a file";
    if (libutils::find_file_form(path.c_str()) == nullptr)
        return "not named " + libutils::file_form_list();
    if (!std::ifstream(path, std::ios::binary).is_open())
        return "can not be opened";
    return "not a picture that can be read";
}

struct map_row_t {
    const char* key;
    std::string ulk3d::texture_t::*name;
    std::uint32_t ulk3d::texture_t::*handle;
};

constexpr map_row_t color_map{"texture", &ulk3d::texture_t::texture, &ulk3d::texture_t::color_handle};
constexpr map_row_t bump_map{"bumpmap", &ulk3d::texture_t::bumpmap, &ulk3d::texture_t::bump_handle};
constexpr map_row_t specular_map{"specular", &ulk3d::texture_t::specular, &ulk3d::texture_t::spec_handle};

/// The handle with which the model draws a map. One that the load did not come to, as an earlier one had
/// failed, is loaded by itself.
std::uint32_t drawn_handle(const ulk3d::texture_t& texture, const map_row_t& map,
                           const std::string& scene_path) {
    if (texture.*map.handle != 0)
        return texture.*map.handle;
    ulk3d::texture_t alone;
    alone.*map.name = texture.*map.name;
    alone.bump2mono = texture.bump2mono;
    static_cast<void>(alone.open(scene_path.c_str()));
    return alone.*map.handle;
}

bool is_shown(std::uint32_t handle) {
    return handle != 0 && libgr::model_textures.get(handle)->object.IsLoaded();
}

/// What the store has of a file, from which other pictures may have been made.
image2d image_of(const std::string& path) {
    const std::uint32_t handle = libgr::model_textures.find(path);
    return handle != 0 ? libgr::model_textures.get(handle)->image : image2d();
}

std::string size_of(const image2d& image) {
    return std::to_string(image.width) + " x " + std::to_string(image.height);
}

bool has_colours(const image2d& image) {
    return image.format == libutils::image_format::rgb || image.format == libutils::image_format::bgr;
}

/// Why a picture that was read is not shown.
std::string problem_of_heights(const ulk3d::texture_t& texture, const image2d& image) {
    if (texture.bump2mono && !has_colours(image))
        return "bump2mono takes only pictures with red, green and blue; the surface stays smooth";
    return "can not be turned into normals; the surface stays smooth";
}

scene_picture_t model_picture(const ulk3d::texture_t& texture, const map_row_t& map,
                              const std::string& scene_path) {
    const std::string& name = texture.*map.name;
    const std::string path = libutils::view_path(scene_path).folder() + name;
    const bool shown = is_shown(drawn_handle(texture, map, scene_path));
    const image2d image = image_of(path);
    scene_picture_t picture{.key = map.key, .name = name, .size = "", .problem = "", .warning = ""};
    if (image.empty()) {
        picture.problem = problem_of(path);
        return picture;
    }
    picture.size = size_of(image);
    if (!shown)
        picture.problem = problem_of_heights(texture, image);
    picture.warning = picture_warnings(path, image, map.handle == color_map.handle);
    return picture;
}

/// The image of a face that is shown; of a cube map that is not shown, as one of its faces could not be
/// loaded, that which is in the file. Empty when it can not be shown.
image2d image_of_face(const ulk3d::environment_t& environment, std::size_t face, const std::string& path) {
    image2d image;
    if (environment.cube_handle != 0)
        image = libgr::cube_textures.get(environment.cube_handle)->images[face];
    if (image.empty())
        static_cast<void>(ulk3d::load_picture(image, path, GL_TEXTURE_CUBE_MAP));
    return image;
}

scene_picture_t face_picture(const std::string& path, const image2d& image) {
    scene_picture_t picture{.key = "cubetex", .name = path, .size = "", .problem = "", .warning = ""};
    if (image.empty()) {
        picture.problem = problem_of(path);
        return picture;
    }
    picture.size = size_of(image);
    picture.warning = picture_warnings(path, image, false);
    return picture;
}

}  // namespace

std::vector<scene_picture_t> model_pictures(const ulk3d::texture_t& texture, const std::string& scene_path) {
    std::vector<scene_picture_t> pictures;
    for (const map_row_t& map : {color_map, bump_map, specular_map})
        if (!(texture.*map.name).empty())
            pictures.push_back(model_picture(texture, map, scene_path));
    return pictures;
}

std::vector<scene_picture_t> environment_pictures(const ulk3d::environment_t& environment,
                                                  const std::string& scene_path) {
    std::vector<scene_picture_t> pictures;
    if (environment.cubetex.empty())
        return pictures;
    std::string first_size;
    for (std::size_t face = 0; face < 6; ++face) {
        const std::string path = environment.face_path(scene_path.c_str(), face);
        const image2d image = image_of_face(environment, face, path);
        scene_picture_t picture = face_picture(path, image);
        if (first_size.empty())
            first_size = picture.size;
        if (image.width != image.height)
            picture.problem = "not square: " + picture.size;
        else if (!image.empty() && picture.size != first_size)
            picture.problem = "not as large as the other faces: " + picture.size;
        pictures.push_back(std::move(picture));
    }
    return pictures;
}

}  // namespace ulktool
