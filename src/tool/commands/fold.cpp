#include <array>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "model/math/vectors.h"
#include "operations/fold/fold_models.h"
#include "render/gl/mapped_span.h"
#include "tool/command_line/command_line.h"
#include "tool/command_line/values.h"
#include "tool/commands/commands.h"
#include "tool/scenes/find_model.h"
#include "tool/scenes/save_scene.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/scene_session.h"
#include "tool/scenes/scene_summary.h"

namespace ulktool {

using ulk3d::polygon_t;
using ulk3d::pos3;

namespace {

/// Polygon ids, both included.
struct id_range_t {
    std::uint32_t first, last;
};

struct job_t {
    std::string scene;
    std::uint32_t model = 0;
    std::vector<id_range_t> polygons;
    std::array<std::uint32_t, 2> axis{};  ///< vertices
    float angle = 0;
};

/// "3" or "5-9".
id_range_t read_range(std::string_view text) {
    const std::size_t dash = text.find('-');
    const std::uint32_t first = read_index("--polygons", text.substr(0, dash));
    const std::uint32_t last =
        dash == std::string_view::npos ? first : read_index("--polygons", text.substr(dash + 1));
    if (last < first)
        throw usage_error_t("--polygons " + std::string(text) + ": the first number is above the last one");
    return {first, last};
}

std::vector<id_range_t> read_ranges(std::string_view text) {
    std::vector<id_range_t> ranges;
    for (std::size_t comma = 0; comma != std::string_view::npos;) {
        comma = text.find(',');
        ranges.push_back(read_range(text.substr(0, comma)));
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return ranges;
}

std::array<std::uint32_t, 2> read_axis(std::string_view text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos)
        throw usage_error_t("--axis " + std::string(text) +
                            ": these are not two vertices with a comma between");
    return {read_index("--axis", text.substr(0, comma)), read_index("--axis", text.substr(comma + 1))};
}

job_t read_job(const command_line_t& line) {
    return {
        .scene = line.files()[0],
        .model = read_index("--model", line["--model"]),
        .polygons = read_ranges(line["--polygons"]),
        .axis = read_axis(line["--axis"]),
        .angle = static_cast<float>(read_number("--angle", line["--angle"])),
    };
}

/// Returns what is wrong, or an empty text.
std::string select_polygons(polygon_t& polygon, const std::vector<id_range_t>& ranges) {
    const std::uint64_t count = count_triangles(polygon);
    for (const auto& [first, last] : ranges) {
        if (last >= count)
            return none_of("polygon", first < count ? last : first, count);
        for (std::uint32_t id = first; id <= last; ++id)
            polygon.selectpolygon(id);
    }
    return "";
}

std::string fold_model(ulk3d::scene_t& scene, polygon_t& polygon, const job_t& job) {
    std::array<pos3, 2> ends{};
    for (std::size_t end = 0; end < 2; ++end) {
        if (job.axis[end] >= polygon.vertex_count())
            return none_of("vertex", job.axis[end], polygon.vertex_count());
        const ulk3d::mapped_span<const ulk3d::vertex_t, ulk3d::array_t> vertices(polygon.vertices);
        if (!vertices)
            return "the vertices can not be read";
        ends[end] = vertices.span()[job.axis[end]].position;
    }
    if (f_eq(ends[0], ends[1]))
        return "the axis has no direction: vertices " + std::to_string(job.axis[0]) + " and " +
               std::to_string(job.axis[1]) + " are at the same place";
    const std::string failure = select_polygons(polygon, job.polygons);
    if (!failure.empty())
        return failure;
    return fold_models(scene.models, ends[0], ends[1], job.angle) ? "" : "the fold has failed";
}

bool fold_or_tell(ulk3d::scene_t& scene, const job_t& job) {
    ulk3d::model_entry_t* const entry = find_polygon_model_or_tell(scene, job.scene, job.model);
    if (entry == nullptr)
        return false;
    const std::string failure = fold_model(scene, entry->polygon, job);
    if (failure.empty())
        return true;
    std::cerr << job.scene << ": model " << job.model << ": " << failure << std::endl;
    return false;
}

int fold(const command_line_t& line) {
    const job_t job = read_job(line);
    const std::string& to = line["-o"];
    require_known_ending(to);
    scene_session_t session;
    ulk3d::scene_t scene;
    const bool is_done =
        session.load_or_tell(scene, job.scene) && fold_or_tell(scene, job) &&
        save_scene_or_tell(scene, job.scene, to, {.spacing = ulk3d::model_spacing_t::blank_line});
    return is_done ? exit_done : exit_failed;
}

constexpr std::array<option_t, 5> options{{
    {.name = "--model",
     .value = value_t::needed,
     .value_name = "N",
     .help = "The number of the polygon model, from 0.",
     .is_needed = true},
    {.name = "--polygons",
     .value = value_t::needed,
     .value_name = "A,B-C...",
     .help = "The numbers of the polygons that turn, from 0, such as 3,5-9.",
     .is_needed = true},
    {.name = "--axis",
     .value = value_t::needed,
     .value_name = "V0,V1",
     .help = "The numbers of two vertices of the model, from 0. The crease runs from the first to the\n"
             "second.",
     .is_needed = true},
    {.name = "--angle",
     .value = value_t::needed,
     .value_name = "D",
     .help = "By how many degrees they turn, counter-clockwise for one whom the crease points at.",
     .is_needed = true},
    output_option,
}};

}  // namespace

const command_t fold_command{
    .name = "fold",
    .files = "SCENE",
    .help =
        "Turns polygons of a model about a crease, as the fold of the window does with marked ones. Where\n"
        "they share vertices with others they get their own.",
    .options = options,
    .example = "ulktool fold net.ulk --model 0 --polygons 40-47 --axis 30,32 --angle 90 -o folded.ulk",
    .run = fold,
};

}  // namespace ulktool
