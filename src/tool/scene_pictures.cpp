#include "tool/scene_pictures.h"

#include <filesystem>
#include <fstream>

#include "gltextures/textures/texture_stores.h"
#include "utils/codecs/file_forms.h"
#include "utils/pictures/image_files.h"
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

scene_picture_t described(const char* key, const std::string& name, const std::string& path,
                          const image2d& image, bool loaded) {
    if (!loaded)
        return {key, name, "", problem_of(path)};
    return {key, name, std::to_string(image.width) + " x " + std::to_string(image.height), ""};
}

/// The image that loading left in the store or, if it never reached this path, the image in the file.
image2d image_at(const std::string& path, bool& loaded) {
    if (const std::uint32_t handle = libgr::model_textures.find(path); handle != 0) {
        const image2d image = libgr::model_textures.get(handle)->image;
        loaded = !image.empty() && image.holds_pixels();
        return image;
    }
    image2d image;
    loaded = libutils::autoloadformat(image, path.c_str());
    return image;
}

image2d face_at(const ulk3d::environment_t& environment, std::size_t face, const std::string& path,
                bool& loaded) {
    image2d image;
    if (environment.cube_handle != 0)
        image = libgr::cube_textures.get(environment.cube_handle)->images[face];
    loaded = !image.empty() && image.holds_pixels();
    if (!loaded) {
        image = {};
        loaded = libutils::autoloadformat(image, path.c_str());
    }
    return image;
}

bool has_colours(const image2d& image) {
    return image.format == libutils::image_format::rgb || image.format == libutils::image_format::bgr;
}

}  // namespace

std::vector<scene_picture_t> model_pictures(const ulk3d::texture_t& texture, const std::string& scene_path) {
    const std::string folder = libutils::view_path(scene_path).folder();

    std::vector<scene_picture_t> pictures;
    const auto add = [&](const char* key, const std::string& name, bool taken_as_grey) {
        if (name.empty())
            return;
        bool loaded = false;
        const image2d image = image_at(folder + name, loaded);
        scene_picture_t picture = described(key, name, folder + name, image, loaded);
        if (loaded && taken_as_grey && !has_colours(image))
            picture.problem =
                "bump2mono takes only pictures with red, green and blue; the surface stays smooth";
        pictures.push_back(std::move(picture));
    };
    add("texture", texture.texture, false);
    add("bumpmap", texture.bumpmap, texture.bump2mono);
    add("specular", texture.specular, false);
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
        bool loaded = false;
        const image2d image = face_at(environment, face, path, loaded);
        scene_picture_t picture = described("cubetex", path, path, image, loaded);
        if (first_size.empty())
            first_size = picture.size;
        if (loaded && image.width != image.height)
            picture.problem = "not square: " + picture.size;
        else if (loaded && picture.size != first_size)
            picture.problem = "not as large as the other faces: " + picture.size;
        pictures.push_back(std::move(picture));
    }
    return pictures;
}

}  // namespace ulktool
