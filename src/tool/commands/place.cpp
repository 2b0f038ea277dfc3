#include <array>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "operations/place/place_models.h"
#include "tool/command_line/command_line.h"
#include "tool/command_line/values.h"
#include "tool/commands/commands.h"
#include "tool/scenes/find_model.h"
#include "tool/scenes/save_scene.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/scene_session.h"

namespace ulktool {

namespace {

using ulk3d::place_kind_t;
using ulk3d::place_step_t;
using ulk3d::placed_model_t;
using ulk3d::placed_t;

/// Steps for one model, or for all of them as one body.
struct steps_t {
    std::optional<std::uint32_t> model;
    std::vector<place_step_t> steps;
};

double read_factor(const given_option_t& option) {
    const double factor = read_number(option.name, option.value);
    if (factor <= 0)
        throw usage_error_t(std::string(option.name) + " " + option.value + ": this is not above 0");
    return factor;
}

/// What was asked for, in the order of the line.
std::vector<steps_t> read_steps(const command_line_t& line) {
    std::vector<steps_t> all(1);
    for (const given_option_t& option : line.options()) {
        std::vector<place_step_t>& steps = all.back().steps;
        if (option.name == "--model")
            all.push_back({read_index(option.name, option.value), {}});
        else if (option.name == "--move")
            steps.push_back({place_kind_t::move, read_triple(option.name, option.value)});
        else if (option.name == "--turn")
            steps.push_back({place_kind_t::turn, read_triple(option.name, option.value)});
        else if (option.name == "--scale")
            steps.push_back({place_kind_t::scale, {read_factor(option)}});
        else if (option.name == "--center")
            steps.push_back({place_kind_t::center});
        else if (option.name == "--unit")
            steps.push_back({place_kind_t::unit});
    }
    return all;
}

bool tell_no_memory(const std::string& path) {
    std::cerr << path << ": there is not enough memory" << std::endl;
    return false;
}

/// Adds up what was asked for. False, after a line on the standard error stream, when a model is missing.
bool add_steps(std::vector<placed_model_t>& placed, const std::vector<steps_t>& all, ulk3d::scene_t& scene,
               const std::string& path) {
    for (const auto& [model, steps] : all) {
        std::span<placed_model_t> body = placed;
        if (model) {
            if (find_model_or_tell(scene, path, *model) == nullptr)
                return false;
            body = body.subspan(*model, 1);
        }
        if (!add_place_steps(body, steps))
            return tell_no_memory(path);
    }
    return true;
}

bool place_or_tell(const placed_model_t& model, std::size_t index, ulk3d::glpolygon_t& programs,
                   const std::string& path) {
    const placed_t result = place_model(model, programs);
    if (result == placed_t::no_memory)
        return tell_no_memory(path);
    if (result == placed_t::too_far)
        std::cerr << path << ": model " << std::to_string(index) << ": a coordinate would be too large"
                  << std::endl;
    return result == placed_t::done;
}

int place(const command_line_t& line) {
    const std::string& from = line.files()[0];
    const std::string& to = line["-o"];
    require_known_ending(to);
    const std::vector<steps_t> all = read_steps(line);

    scene_session_t session;
    ulk3d::scene_t scene;
    if (!session.load_or_tell(scene, from))
        return exit_failed;
    std::vector<placed_model_t> placed;
    for (const auto& entry : scene.models)
        placed.push_back({entry.get(), {}});
    if (!add_steps(placed, all, scene, from))
        return exit_failed;
    for (std::size_t index = 0; index < placed.size(); ++index)
        if (!place_or_tell(placed[index], index, session.programs(), from))
            return exit_failed;
    return save_scene_or_tell(scene, from, to) ? exit_done : exit_failed;
}

constexpr std::array<option_t, 7> options{{
    output_option,
    {.name = "--model",
     .value = value_t::needed,
     .value_name = "N",
     .help = "What follows, up to the next --model, is for this model alone. What stands before the\n"
             "first --model is for all models as one body. The first model is 0."},
    {.name = "--move", .value = value_t::needed, .value_name = "X,Y,Z", .help = "Moves by these distances."},
    {.name = "--turn",
     .value = value_t::needed,
     .value_name = "X,Y,Z",
     .help = "Turns by these degrees about the x axis, then the y axis, then the z axis through the\n"
             "origin, counter-clockwise as seen from where the axis points to."},
    {.name = "--scale",
     .value = value_t::needed,
     .value_name = "S",
     .help = "Makes it S times as large, from the origin. S is above 0."},
    {.name = "--center", .help = "Moves the middle of the box to the origin."},
    {.name = "--unit",
     .help = "Moves the middle of the box to the origin and makes its longest side 1, so that all of\n"
             "it lies from -0.5 to 0.5."},
}};

}  // namespace

const command_t place_command{
    .name = "place",
    .files = "SCENE",
    .help =
        "Moves, turns and scales models, step by step in the order of the options: points, frames\n"
        "and the nets of NURBS surfaces. Numbers are rounded once, after the last step.",
    .options = options,
    .example = "ulktool place part.stl -o part.ulk --unit --turn -90,0,0 --model 0 --move 0,1.5,0",
    .run = place,
};

}  // namespace ulktool
