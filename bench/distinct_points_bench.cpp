#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/polygon/distinct_points.h"
#include "sheet_stage.h"

/// Telling the points of a sheet apart whose triangles share no vertices, beside a plain way to do so.
namespace {

using namespace ulk_bench;

std::vector<vertex_t> sheet_vertices(std::int64_t triangles) {
    const std::uint32_t side = sheet_side(triangles);
    const auto steps = static_cast<float>(side);
    std::vector<vertex_t> vertices;
    for (std::uint32_t quad = 0; quad < side * side; ++quad)
        for (const auto& [right, up] : sheet_corners)
            vertices.push_back(sheet_vertex(static_cast<float>(quad % side + right) / steps,
                                            static_cast<float>(quad / side + up) / steps));
    return vertices;
}

using look_t = std::array<float, 8>;
struct look_hash_t {
    std::size_t operator()(const look_t& look) const {
        return std::hash<std::string_view>()({reinterpret_cast<const char*>(look.data()), sizeof look});
    }
};

std::vector<std::uint32_t> uncovered_plainly(std::span<const vertex_t> vertices,
                                             std::span<const float> sizes) {
    std::unordered_map<look_t, std::uint32_t, look_hash_t> last;
    for (std::uint32_t i = 0; i < vertices.size(); ++i) {
        look_t look;
        std::memcpy(look.data(), &vertices[i], 7 * sizeof(float));
        look[7] = sizes[i];
        last.insert_or_assign(look, i);
    }
    std::vector<std::uint32_t> uncovered;
    for (const auto& [look, index] : last)
        uncovered.push_back(index);
    std::ranges::sort(uncovered);
    return uncovered;
}

template <auto uncovered>
void tell_apart(benchmark::State& state) {
    const std::vector<vertex_t> vertices = sheet_vertices(state.range(0));
    const std::vector<float> sizes(vertices.size(), unselected_point_size);
    std::size_t kept = 0;
    for (auto _ : state)
        kept = uncovered(vertices, sizes).size();
    state.counters["kept"] = static_cast<double>(kept) / static_cast<double>(vertices.size());
}

BENCHMARK(tell_apart<uncovered_points>)->Name("frame_uncovered_points/fast")->Apply(four_sizes);
BENCHMARK(tell_apart<uncovered_plainly>)->Name("frame_uncovered_points/plain")->Apply(four_sizes);

}  // namespace
