#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <set>

#include "fuzz/parts/mesh_mutator.h"
#include "fuzz/parts/mesh_scene.h"
#include "operations/cut/mesh_cut.h"
#include "operations/fold/fold_polygons.h"
#include "support/captured_stream.h"
#include "support/cut_scenes.h"
#include "support/plain_mesh_cut.h"

namespace {

using namespace ulk3d;

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

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
    const auto changed = ulk_test::mutated_mesh_scene({data, size}, most, seed, LLVMFuzzerMutate);
    std::ranges::copy(changed, data);
    return changed.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ulk_test::mesh_scene_t scene = ulk_test::read_mesh_scene({data, size});
    const strip_mesh_t victim = strip_mesh_of(scene.victim), cutter = strip_mesh_of(scene.cutter);
    const ulk_test::captured_stream messages(std::cerr);
    try_cut(victim, cutter);
    if (scene.axis_from != scene.axis_to)
        try_fold(victim, scene.selected, scene.axis_from, scene.axis_to);
    return 0;
}
