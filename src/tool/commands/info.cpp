#include <array>
#include <iostream>

#include "tool/command_line/command_line.h"
#include "tool/commands/commands.h"
#include "tool/scenes/json_writer.h"
#include "tool/scenes/scene_session.h"
#include "tool/scenes/scene_summary.h"
#include "utils/text/numbers.h"

namespace ulktool {

namespace {

/// What the files that were described have together.
struct totals_t {
    std::uint64_t files = 0, models = 0;
    mesh_counts_t mesh;

    void add(const scene_summary_t& scene) {
        ++files;
        models += scene.models.size();
        mesh += scene.mesh();
    }
};

std::string text_of(const ulk3d::pos3& p) {
    std::string text = "(";
    libutils::append_number(text, p.x);
    text += ", ";
    libutils::append_number(text, p.y);
    text += ", ";
    libutils::append_number(text, p.z);
    return text + ")";
}

void print_mesh(const mesh_counts_t& mesh) {
    std::cout << mesh.vertices << " vertices, " << mesh.elements << " elements, " << mesh.triangles
              << " triangles\n";
}

void print_picture(const scene_picture_t& picture) {
    std::cout << "  " << picture.key << ": " << picture.name << ", "
              << (picture.problem.empty() ? picture.size : picture.problem);
    if (!picture.warning.empty())
        std::cout << "; " << picture.warning;
    std::cout << '\n';
}

void print_model(std::size_t index, const model_summary_t& model) {
    std::cout << "model " << index << ": ";
    if (model.net) {
        const auto& [points, order, resolution] = *model.net;
        std::cout << "nurbs surface, " << points[0] << " x " << points[1] << " points, order " << order[0]
                  << " x " << order[1] << ", resolution " << resolution[0] << " x " << resolution[1] << '\n';
    } else {
        std::cout << "polygon surface\n";
    }
    std::cout << "  mesh: ";
    print_mesh(model.mesh);
    std::cout << "  box: " << text_of(model.low) << " to " << text_of(model.high) << '\n';
    for (const scene_picture_t& picture : model.pictures)
        print_picture(picture);
}

void print_scene(const scene_summary_t& scene) {
    if (!scene.environment.empty())
        std::cout << "environment: " << scene.environment << '\n';
    std::cout << "models: " << scene.models.size() << '\n';
    for (std::size_t index = 0; index < scene.models.size(); ++index)
        print_model(index, scene.models[index]);
}

void print_totals(const totals_t& totals) {
    if (totals.files < 2 && totals.models < 2)
        return;
    std::cout << "total: ";
    if (totals.files > 1)
        std::cout << totals.files << " files, ";
    std::cout << totals.models << " models, ";
    print_mesh(totals.mesh);
}

/// The same as JSON.
class json_report_t {
  public:
    json_report_t() {
        json.begin_object();
        json.key("files");
        json.begin_array();
    }

    void add(const std::string& path, const scene_summary_t& scene) {
        json.begin_object();
        json.member("name", path);
        json.member("environment", scene.environment);
        json.key("models");
        json.begin_array();
        for (const model_summary_t& model : scene.models)
            write(model);
        json.end_array();
        json.end_object();
    }

    void end(const totals_t& totals) {
        json.end_array();
        json.key("totals");
        json.begin_object();
        json.member("files", totals.files);
        json.member("models", totals.models);
        write(totals.mesh);
        json.end_object();
        json.end_object();
    }

  private:
    void write(const mesh_counts_t& mesh) {
        json.member("vertices", mesh.vertices);
        json.member("elements", mesh.elements);
        json.member("triangles", mesh.triangles);
    }

    void write(std::string_view key, std::initializer_list<float> numbers) {
        json.key(key);
        json.begin_array();
        for (const float number : numbers)
            json.value(number);
        json.end_array();
    }

    void write(std::string_view key, const std::uint64_t (&counts)[2]) {
        json.key(key);
        json.begin_array();
        json.value(counts[0]);
        json.value(counts[1]);
        json.end_array();
    }

    void write(const net_summary_t& net) {
        write("points", net.points);
        write("order", net.order);
        write("resolution", net.resolution);
    }

    void write(const model_summary_t& model) {
        json.begin_object();
        json.member("kind", model.net ? "nurbs" : "polygon");
        if (model.net)
            write(*model.net);
        write(model.mesh);
        write("low", {model.low.x, model.low.y, model.low.z});
        write("high", {model.high.x, model.high.y, model.high.z});
        json.key("pictures");
        json.begin_array();
        for (const scene_picture_t& picture : model.pictures)
            write(picture);
        json.end_array();
        json.end_object();
    }

    void write(const scene_picture_t& picture) {
        json.begin_object();
        json.member("key", picture.key);
        json.member("name", picture.name);
        json.member("size", picture.size);
        json.member("problem", picture.problem);
        json.member("warning", picture.warning);
        json.end_object();
    }

    json_writer_t json{std::cout};
};

/// Describes each file that loads with `report`. False when one does not.
template <class Report>
bool describe(const std::vector<std::string>& paths, totals_t& totals, Report&& report) {
    scene_session_t session;
    bool all_load = true;
    for (const std::string& path : paths) {
        ulk3d::scene_t scene;
        if (!session.load_or_tell(scene, path)) {
            all_load = false;
            continue;
        }
        const scene_summary_t summary = summary_of(scene, path);
        totals.add(summary);
        report(path, summary);
    }
    return all_load;
}

int info(const command_line_t& line) {
    totals_t totals;
    bool all_load = false;
    if (line.has("--json")) {
        json_report_t report;
        all_load = describe(
            line.files(), totals,
            [&report](const std::string& path, const scene_summary_t& scene) { report.add(path, scene); });
        report.end(totals);
    } else {
        const bool several = line.files().size() > 1;
        all_load =
            describe(line.files(), totals, [several](const std::string& path, const scene_summary_t& scene) {
                if (several)
                    std::cout << path << ":\n";
                print_scene(scene);
            });
        print_totals(totals);
    }
    return all_load ? exit_done : exit_failed;
}

constexpr std::array<option_t, 1> options{{
    {.name = "--json", .help = "Prints one JSON object: \"files\" with their models, and \"totals\"."},
}};

}  // namespace

const command_t info_command{
    .name = "info",
    .files = "FILE...",
    .help = "Prints the models of each file with their counts, boxes and pictures, and totals.",
    .options = options,
    .example = "ulktool info scene.ulk",
    .run = info,
};

}  // namespace ulktool
