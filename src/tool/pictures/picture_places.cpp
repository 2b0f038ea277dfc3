#include "tool/pictures/picture_places.h"

#include <array>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "utils/text/paths.h"

namespace ulktool {

namespace {

using picture_name_t = std::string ulk3d::texture_t::*;

struct map_t {
    const char* key;
    picture_name_t name;
};

constexpr std::array<map_t, 3> maps{{{"texture", &ulk3d::texture_t::texture},
                                     {"bumpmap", &ulk3d::texture_t::bumpmap},
                                     {"specular", &ulk3d::texture_t::specular}}};

std::string folder_of(const std::string& path) {
    return libutils::view_path(path).folder();
}

/// The folder without links and detours, as far as it is there; "." for the working folder.
std::filesystem::path whole_folder(const std::string& path) {
    const std::string folder = folder_of(path);
    std::error_code error;
    const std::filesystem::path named = folder.empty() ? "." : folder;
    std::filesystem::path whole = std::filesystem::weakly_canonical(named, error);
    return error ? named : whole;
}

bool is_file(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace

void report_lost_pictures(const ulk3d::scene_t& scene, const std::string& path, std::ostream& log) {
    const auto report = [&](const std::string& owner, const std::string& key, const std::string& name) {
        log << path << ": " << owner << ": " << key << ' ' << name << " will not be found there\n";
    };
    constexpr std::size_t faces = 6;
    for (std::size_t face = 0; face < faces && !scene.environment.cubetex.empty(); ++face) {
        const std::string picture = scene.environment.face_path(path.c_str(), face);
        if (!is_file(picture)) {
            report("environment", "cubetex", scene.environment.cubetex);
            break;
        }
    }
    std::size_t index = 0;
    for (const auto& entry : scene.models) {
        const std::string owner = "model " + std::to_string(index++);
        for (const map_t& map : maps) {
            const std::string& name = entry->texture.*map.name;
            if (!name.empty() && !is_file(folder_of(path) + name))
                report(owner, map.key, name);
        }
    }
}

std::string rebased_name(const std::string& name, const std::string& from, const std::string& to) {
    // A name that begins with a separator is put behind the folder like any other.
    const std::filesystem::path picture(whole_folder(from).string() + '/' + name);
    return picture.lexically_normal().lexically_relative(whole_folder(to)).string();
}

void rebase_pictures(ulk3d::scene_t& scene, const std::string& from, const std::string& to) {
    const auto rebase = [&](std::string& name) {
        if (!name.empty())
            name = rebased_name(name, from, to);
    };
    rebase(scene.environment.cubetex);
    for (const auto& entry : scene.models)
        for (const map_t& map : maps)
            rebase(entry->texture.*map.name);
}

}  // namespace ulktool
