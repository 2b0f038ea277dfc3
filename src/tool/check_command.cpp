#include <iostream>
#include <sstream>

#include "tool/commands.h"
#include "tool/scene_pictures.h"
#include "tool/scene_session.h"

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

/// Prints what is wrong with a file. True when it loads with all its pictures.
bool check_file(scene_session_t& session, const std::string& path) {
    ulk3d::scene_t scene;
    std::stringstream log;
    const bool loaded = session.load(scene, path, log);
    for (std::string line; std::getline(log, line);)
        std::cout << path << ": " << line << '\n';

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

}  // namespace

int check(arguments_t arguments) {
    if (arguments.empty()) {
        std::cerr << "ulktool check: no file named\n";
        return exit_usage;
    }
    scene_session_t session;
    bool all_well = true;
    for (const std::string& path : arguments)
        all_well = check_file(session, path) && all_well;
    return all_well ? exit_done : exit_failed;
}

}  // namespace ulktool
