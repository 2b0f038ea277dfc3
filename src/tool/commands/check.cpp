#include <iostream>

#include "formats/scene/scene_completeness.h"
#include "formats/scene_files.h"
#include "formats/stl/stl_check.h"
#include "tool/command_line/command_line.h"
#include "tool/commands/commands.h"
#include "tool/scenes/prefixed_lines.h"
#include "tool/pictures/scene_pictures.h"
#include "tool/scenes/scene_session.h"

namespace ulktool {

namespace {

/// Prints what is wrong with pictures. True when all are shown.
bool check_pictures(const std::vector<scene_picture_t>& pictures, const std::string& owner) {
    bool all_shown = true;
    for (const scene_picture_t& picture : pictures) {
        for (const std::string& fault : {picture.problem, picture.warning})
            if (!fault.empty())
                std::cout << owner << ": " << picture.key << ' ' << picture.name << ": " << fault << '\n';
        all_shown = all_shown && picture.problem.empty();
    }
    return all_shown;
}

/// Prints a line if an STL file is a text, and else if its length does not fit its count.
void report_stl_length(const std::string& path, std::ostream& log) {
    const auto check = ulk3d::check_stl(path.c_str());
    if (!check || check->fits())
        return;
    if (check->is_text) {
        log << "this looks like a text STL file; only binary ones are read\n";
        return;
    }
    const auto number = [](std::uint64_t value) { return std::to_string(value); };
    const bool is_longer = check->file_size > check->expected_size;
    log << "a count of " << number(check->announced) << " triangles makes " << number(check->expected_size)
        << " bytes, but the file has " << number(check->file_size)
        << (is_longer ? "; the rest is not read\n" : "; it ends too early\n");
}

/// Prints a line for each sign that a scene file was cut off.
void report_completeness(const std::string& path, std::ostream& log) {
    const ulk3d::scene_completeness_t found = ulk3d::scene_completeness(path.c_str());
    if (found.open_block)
        log << "the block that begins in line " << std::to_string(*found.open_block) << " has no end\n";
    if (found.lacks_last_feed)
        log << "the last line has no line feed; the file may be cut off\n";
}

/// Prints what is wrong with a file. True when it loads with all its pictures.
bool check_file(scene_session_t& session, const std::string& path) {
    ulk3d::scene_t scene;
    prefixed_lines_t lines(*std::cout.rdbuf(), path + ": ");
    std::ostream log(&lines);
    const bool loaded = session.load(scene, path, log);
    if (ulk3d::is_stl_path(path.c_str()))
        report_stl_length(path, log);
    else
        report_completeness(path, log);

    bool pictures_well =
        check_pictures(environment_pictures(scene.environment, path), path + ": environment");
    std::size_t index = 0;
    for (const auto& entry : scene.models) {
        const std::string owner = path + ": model " + std::to_string(index++);
        pictures_well = check_pictures(model_pictures(entry->texture, path), owner) && pictures_well;
    }
    std::cout << path
              << (!loaded         ? ": does not load"
                  : pictures_well ? ": loads"
                                  : ": loads, but not with all its pictures")
              << std::endl;
    return loaded && pictures_well;
}

int check(const command_line_t& line) {
    scene_session_t session;
    bool all_well = true;
    for (const std::string& path : line.files())
        all_well = check_file(session, path) && all_well;
    return all_well ? exit_done : exit_failed;
}

}  // namespace

const command_t check_command{
    .name = "check",
    .files = "FILE...",
    .help =
        "Reports what the reader says of each file, the signs that it was cut off (lines count\n"
        "from 1), and which of its pictures are not shown or look wrong.\n"
        "Exit status 1 if one does not load, or not with all its pictures.",
    .options = {},
    .example = "ulktool check scenes/*.ulk",
    .run = check,
};

}  // namespace ulktool
