#include <admesh/stl.h>

#include <string>

#include "load_way.h"

/// admesh's reader, without its repairs: the records of the file, their bounds and shortest edge, and room
/// for the neighbours of each triangle.
namespace {

stl_file& mesh() {
    static auto* const the_mesh = new stl_file{};
    return *the_mesh;
}

}  // namespace

void prepare_to_load() {}

bool load_file(const char* path) {
    stl_open(&mesh(), std::string(path).data());
    return stl_get_error(&mesh()) == 0;
}

bool save_file(const char* path) {
    stl_write_binary(&mesh(), path, "mesh");
    return stl_get_error(&mesh()) == 0;
}

std::uint64_t triangles_loaded() {
    return static_cast<std::uint64_t>(mesh().stats.number_of_facets);
}
