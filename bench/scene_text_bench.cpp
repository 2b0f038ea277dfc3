#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

#include "bench_context.h"
#include "formats/scene/scene_text.h"
#include "formats/scene_files.h"
#include "model/math/colours.h"
#include "render/gl/mapped_span.h"
#include "timed_save.h"

/// Reading and writing a polygon block of half a million vertices and a million elements, compared with a
/// plain reader and a plain writer of the same block. Each benchmark's time is that of one whole block; waits
/// for the disk are counted apart, and the plain writer never waits.
namespace {

using namespace ulk3d;

constexpr std::uint32_t columns = 708;
constexpr std::uint64_t vertex_total = std::uint64_t{columns} * columns;
constexpr std::uint64_t element_total = std::uint64_t{columns - 1} * (2 * columns + 1);

/// A wavy sheet of rows of strips, with numbers of all lengths, colours in bands and a frame everywhere.
void build_sheet(model_entry_t& entry) {
    if (!entry.polygon.allocate(vertex_total, element_total))
        std::exit(1);
    const array_span<vertex_t> vertices(entry.polygon.vertices);
    const array_span<frame_t> frames(entry.polygon.normals);
    const index_span elements(entry.polygon.elements);
    for (std::uint32_t row = 0; row < columns; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            const float x = static_cast<float>(column) / 37;
            const float y = static_cast<float>(row) / 41;
            const float slope = std::cos(x);
            const float length = std::sqrt(1 + slope * slope);
            const std::size_t index = row * columns + column;
            vertices[index] = {
                {x, y, std::sin(x)}, {static_cast<float>(row / 8 % 5) / 4, 0.5F, 0.25F, 1}, {x / 20, y / 18}};
            frames[index] = {{1 / length, 0, slope / length}, {0, 1, 0}, {-slope / length, 0, 1 / length}};
        }
    }
    std::size_t next = 0;
    for (std::uint32_t row = 1; row < columns; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            elements[next++] = row * columns + column;
            elements[next++] = (row - 1) * columns + column;
        }
        elements[next++] = restart_mark;
    }
}

/// The sheet, and a file that holds it; the file is removed when the process exits.
class sheet_t {
  public:
    sheet_t() : entry(model_kind_t::polygon) {
        need_context();
        build_sheet(entry);
        const std::string name = "ulk-bench-" + std::to_string(getpid()) + ".ulk";
        path = (std::filesystem::temp_directory_path() / name).string();
        if (!save_model(entry, path.c_str()))
            std::exit(1);
        bytes = static_cast<std::int64_t>(std::filesystem::file_size(path));
    }
    ~sheet_t() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    model_entry_t entry;
    std::string path;
    std::int64_t bytes = 0;
};

sheet_t& sheet() {
    static sheet_t the_sheet;
    return the_sheet;
}

void read_floats(const char* text, float* target, int count) {
    char* end = nullptr;
    while (count-- > 0) {
        *target++ = std::strtof(text, &end);
        text = *end == '\0' ? end : end + 1;
    }
}

const char* value_of(const std::string& line, const char* key) {
    return std::strncmp(line.c_str(), key, std::strlen(key)) == 0 ? line.c_str() + std::strlen(key) + 1
                                                                  : nullptr;
}

/// The same arrays filled line by line: getline and the library's number scanner, comparing the keys in a
/// fixed order.
bool read_plainly(const std::string& path, polygon_t& polygon) {
    std::ifstream input(path, std::ios::binary);
    std::string line;
    std::getline(input, line);
    char* end = nullptr;
    const auto vertex_count = std::strtoul(line.c_str() + line.find(',') + 1, &end, 0);
    const auto element_count = std::strtoul(end + 1, &end, 0);
    if (!polygon.allocate(vertex_count, element_count))
        return false;
    {
        const array_span<vertex_t> vertices(polygon.vertices);
        const array_span<frame_t> frames(polygon.normals);
        const index_span elements(polygon.elements);
        std::size_t vertex = 0, element = 0, tangent = 0, binormal = 0, normal = 0;
        vertex_t current{{}, {0.5F, 0.5F, 0.5F, 1}, {}};
        while (std::getline(input, line) && line.rfind("end", 0) != 0) {
            if (const char* color = value_of(line, "color")) {
                float channels[4];
                read_floats(color, channels, 4);
                current.color = {channels[0] * byte_scale, channels[1] * byte_scale, channels[2] * byte_scale,
                                 channels[3] * byte_scale};
            } else if (const char* texcoord = value_of(line, "texcoord")) {
                read_floats(texcoord, &current.texcoord.s, 2);
            } else if (const char* position = value_of(line, "position")) {
                read_floats(position, &current.position.x, 3);
                vertices[vertex++] = current;
            } else if (const char* index = value_of(line, "element")) {
                elements[element++] = static_cast<std::uint32_t>(std::strtoul(index, &end, 0));
            } else if (const char* direction = value_of(line, "tangent")) {
                read_floats(direction, &frames[tangent++].tangent.x, 3);
            } else if (const char* second = value_of(line, "binormal")) {
                read_floats(second, &frames[binormal++].binormal.x, 3);
            } else if (const char* third = value_of(line, "normal")) {
                read_floats(third, &frames[normal++].normal.x, 3);
            }
        }
    }
    polygon.afterload(path.c_str());
    return true;
}

/// The same bytes through a stream that is flushed at the end of each line.
bool write_plainly(const std::string& path, const model_entry_t& entry) {
    std::ofstream output(path, std::ios::binary);
    const auto end_line = [](std::ostream& stream) -> std::ostream& { return stream << '\r' << std::endl; };
    const array_span<const vertex_t> vertices(entry.polygon.vertices);
    const const_index_span elements(entry.polygon.elements);
    const array_span<const frame_t> frames(entry.polygon.normals);
    end_line(output << "begin polygon_surface," << vertices.size() << ',' << elements.size());
    end_line(output << "refractfactor 0");
    end_line(output << "mercatorsphere false");
    col3aub current{128, 128, 128, 255};
    for (const vertex_t& vertex : vertices.span()) {
        if (const col3aub bytes = colour_to_bytes(vertex.color); !(bytes == current)) {
            current = bytes;
            end_line(output << "color " << int{bytes.r} << ',' << int{bytes.g} << ',' << int{bytes.b} << ','
                            << int{bytes.a});
        }
        end_line(output << "texcoord " << vertex.texcoord.s << ',' << vertex.texcoord.t);
        end_line(output << "position " << vertex.position.x << ',' << vertex.position.y << ','
                        << vertex.position.z);
    }
    for (const std::uint32_t element : elements.span()) {
        if (element == restart_mark)
            end_line(output << "element -1");
        else
            end_line(output << "element " << element);
    }
    const auto write = [&](const char* key, const dir3& d) {
        end_line(output << key << d.x << ',' << d.y << ',' << d.z);
    };
    for (const frame_t& frame : frames.span()) {
        write("tangent ", frame.tangent);
        write("binormal ", frame.binormal);
        write("normal ", frame.normal);
    }
    end_line(output << "end");
    output.close();
    return output.good();
}

void count_bytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * sheet().bytes);
}

bool same_files(const std::string& a, const std::string& b) {
    std::ifstream first(a, std::ios::binary), second(b, std::ios::binary);
    return std::equal(std::istreambuf_iterator<char>(first), {}, std::istreambuf_iterator<char>(second), {});
}

void read_polygon_block(benchmark::State& state) {
    const std::string& path = sheet().path;
    for (auto _ : state) {
        state.PauseTiming();
        model_entry_t entry(model_kind_t::polygon);
        std::ostringstream log;
        state.ResumeTiming();
        text_lines input = text_lines::open(path.c_str());
        text_line_t line = input.next();
        std::uint64_t counter = 0;
        if (!read_polygon_surface(path.c_str(), entry.texture, entry.polygon, counter, line, input, log))
            state.SkipWithError(log.str().c_str());
        state.PauseTiming();
        entry.polygon.clear();
        state.ResumeTiming();
    }
    count_bytes(state);
}

void read_polygon_block_plainly(benchmark::State& state) {
    const std::string& path = sheet().path;
    for (auto _ : state) {
        state.PauseTiming();
        model_entry_t entry(model_kind_t::polygon);
        state.ResumeTiming();
        if (!read_plainly(path, entry.polygon))
            state.SkipWithError("not read");
        state.PauseTiming();
        entry.polygon.clear();
        state.ResumeTiming();
    }
    count_bytes(state);
}

/// What every reader of the block has to do besides reading: making the arrays and numbering the polygons.
void allocate_and_complete(benchmark::State& state) {
    sheet();
    for (auto _ : state) {
        state.PauseTiming();
        model_entry_t entry(model_kind_t::polygon);
        state.ResumeTiming();
        if (!entry.polygon.allocate(vertex_total, element_total))
            state.SkipWithError("not allocated");
        entry.polygon.afterload("name");
        state.PauseTiming();
        entry.polygon.clear();
        state.ResumeTiming();
    }
}

void write_polygon_block(benchmark::State& state) {
    const std::string path = sheet().path + ".saved";
    time_saves(state, [&path] { return save_model(sheet().entry, path.c_str()); });
    std::filesystem::remove(path);
    count_bytes(state);
}

void write_polygon_block_plainly(benchmark::State& state) {
    const std::string path = sheet().path + ".saved";
    time_saves(state, [&path] { return write_plainly(path, sheet().entry); });
    if (!same_files(path, sheet().path))
        state.SkipWithError("the plain writer writes other bytes");
    std::filesystem::remove(path);
    count_bytes(state);
}

BENCHMARK(read_polygon_block)->Unit(benchmark::kMillisecond);
BENCHMARK(read_polygon_block_plainly)->Unit(benchmark::kMillisecond);
BENCHMARK(allocate_and_complete)->Unit(benchmark::kMillisecond);
BENCHMARK(write_polygon_block)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(write_polygon_block_plainly)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
