#include "formats/scene_files.h"

#include <cstring>
#include <string>
#include <vector>

#include "formats/scene/line_log.h"
#include "formats/scene/scene_text.h"
#include "formats/stl/stl_reader.h"
#include "formats/stl/stl_writer.h"
#include "model/try_allocate.h"
#include "utils/text/strings.h"

namespace ulk3d {

namespace {

bool is_stl_path(const char* path) {
    return libutils::has_extension(path, ".stl") == 0;
}

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
            switch (read_line()) {
                case outcome_t::block:
                    ++blocks;
                    break;
                case outcome_t::failure:
                    return 0;
                case outcome_t::no_block:
                    break;
            }
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

/// The names that a path gives to a number of models. They are made before the first model takes one, so that
/// either all models take the path or, when memory runs out, none.
class path_names_t {
  public:
    path_names_t(const char* path, std::size_t models) : names(models * 2, path) {}

    void give_to(model_entry_t& entry) noexcept {
        entry.polygon.name.swap(names[used++]);
        if (entry.kind == model_kind_t::nurbs)
            entry.nurbs.name.swap(names[used++]);
    }

  private:
    std::vector<std::string> names;
    std::size_t used = 0;
};

void give_path(model_list_t& models, const char* path) {
    path_names_t names(path, models.size());
    for (const auto& entry : models)
        names.give_to(*entry);
}

void write_model(const model_entry_t& entry, text_output& output) {
    if (entry.kind == model_kind_t::polygon)
        write_polygon_surface(entry.texture, entry.polygon, output);
    else if (entry.kind == model_kind_t::nurbs)
        write_nurbs_surface(entry.nurbs, output);
}

bool write_models(const model_list_t& models, const char* path) {
    text_output output(path);
    for (const auto& entry : models) {
        write_model(*entry, output);
        output.line();
        // Flushing after each model stops a failing save at the model where it failed.
        if (!output.flush())
            return false;
    }
    return output.complete();
}

bool write_scene(const scene_t& scene, const char* path) {
    text_output output(path);
    if (write_environment(scene.environment, output))
        output.line();
    for (const auto& entry : scene.models) {
        write_model(*entry, output);
        if (!output.flush())
            return false;
    }
    return output.complete();
}

}  // namespace

bool load_scene(scene_t& scene, const char* path, glpolygon_t& glpolygon, std::ostream& log) {
    if (is_stl_path(path))
        return load_stl(path, scene);
    text_lines input = text_lines::open(path);
    if (!input.is_open()) {
        put_line(log, path, ": file open error.");
        return false;
    }
    return top_level_reader(path, input, &scene.environment, scene.models, glpolygon, log).read() != 0;
}

std::size_t load_models(model_list_t& models, const char* path, glpolygon_t& glpolygon, std::ostream& log) {
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
        path_names_t(path, 1).give_to(entry);
        text_output output(path);
        write_model(entry, output);
        return output.complete();
    });
}

bool save_models(model_list_t& models, const char* path) {
    return try_command(path, [&] {
        if (is_stl_path(path))
            return save_stl_models(path, models);
        give_path(models, path);
        return write_models(models, path);
    });
}

bool save_scene(scene_t& scene, const char* path) {
    return try_command(path, [&] {
        if (is_stl_path(path))
            return save_stl_models(path, scene.models);
        give_path(scene.models, path);
        return write_scene(scene, path);
    });
}

}  // namespace ulk3d
