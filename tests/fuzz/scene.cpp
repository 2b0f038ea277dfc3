#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include "formats/scene/field_scanner.h"
#include "formats/scene/key_value.h"
#include "formats/scene/text_lines.h"
#include "formats/scene_files.h"
#include "fuzz/parts/scene_invariants.h"
#include "fuzz/parts/scene_mutator.h"
#include "gltextures/textures/texture_stores.h"
#include "render/models/glpolygon.h"
#include "render/offscreen/offscreen_context.h"
#include "support/memory_file.h"
#include "utils/text/paths.h"

/// Loads any bytes as a scene file. What loads is saved, loaded and saved again: from then on nothing may
/// change any more but for directions, as `broken_saving` tells.
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

/// Loads a text and saves what it held; empty when the load fails.
std::optional<std::string> pass_through(std::string_view text) {
    const memory_file_t input("input"), output("output");
    prepare_pictures(input);
    input.write(text);
    scene_t scene;
    std::ostringstream log;
    if (!load_scene(scene, input.path(), surface_programs(), log))
        return std::nullopt;
    if (!save_scene(scene, output.path()))
        std::abort();
    return output.read();
}

std::string_view text_of(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

std::size_t give(std::string_view text, std::uint8_t* out) {
    std::ranges::copy(text, out);
    return text.size();
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
    return give(ulk_test::mutated_scene(text_of(data, size), most, seed, LLVMFuzzerMutate), data);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data, std::size_t size,
                                                 const std::uint8_t* other, std::size_t other_size,
                                                 std::uint8_t* out, std::size_t most, unsigned seed) {
    return give(ulk_test::crossed_scenes(text_of(data, size), text_of(other, other_size), most, seed), out);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = text_of(data, size);
    if (asks_for_much(text))
        return 0;
    silence_the_error_stream();
    const std::optional<std::string> first = pass_through(text);
    if (!first || first->empty())
        return 0;
    const std::string broken = ulk_test::broken_saving(*first, pass_through);
    if (broken.empty())
        return 0;
    std::fprintf(stderr, "%s\n", broken.c_str());
    std::abort();
}
