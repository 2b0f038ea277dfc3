#include <benchmark/benchmark.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <string>

#ifdef ULK_HAS_ASSIMP
#include <assimp/scene.h>
#include <assimp/Importer.hpp>
#endif

#include "bench_context.h"
#include "formats/scene_files.h"
#include "formats/stl/stl_reader.h"
#include "formats/stl/stl_writer.h"
#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"
#include "timed_save.h"

/// Reading and writing a binary STL file of a million triangles, compared with a plain reader and a plain
/// writer that pass each field of a triangle to the stream, and with assimp's reader. Each benchmark's time
/// is that of one whole file; reading ends with the arrays in GL buffers, their frames made and the polygons
/// numbered (for assimp: in its own arrays on the host, with the file's normals). Waits for the disk are
/// counted apart; the plain writer never waits.
namespace {

using namespace ulk3d;

constexpr std::uint32_t columns = 1001;
constexpr std::uint32_t rows = 501;
constexpr std::uint32_t triangle_total = (columns - 1) * (rows - 1) * 2;
static_assert(triangle_total == 1'000'000);

/// A wavy sheet of rows of strips.
void build_sheet(polygon_t& polygon) {
    if (!polygon.allocate(std::uint64_t{columns} * rows, std::uint64_t{rows - 1} * (2 * columns + 1)))
        std::exit(1);
    const array_span<vertex_t> vertices(polygon.vertices);
    const index_span elements(polygon.elements);
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            const float x = static_cast<float>(column) / 37;
            vertices[row * columns + column] = {{x, static_cast<float>(row) / 41, std::sin(x)}, {}, {}};
        }
    }
    std::size_t next = 0;
    for (std::uint32_t row = 1; row < rows; ++row) {
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
        build_sheet(entry.polygon);
        const std::string name = "ulk-bench-" + std::to_string(getpid()) + ".stl";
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

void count_bytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * sheet().bytes);
}

template <typename Record>
void read_field(std::istream& input, Record& record) {
    input.read(reinterpret_cast<char*>(&record), sizeof record);
}

template <typename Record>
void write_field(std::ostream& output, const Record& record) {
    output.write(reinterpret_cast<const char*>(&record), sizeof record);
}

/// Three vertices, their frame and a strip of their own.
void put_triangle(std::uint32_t t, const pos3& a, const pos3& b, const pos3& c, std::span<vertex_t> vertices,
                  std::span<frame_t> frames, std::span<std::uint32_t> elements) {
    const std::uint32_t base = 3 * t;
    const std::array corners = {a, b, c};
    const dir3 u = normalize(b - a), v = normalize(c - a), n = normalize(cross(u, v));
    for (std::uint32_t i = 0; i < 3; ++i) {
        vertices[base + i] = {corners[i], {0.5F, 0.5F, 0.5F, 1.0F}, {0, 0}};
        frames[base + i] = {v, cross(v, n), n};
        elements[4 * t + i] = base + i;
    }
    elements[4 * t + 3] = restart_mark;
}

/// One read for each field.
bool load_plainly(const char* path, scene_t& scene) {
    std::ifstream input(path, std::ios::binary);
    if (!input.good())
        return false;
    char header[80];
    read_field(input, header);
    polygon_t& polygon =
        scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon))->polygon;
    std::uint32_t count = 0;
    read_field(input, count);
    if (!polygon.allocate(3 * count, 4 * count))
        return false;
    {
        const array_span<vertex_t> vertices(polygon.vertices);
        const array_span<frame_t> frames(polygon.normals);
        const index_span elements(polygon.elements);
        for (std::uint32_t t = 0; t < count; ++t) {
            dir3 ignored_normal;
            pos3 a, b, c;
            std::uint16_t ignored_attribute;
            read_field(input, ignored_normal);
            read_field(input, a);
            read_field(input, b);
            read_field(input, c);
            read_field(input, ignored_attribute);
            put_triangle(t, a, b, c, vertices.span(), frames.span(), elements.span());
        }
    }
    polygon.afterload(path);
    return true;
}

/// The same bytes, one write for each field.
bool save_plainly(const char* path, const model_entry_t& entry) {
    std::ofstream output(path, std::ios::binary);
    char header[80] = {};
    std::memcpy(header, path, strnlen(path, sizeof header));
    write_field(output, header);
    std::uint32_t count = 0;
    const auto count_place = output.tellp();
    write_field(output, count);
    const array_span<const vertex_t> vertices(entry.polygon.vertices);
    const const_index_span elements(entry.polygon.elements);
    walk_strips(elements.span(), vertices.size(), [&](const strip_triangle_t& t) {
        const pos3 &a = vertices[t.a].position, &b = vertices[t.b].position, &c = vertices[t.c].position;
        const dir3 normal = face_normal(a, b, c);
        const float size = length(normal);
        write_field(output, size == 0 ? dir3{} : normal * (1 / size));
        write_field(output, a);
        write_field(output, b);
        write_field(output, c);
        write_field(output, std::uint16_t{0});
        ++count;
    });
    output.seekp(count_place);
    write_field(output, count);
    output.close();
    return output.good();
}

template <bool (*load)(const char*, scene_t&)>
void load_file(benchmark::State& state) {
    const std::string& path = sheet().path;
    for (auto _ : state) {
        scene_t scene;
        if (!load(path.c_str(), scene) || scene.models.front()->polygon.vertex_count() != 3 * triangle_total)
            state.SkipWithError("not loaded");
        state.PauseTiming();
        scene.models.clear();
        state.ResumeTiming();
    }
    count_bytes(state);
}

/// What remains of a load when nothing is read: making the arrays and numbering the polygons.
bool allocate_and_complete(const char* path, scene_t& scene) {
    polygon_t& polygon =
        scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon))->polygon;
    const bool allocated = polygon.allocate(3 * triangle_total, 4 * triangle_total);
    polygon.afterload(path);
    return allocated;
}

#ifdef ULK_HAS_ASSIMP
/// One mesh of separate triangles, with the normals of the file; null when it can not be loaded.
const aiMesh* read_with_assimp(const char* path, Assimp::Importer& importer) {
    const aiScene* const scene = importer.ReadFile(path, 0);
    return scene != nullptr && scene->mNumMeshes == 1 ? scene->mMeshes[0] : nullptr;
}

/// assimp's own arrays on the host: no frames, no polygon numbers, nothing that GL could draw.
void load_file_with_assimp_to_host(benchmark::State& state) {
    for (auto _ : state) {
        Assimp::Importer importer;
        const aiMesh* const mesh = read_with_assimp(sheet().path.c_str(), importer);
        if (mesh == nullptr || mesh->mNumFaces != triangle_total)
            state.SkipWithError("not loaded");
        state.PauseTiming();
        importer.FreeScene();
        state.ResumeTiming();
    }
    count_bytes(state);
}

/// The same model as ours, from assimp's arrays.
bool load_with_assimp(const char* path, scene_t& scene) {
    Assimp::Importer importer;
    const aiMesh* const mesh = read_with_assimp(path, importer);
    if (mesh == nullptr)
        return false;
    const std::uint32_t count = mesh->mNumFaces;
    polygon_t& polygon =
        scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon))->polygon;
    if (!polygon.allocate(3 * count, 4 * count))
        return false;
    const auto corner = [mesh](std::uint32_t i) {
        const aiVector3D& place = mesh->mVertices[i];
        return pos3{place.x, place.y, place.z};
    };
    {
        const array_span<vertex_t> vertices(polygon.vertices);
        const array_span<frame_t> frames(polygon.normals);
        const index_span elements(polygon.elements);
        for (std::uint32_t t = 0; t < count; ++t) {
            const aiFace& face = mesh->mFaces[t];
            put_triangle(t, corner(face.mIndices[0]), corner(face.mIndices[1]), corner(face.mIndices[2]),
                         vertices.span(), frames.span(), elements.span());
        }
    }
    polygon.afterload(path);
    return true;
}
#endif

/// True when two files are equal after their headers, which contain their paths.
bool same_triangles(const std::string& a, const std::string& b) {
    std::ifstream first(a, std::ios::binary), second(b, std::ios::binary);
    first.seekg(80);
    second.seekg(80);
    return std::equal(std::istreambuf_iterator<char>(first), {}, std::istreambuf_iterator<char>(second), {});
}

template <bool (*save)(const char*, const model_entry_t&)>
void save_file(benchmark::State& state) {
    const std::string path = sheet().path + ".saved.stl";
    time_saves(state, [&path] { return save(path.c_str(), sheet().entry); });
    if (!same_triangles(path, sheet().path))
        state.SkipWithError("other triangles were saved");
    std::filesystem::remove(path);
    count_bytes(state);
}

BENCHMARK(load_file<load_stl>)->Unit(benchmark::kMillisecond);
BENCHMARK(load_file<load_plainly>)->Unit(benchmark::kMillisecond);
BENCHMARK(load_file<allocate_and_complete>)->Unit(benchmark::kMillisecond);
#ifdef ULK_HAS_ASSIMP
BENCHMARK(load_file<load_with_assimp>)->Unit(benchmark::kMillisecond);
BENCHMARK(load_file_with_assimp_to_host)->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(save_file<save_stl_model>)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(save_file<save_plainly>)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
