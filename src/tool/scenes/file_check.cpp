#include "tool/scenes/file_check.h"

#include <filesystem>
#include <ostream>
#include <system_error>
#include <vector>

#include "formats/scene/misread_values.h"
#include "formats/scene/scene_completeness.h"
#include "formats/stl/stl_check.h"
#include "tool/foreign/foreign_scenes.h"
#include "tool/pictures/scene_pictures.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/standard_streams.h"

namespace ulktool {

namespace {

/// Prints what is wrong with pictures. True when all are shown.
bool check_pictures(const std::vector<scene_picture_t>& pictures, const std::string& owner,
                    std::ostream& log) {
    bool all_shown = true;
    for (const scene_picture_t& picture : pictures) {
        for (const std::string& fault : {picture.problem, picture.warning})
            if (!fault.empty())
                log << owner << ": " << picture.key << ' ' << picture.name << ": " << fault << '\n';
        all_shown = all_shown && picture.problem.empty();
    }
    return all_shown;
}

bool check_all_pictures(const ulk3d::scene_t& scene, const std::string& path, std::ostream& log) {
    bool all_shown = check_pictures(environment_pictures(scene.environment, path), "environment", log);
    std::size_t index = 0;
    for (const auto& entry : scene.models) {
        const std::string owner = "model " + std::to_string(index++);
        all_shown = check_pictures(model_pictures(entry->texture, path), owner, log) && all_shown;
    }
    return all_shown;
}

/// Prints a line if an STL file is a text, has no triangle, or has not the length that fits its count.
void report_stl(const std::string& path, std::ostream& log) {
    std::error_code error;
    if (std::filesystem::is_empty(path, error) && !error) {
        log << "the file is empty\n";
        return;
    }
    const auto check = ulk3d::check_stl(path.c_str());
    if (!check)
        return;
    if (check->is_text) {
        log << (foreign_input_endings().empty()
                    ? "this looks like a text STL file; only binary ones are read\n"
                    : "this looks like a text STL file; the modeller itself reads only binary ones\n");
        return;
    }
    const auto number = [](std::uint64_t value) { return std::to_string(value); };
    const bool is_longer = check->file_size > check->expected_size;
    if (!check->fits())
        log << "a count of " << number(check->announced) << " triangles makes "
            << number(check->expected_size) << " bytes, but the file has " << number(check->file_size)
            << (is_longer ? "; the rest is not read\n" : "; it ends too early\n");
    else if (check->announced == 0)
        log << "the file has no triangles\n";
}

/// Prints a line for each sign that a scene file was cut off.
void report_completeness(const std::string& path, std::ostream& log) {
    const ulk3d::scene_completeness_t found = ulk3d::scene_completeness(path.c_str());
    if (found.open_block)
        log << "the block that begins in line " << std::to_string(*found.open_block) << " has no end\n";
    if (found.lacks_last_feed)
        log << "the last line has no line feed; the file may be cut off\n";
}

void report_misread_values(const std::string& path, std::ostream& log) {
    ulk3d::find_misread_values(path.c_str(), [&log](const ulk3d::misread_value_t& found) {
        log << "line " << std::to_string(found.line) << ": " << found.message << '\n';
    });
}

}  // namespace

verdict_t check_file(scene_session_t& session, const std::string& path, std::ostream& log) {
    ulk3d::scene_t scene;
    verdict_t verdict;
    verdict.loads = session.load(scene, path, log);
    const std::string readable = path == standard_stream_name ? standard_input_path() : path;
    if (format_of(path) == scene_format_t::stl) {
        report_stl(path, log);
    } else if (format_of(path) == scene_format_t::scene_text) {
        report_completeness(readable, log);
        report_misread_values(readable, log);
    }
    verdict.shows_all_pictures = check_all_pictures(scene, path, log);
    return verdict;
}

}  // namespace ulktool
