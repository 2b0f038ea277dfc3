#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>

#include "formats/stl/stl_reader.h"
#include "formats/stl/stl_writer.h"
#include "render/offscreen/offscreen_context.h"
#include "support/memory_file.h"

/// Loads any bytes as an STL file. The corners that it holds are those of the bytes, and survive saving and
/// loading; a file that we wrote changes no more.
namespace {

using namespace ulk3d;
using ulk_test::memory_file_t;

constexpr std::size_t header = 80;
constexpr std::size_t prologue = 84;
constexpr std::size_t record = 50;
constexpr std::size_t normal = 12;
constexpr std::size_t corners = 36;

void need_context() {
    static auto* const context = new offscreen_context_t;
    static const bool made = context->create();
    if (!made)
        std::abort();
}

/// Loads a file and saves what it held: the saved bytes.
std::string pass_through(std::string_view bytes) {
    const memory_file_t from("from"), to("to");
    from.write(bytes);
    scene_t scene;
    if (!load_stl(from.path(), scene) || scene.models.size() != 1 ||
        !save_stl_models(to.path(), scene.models))
        std::abort();
    return to.read();
}

/// The triangles that a file holds, whatever its count says.
std::size_t triangles_in(std::string_view bytes) {
    if (bytes.size() < prologue)
        return 0;
    std::uint32_t announced = 0;
    std::memcpy(&announced, bytes.data() + header, sizeof announced);
    std::size_t held = 0;
    while (held < announced && bytes.size() >= prologue + held * record + normal + corners)
        ++held;
    return held;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    need_context();
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t count = triangles_in(bytes);
    const std::string first = pass_through(bytes);
    if (first.size() != prologue + count * record || triangles_in(first) != count)
        std::abort();
    for (std::size_t t = 0; t < count; ++t) {
        const std::size_t place = prologue + t * record + normal;
        if (first.compare(place, corners, bytes.substr(place, corners)) != 0)
            std::abort();
    }
    if (pass_through(first).compare(header, std::string::npos, first, header) != 0)
        std::abort();
    return 0;
}
