#include <array>
#include <iostream>

#include "tool/command_line/command_line.h"
#include "tool/commands/commands.h"

#ifdef ULK_HAVE_MESHOPTIMIZER

#include <cmath>
#include <set>
#include <string>

#include "tool/command_line/values.h"
#include "tool/scenes/find_model.h"
#include "tool/scenes/progress_line.h"
#include "tool/scenes/save_scene.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/scene_session.h"
#include "tool/scenes/standard_streams.h"
#include "tool/tidy/tidy_polygon.h"

#endif

namespace ulktool {

namespace {

#ifdef ULK_HAVE_MESHOPTIMIZER

struct job_t {
    std::string from, to;
    std::set<std::uint32_t> models;  ///< none for all of them
    tidy_options_t options;
};

double read_between(const given_option_t& option, double lowest, double highest, const char* wanted) {
    const double number = read_number(option.name, option.value);
    if (number < lowest || number > highest)
        throw usage_error_t(std::string(option.name) + " " + option.value + ": " + wanted);
    return number;
}

job_t read_job(const command_line_t& line) {
    job_t job{line.files()[0], line["-o"], {}, {}};
    require_known_ending(job.to);
    for (const given_option_t& option : line.options()) {
        if (option.name == "--model")
            job.models.insert(read_index(option.name, option.value));
        else if (option.name == "--weld")
            job.options.weld_tolerance =
                option.value.empty() ? 0 : read_between(option, 0, HUGE_VAL, "this is below 0");
        else if (option.name == "--simplify")
            job.options.most_triangles =
                static_cast<std::size_t>(read_integer(option.name, option.value, 1, 2'000'000'000));
        else if (option.name == "--smooth")
            job.options.smooth_degrees =
                read_between(option, 0, 180, "this is not an angle from 0 to 180 degrees");
    }
    return job;
}

std::string change(const char* name, std::uint64_t before, std::uint64_t after) {
    return std::string(name) + " " + std::to_string(before) + " -> " + std::to_string(after);
}

/// Tidies a model and tells what became of it. False, after a line on the standard error stream, when that
/// failed.
bool tidy_model(ulk3d::model_entry_t& model, std::uint32_t index, const job_t& job, std::ostream& told) {
    const std::string name = "model " + std::to_string(index);
    if (model.kind == ulk3d::model_kind_t::nurbs) {
        told << name << ": nurbs surface, left as it is\n";
        return true;
    }
    const auto tidy_with_progress = [&] {
        const progress_line_t progress("tidying " + name);
        return tidy_polygon(model.polygon, job.options);
    };
    const auto [before, after, failure] = tidy_with_progress();
    if (!failure.empty()) {
        std::cerr << job.from << ": " << name << ": " << failure << std::endl;
        return false;
    }
    told << name << ": " << change("triangles", before.triangles, after.triangles) << ", "
         << change("vertices", before.vertices, after.vertices) << ", "
         << change("strips", before.strips, after.strips) << ", "
         << change("bytes", before.bytes, after.bytes) << '\n';
    if (after.triangles > job.options.most_triangles.value_or(after.triangles))
        std::cerr << job.from << ": " << name << ": with fewer than " << after.triangles
                  << " triangles its surface would not stay whole\n";
    return true;
}

int tidy(const command_line_t& line) {
    job_t job = read_job(line);
    scene_session_t session;
    ulk3d::scene_t scene;
    if (!session.load_or_tell(scene, job.from))
        return exit_failed;
    if (job.models.empty())
        for (std::uint32_t index = 0; index < scene.models.size(); ++index)
            job.models.insert(index);
    // The scene may be on its way out through the standard output stream.
    std::ostream& told = job.to == standard_stream_name ? std::cerr : std::cout;
    for (const std::uint32_t index : job.models) {
        ulk3d::model_entry_t* const model = find_model_or_tell(scene, job.from, index);
        if (model == nullptr || !tidy_model(*model, index, job, told))
            return exit_failed;
    }
    return save_scene_or_tell(scene, job.from, job.to) ? exit_done : exit_failed;
}

#else

int tidy(const command_line_t&) {
    std::cerr << "ulktool tidy: this ulktool was built without meshoptimizer, which is needed for it"
              << std::endl;
    return exit_failed;
}

#endif

constexpr std::array<option_t, 5> options{{
    output_option,
    {.name = "--model",
     .value = value_t::needed,
     .value_name = "N",
     .help = "Tidies this model alone, or these when it is given several times. The first one is 0."},
    {.name = "--weld",
     .value = value_t::number_if_any,
     .value_name = "T",
     .help = "Makes one vertex of corners whose colours and texture coordinates agree and whose\n"
             "positions are the same, or no farther apart than T. Where their frames differ and there\n"
             "is no --smooth, the vertex gets the mean of its triangles' normals."},
    {.name = "--simplify",
     .value = value_t::needed,
     .value_name = "TRIANGLES",
     .help = "Thins a mesh out to this many triangles, as far as its surface stays whole. Only\n"
             "triangles that share vertices can be thinned out; single ones need --weld."},
    {.name = "--smooth",
     .value = value_t::needed,
     .value_name = "DEGREES",
     .help = "Makes all frames anew: normals are means over edges that are flatter than this angle,\n"
             "and a vertex on a sharper edge becomes several. Tangents follow the texture coordinates."},
}};

}  // namespace

const command_t tidy_command{
    .name = "tidy",
    .files = "SCENE",
    .help =
        "Makes meshes fit to be worked on: welds, thins out and smooths them, in this order, then\n"
        "leaves out empty triangles and unused vertices and makes long strips. Prints what there\n"
        "was before and after, and how many bytes it takes in memory. NURBS surfaces stay as they\n"
        "are.",
    .options = options,
    .example = "ulktool tidy scan.stl -o scan.ulk --weld --simplify 50000 --smooth 40",
    .run = tidy,
};

}  // namespace ulktool
