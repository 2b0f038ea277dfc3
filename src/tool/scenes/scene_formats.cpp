#include "tool/scenes/scene_formats.h"

#include "tool/command_line/command_line.h"
#include "tool/foreign/foreign_scenes.h"
#include "utils/text/strings.h"

namespace ulktool {

namespace {

bool is_same(std::string_view ending, std::string_view known) {
    return ending.size() == known.size() && libutils::has_extension(ending, known) == 0;
}

std::string known_endings(const std::string& foreign) {
    return "known are .ulk .stl" + (foreign.empty() ? foreign : " " + foreign);
}

}  // namespace

std::string_view ending_of(std::string_view path) {
    const std::size_t slash = path.find_last_of('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    const std::size_t dot = name.find_last_of('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot);
}

scene_format_t format_of(std::string_view path) {
    const std::string_view ending = ending_of(path);
    if (ending.empty() || is_same(ending, ".ulk") || is_same(ending, ".ulk~"))
        return scene_format_t::scene_text;
    if (is_same(ending, ".stl"))
        return scene_format_t::stl;
    return is_foreign_path(path) ? scene_format_t::foreign : scene_format_t::unknown;
}

std::string unknown_ending_message(std::string_view path) {
    return "no format has the ending " + std::string(ending_of(path)) + "; " +
           known_endings(foreign_input_endings());
}

void require_known_ending(const std::string& path) {
    const scene_format_t format = format_of(path);
    if (format == scene_format_t::unknown || (format == scene_format_t::foreign && !is_foreign_output(path)))
        throw usage_error_t(path + ": nothing is written with the ending " + std::string(ending_of(path)) +
                            "; " + known_endings(foreign_output_endings()));
}

}  // namespace ulktool
