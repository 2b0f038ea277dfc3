#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <set>

#include "operations/cut/mesh_cut.h"
#include "operations/fold/fold_polygons.h"
#include "support/captured_stream.h"
#include "support/cut_scenes.h"
#include "support/plain_mesh_cut.h"

namespace {

using namespace ulk3d;

/// Small meshes out of the fuzzer's bytes; zeros after their end.
class mesh_reader {
  public:
    mesh_reader(const std::uint8_t* data, std::size_t size) : next(data), left(size) {}

    std::uint32_t below(std::uint32_t limit) { return byte() % limit; }

    /// Mostly on a coarse lattice, so that corners, edges and planes meet; at times any other float.
    float number() {
        const std::uint32_t kind = byte();
        if (kind < 160)
            return static_cast<float>(kind % 9) / 4 - 1;
        if (kind < 248)
            return static_cast<float>(byte()) / 128 - 1;
        std::uint32_t bits = 0;
        for (int n = 0; n < 4; ++n)
            bits = bits << 8 | byte();
        return std::bit_cast<float>(bits);
    }

    pos3 point() {
        const float x = number(), y = number(), z = number();
        return {x, y, z};
    }

    strip_mesh_t mesh(std::uint32_t most_vertices, std::uint32_t most_elements) {
        std::vector<pos3> points(below(most_vertices + 1));
        for (pos3& place : points)
            place = point();
        strip_mesh_t mesh = ulk_test::mesh_of(points, {});
        const std::uint32_t count = below(most_elements + 1);
        for (std::uint32_t n = 0; n < count; ++n) {
            const std::uint32_t index = below(static_cast<std::uint32_t>(points.size()) + 1);
            mesh.elements.push_back(index < points.size() ? index : restart_mark);
        }
        return mesh;
    }

  private:
    std::uint32_t byte() {
        if (left == 0)
            return 0;
        --left;
        return *next++;
    }
    const std::uint8_t* next;
    std::size_t left;
};

void require(bool holds) {
    if (!holds)
        std::abort();
}

void require_sound(const strip_mesh_t& mesh) {
    require(mesh.frames.size() == mesh.vertices.size());
    for (const std::uint32_t index : mesh.elements)
        require(index < mesh.vertices.size() || index == restart_mark);
}

/// The cut gives what the plain loop gives, to the last bit, and leaves all vertices that were there.
void try_cut(const strip_mesh_t& victim, const strip_mesh_t& cutter) {
    strip_mesh_t fast = victim, plain = victim;
    split_by(fast, cutter, {});
    require_sound(fast);
    remove_inside(fast, cutter, {});
    require_sound(fast);
    ulk_test::plain_mesh_cut(plain, cutter);
    require(ulk_test::is_same(fast, plain));
    fast.vertices.resize(victim.vertices.size());
    require(ulk_test::is_same(fast.vertices, victim.vertices));
}

bool same_place(const pos3& a, const pos3& b) {
    return ulk_test::is_same(a.x, b.x) && ulk_test::is_same(a.y, b.y) && ulk_test::is_same(a.z, b.z);
}

/// A fold keeps ids and count of the triangles, and moves no vertex of those that are not selected.
void try_fold(strip_mesh_t mesh, const std::set<std::uint32_t>& selected, const pos3& a, const pos3& b) {
    const auto corners_of = [](const strip_mesh_t& of) {
        std::vector<std::array<vertex_t, 3>> corners;
        walk_strips(of.elements, of.vertices.size(), [&](const strip_triangle_t& t) {
            corners.push_back({of.vertices[t.a], of.vertices[t.b], of.vertices[t.c]});
        });
        return corners;
    };
    const auto before = corners_of(mesh);
    fold_polygons(selected, a, b, 30, mesh);
    require_sound(mesh);
    const auto after = corners_of(mesh);
    require(after.size() == before.size());
    for (std::uint32_t id = 0; id < after.size(); ++id)
        if (!selected.contains(id))
            for (std::size_t n = 0; n < 3; ++n)
                require(same_place(after[id][n].position, before[id][n].position));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    mesh_reader bytes(data, size);
    const strip_mesh_t victim = bytes.mesh(16, 24);
    const strip_mesh_t cutter = bytes.mesh(12, 16);
    const pos3 a = bytes.point(), b = bytes.point();
    std::set<std::uint32_t> selected;
    for (std::uint32_t count = bytes.below(6); count > 0; --count)
        selected.insert(bytes.below(24));

    const ulk_test::captured_stream messages(std::cerr);
    try_cut(victim, cutter);
    if (a != b)
        try_fold(victim, selected, a, b);
    return 0;
}
