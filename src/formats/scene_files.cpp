#include "formats/scene_files.h"

#include <cstring>
#include <utility>

#include "formats/scene/line_log.h"
#include "formats/scene/scene_text.h"
#include "formats/stl/stl_reader.h"
#include "formats/stl/stl_writer.h"
#include "model/try_allocate.h"
#include "utils/memory/memory_budget.h"
#include "utils/text/strings.h"

namespace ulk3d {

namespace {

/// Appends a new model to a list.
model_entry_t& append_model(model_list_t& models, model_kind_t kind) {
    return *models.emplace_back(std::make_unique<model_entry_t>(kind));
}

/// Walks the top level of a scene file: passes each block to its reader and counts the blocks.
class top_level_reader {
  public:
    /// `scene_environment` receives the environment blocks; when it is null their lines are unknown lines.
    top_level_reader(const char* scene_path, text_lines& scene_input, environment_t* scene_environment,
                     model_list_t& scene_models, glpolygon_t& view, std::ostream& messages)
        : path(scene_path),
          input(scene_input),
          environment(scene_environment),
          models(scene_models),
          glpolygon(view),
          log(messages) {}

    /// The number of blocks in the file, 0 when one of them failed.
    std::size_t read() {
        std::size_t blocks = 0;
        while (!input.failed()) {
            line = input.next();
            const outcome_t outcome = read_line();
            if (input.met_overlong_line()) {
                line_log(log, line_counter).message(": the line does not fit into memory.");
                return 0;
            }
            if (outcome == outcome_t::failure)
                return 0;
            if (outcome == outcome_t::block)
                ++blocks;
            ++line_counter;
        }
        if (!input.has_read_error())
            return blocks;
        put_line(log, path, ": file read error.");
        return 0;
    }

  private:
    enum class outcome_t { no_block, block, failure };

    outcome_t read_line() {
        if (environment != nullptr && line.starts_with("begin environment"))
            return outcome_of(read_environment(path, *environment, line_counter, line, input, log));
        if (line.starts_with("begin nurbs_surface")) {
            // A block that fails leaves its model in the list; the caller drops the models of a failed load.
            model_entry_t& entry = append_model(models, model_kind_t::nurbs);
            return outcome_of(read_nurbs_surface(path, entry.nurbs, entry.texture, entry.polygon, glpolygon,
                                                 line_counter, line, input, log));
        }
        if (line.starts_with("begin polygon_surface")) {
            model_entry_t& entry = append_model(models, model_kind_t::polygon);
            return outcome_of(
                read_polygon_surface(path, entry.texture, entry.polygon, line_counter, line, input, log));
        }
        if (!line.is_comment() && !line.is_blank())
            put_line(log, "unknown line: ", line.view());
        return outcome_t::no_block;
    }

    static outcome_t outcome_of(bool read_well) { return read_well ? outcome_t::block : outcome_t::failure; }

    const char* path;
    text_lines& input;
    environment_t* environment;
    model_list_t& models;
    glpolygon_t& glpolygon;
    std::ostream& log;
    text_line_t line;
    std::uint64_t line_counter = 0;
};

bool read_scene(scene_t& scene, const char* path, text_lines&& input, glpolygon_t& glpolygon,
                std::ostream& log) {
    if (!input.is_open()) {
        put_line(log, path, ": file open error.");
        return false;
    }
    return top_level_reader(path, input, &scene.environment, scene.models, glpolygon, log).read() != 0;
}

/// Gives a model the path as its name and writes its block.
void write_model(model_entry_t& entry, const char* path, text_output& output) {
    entry.polygon.name = path;
    if (entry.kind == model_kind_t::polygon) {
        write_polygon_surface(entry.texture, entry.polygon, output);
    } else if (entry.kind == model_kind_t::nurbs) {
        entry.nurbs.name = path;
        write_nurbs_surface(entry.nurbs, output);
    }
}

bool write_models(model_list_t& models, const char* path, text_output& output, model_spacing_t spacing) {
    for (const auto& entry : models) {
        write_model(*entry, path, output);
        if (spacing == model_spacing_t::blank_line)
            output.line();
        // Flushing after each model stops a failing save at the model where it failed.
        if (!output.flush())
            return false;
    }
    return output.complete();
}

bool write_scene(scene_t& scene, const char* path, text_output& output, model_spacing_t spacing) {
    if (write_environment(scene.environment, output))
        output.line();
    return write_models(scene.models, path, output, spacing);
}

}  // namespace

bool is_stl_path(const char* path) {
    return libutils::has_extension(path, ".stl") == 0;
}

bool load_scene(scene_t& scene, const char* path, glpolygon_t& glpolygon, std::ostream& log) {
    const libutils::load_budget_t budget;
    if (is_stl_path(path))
        return load_stl(path, scene);
    return read_scene(scene, path, text_lines::open(path), glpolygon, log);
}

bool load_scene_text(scene_t& scene, const char* name, libutils::file_descriptor&& file, std::uint64_t size,
                     glpolygon_t& glpolygon, std::ostream& log) {
    const libutils::load_budget_t budget;
    return read_scene(scene, name, text_lines::of(std::move(file), size), glpolygon, log);
}

std::size_t load_models(model_list_t& models, const char* path, glpolygon_t& glpolygon, std::ostream& log) {
    const libutils::load_budget_t budget;
    put_line(log, "load filename: ", path);
    text_lines input = text_lines::open(path);
    if (!input.is_open())
        return 0;
    return top_level_reader(path, input, nullptr, models, glpolygon, log).read();
}

bool save_model(model_entry_t& entry, const char* path) {
    return try_command(path, [&] {
        if (is_stl_path(path))
            return save_stl_model(path, entry);
        text_output output(path);
        write_model(entry, path, output);
        return output.complete();
    });
}

bool save_models(model_list_t& models, const char* path) {
    return try_command(path, [&] {
        if (is_stl_path(path))
            return save_stl_models(path, models);
        text_output output(path);
        return write_models(models, path, output, model_spacing_t::blank_line);
    });
}

bool save_scene(scene_t& scene, const char* path, model_spacing_t spacing) {
    return try_command(path, [&] {
        if (is_stl_path(path))
            return save_stl_models(path, scene.models);
        text_output output(path);
        return write_scene(scene, path, output, spacing);
    });
}

bool save_scene_text(scene_t& scene, const char* name, libutils::file_descriptor&& file,
                     model_spacing_t spacing) {
    return try_command(name, [&] {
        text_output output(std::move(file));
        return write_scene(scene, name, output, spacing);
    });
}

}  // namespace ulk3d
