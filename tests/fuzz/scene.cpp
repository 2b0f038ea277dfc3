#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>

#include "formats/scene/field_scanner.h"
#include "formats/scene/key_value.h"
#include "formats/scene/text_lines.h"
#include "formats/scene_files.h"
#include "gltextures/textures/texture_stores.h"
#include "render/models/glpolygon.h"
#include "render/offscreen/offscreen_context.h"
#include "support/memory_file.h"
#include "utils/text/paths.h"

/// Loads any bytes as a scene file. What loads is saved, loaded and saved again: from then on nothing may
/// change any more.
namespace {

using namespace ulk3d;
using ulk_test::memory_file_t;

glpolygon_t& surface_programs() {
    static auto* const context = new offscreen_context_t;
    static auto* const programs = new glpolygon_t;
    static const bool made = context->create() && programs->init(nullptr);
    if (!made)
        std::abort();
    return *programs;
}

/// The warnings about bad expressions are right, and far too many here.
void silence_the_error_stream() {
    static const bool silent = (std::cerr.rdbuf(nullptr), true);
    static_cast<void>(silent);
}

/// Forgets the names that were tried, or every one would stay, and lets one environment be there, so that
/// blocks behind it are read too.
void prepare_pictures(const memory_file_t& scene) {
    libgr::clear_texture_stores();
    libgr::cube_textures.insert(libutils::dirname(scene.path()) + "sky.png", {});
}

/// A resolution or an order is a few bytes of a file and may ask for a lot of work: such inputs are no find.
bool asks_for_much(std::string_view text) {
    text_lines input(text);
    for (text_line_t line = input.next(); !input.failed(); line = input.next()) {
        const bool resolution = line.starts_with("resolution");
        if (!resolution && !line.starts_with("begin nurbs_surface"))
            continue;
        const std::size_t separator = line.view().find(resolution ? ' ' : ',');
        if (separator == std::string_view::npos)
            continue;
        field_scanner fields(line.text + separator + 1);
        const std::uint32_t first = fields.uint(), second = fields.uint();
        fields.uint();
        const std::uint32_t fourth = fields.uint();
        if (resolution ? first > 64 || second > 64 : second > 64 || fourth > 64)
            return true;
    }
    return false;
}

/// Loads a file and saves what it held to another one, which is left empty when the load fails.
bool pass_through(const memory_file_t& from, const memory_file_t& to) {
    scene_t scene;
    std::ostringstream log;
    to.write({});
    if (!load_scene(scene, from.path(), surface_programs(), log))
        return false;
    if (!save_scene(scene, to.path()))
        std::abort();
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (asks_for_much(text))
        return 0;
    silence_the_error_stream();
    const memory_file_t input("input"), first("first"), second("second"), third("third");
    prepare_pictures(input);
    input.write(text);
    if (!pass_through(input, first) || first.read().empty())
        return 0;
    // The first save still holds what the format rounds and drops; what was read from it no longer does.
    if (!pass_through(first, second) || !pass_through(second, third) || second.read() != third.read())
        std::abort();
    return 0;
}
