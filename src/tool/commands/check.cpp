#include <iostream>
#include <sstream>
#include <string_view>

#include "tool/command_line/command_line.h"
#include "tool/commands/commands.h"
#include "tool/scenes/file_check.h"
#include "tool/scenes/json_writer.h"
#include "tool/scenes/prefixed_lines.h"

namespace ulktool {

namespace {

/// Prints the lines of a check, each behind the file's name.
verdict_t print_check(scene_session_t& session, const std::string& path) {
    prefixed_lines_t lines(*std::cout.rdbuf(), path + ": ");
    std::ostream log(&lines);
    const verdict_t verdict = check_file(session, path, log);
    log << (!verdict.loads               ? "does not load"
            : verdict.shows_all_pictures ? "loads"
                                         : "loads, but not with all its pictures")
        << std::endl;
    return verdict;
}

verdict_t write_check(scene_session_t& session, const std::string& path, json_writer_t& json) {
    std::ostringstream log;
    const verdict_t verdict = check_file(session, path, log);
    json.begin_object();
    json.member("name", path);
    json.member("loads", verdict.loads);
    json.member("shows_all_pictures", verdict.shows_all_pictures);
    json.key("messages");
    json.begin_array();
    for (std::string_view rest = log.view(); !rest.empty();) {
        const std::size_t length = std::min(rest.find('\n'), rest.size());
        json.value(rest.substr(0, length));
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    json.end_array();
    json.end_object();
    return verdict;
}

bool print_checks(scene_session_t& session, const std::vector<std::string>& paths) {
    bool all_well = true;
    for (const std::string& path : paths)
        all_well = print_check(session, path).is_well() && all_well;
    return all_well;
}

bool write_checks(scene_session_t& session, const std::vector<std::string>& paths) {
    json_writer_t json(std::cout);
    bool all_well = true;
    json.begin_object();
    json.key("files");
    json.begin_array();
    for (const std::string& path : paths)
        all_well = write_check(session, path, json).is_well() && all_well;
    json.end_array();
    json.end_object();
    return all_well;
}

int check(const command_line_t& line) {
    scene_session_t session;
    const bool all_well =
        line.has("--json") ? write_checks(session, line.files()) : print_checks(session, line.files());
    return all_well ? exit_done : exit_failed;
}

constexpr std::array<option_t, 1> options{{
    {.name = "--json",
     .help = "Prints one JSON object: its \"files\" have \"name\", \"loads\", \"shows_all_pictures\" and\n"
             "\"messages\"."},
}};

}  // namespace

const command_t check_command{
    .name = "check",
    .files = "FILE...",
    .help =
        "Reports what the reader says of each file, the signs that it was cut off, numbers and sums\n"
        "that are read otherwise than written, and pictures that are not shown or look wrong.\n"
        "Lines count from 1. Exit status 1 if a file does not load, or not with all its pictures.",
    .options = options,
    .example = "ulktool check scenes/*.ulk",
    .run = check,
};

}  // namespace ulktool
