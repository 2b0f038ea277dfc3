#include <cstdlib>
#include <iostream>

#include "bench_context.h"
#include "formats/scene_files.h"
#include "peers/load_way.h"
#include "render/models/glpolygon.h"

/// Ours: vertices, elements and frames in GL buffers, and the polygons numbered.
namespace {

using namespace ulk3d;

struct program_t {
    glpolygon_t glpolygon;
    scene_t scene;
};

program_t& program() {
    static auto* const the_program = new program_t;
    return *the_program;
}

}  // namespace

void prepare_to_load() {
    need_context();
    if (!program().glpolygon.init(nullptr))
        std::exit(1);
}

bool load_file(const char* path) {
    return load_scene(program().scene, path, program().glpolygon, std::cerr);
}

bool save_file(const char* path) {
    return save_models(program().scene.models, path);
}

std::uint64_t triangles_loaded() {
    std::uint64_t count = 0;
    for (const auto& model : program().scene.models) {
        const polygon_places_t& places = model->polygon.polyidvector;
        for (std::size_t id = 0; id < places.size() && places[id].position != restart_mark; ++id)
            ++count;
    }
    return count;
}
