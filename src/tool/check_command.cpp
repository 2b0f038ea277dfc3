#include <iostream>
#include <sstream>

#include "tool/commands.h"
#include "tool/scene_session.h"

namespace ulktool {

namespace {

bool check_file(scene_session_t& session, const std::string& path) {
    ulk3d::scene_t scene;
    std::stringstream log;
    const bool loaded = session.load(scene, path, log);
    for (std::string line; std::getline(log, line);)
        std::cout << path << ": " << line << '\n';
    std::cout << path << (loaded ? ": loads" : ": does not load") << std::endl;
    return loaded;
}

}  // namespace

int check(arguments_t arguments) {
    if (arguments.empty()) {
        std::cerr << "ulktool check: no file named\n";
        return exit_usage;
    }
    scene_session_t session;
    bool all_load = true;
    for (const std::string& path : arguments)
        all_load = check_file(session, path) && all_load;
    return all_load ? exit_done : exit_failed;
}

}  // namespace ulktool
