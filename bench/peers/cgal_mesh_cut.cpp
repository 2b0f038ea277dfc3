#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Polygon_mesh_processing/corefinement.h>
#include <CGAL/Polygon_mesh_processing/orientation.h>
#include <CGAL/Surface_mesh.h>
#include <benchmark/benchmark.h>

#include <vector>

#include "mesh_cut_scenes.h"
#include "model/polygon/strip_walk.h"

/// CGAL's difference of the two meshes that the mesh cut is measured on. It does more, as it decides by exact
/// predicates and closes the opening with the wall of the cutter, and less, as its vertices have a position
/// and nothing else. It changes both meshes; their copies are made outside the time.
namespace {

using kernel_t = CGAL::Exact_predicates_inexact_constructions_kernel;
using mesh_t = CGAL::Surface_mesh<kernel_t::Point_3>;

mesh_t surface_of(const ulk3d::strip_mesh_t& strips) {
    mesh_t mesh;
    std::vector<mesh_t::Vertex_index> vertices;
    for (const ulk3d::vertex_t& vertex : strips.vertices)
        vertices.push_back(mesh.add_vertex({vertex.position.x, vertex.position.y, vertex.position.z}));
    ulk3d::walk_strips(strips.elements, vertices.size(), [&](const ulk3d::strip_triangle_t& t) {
        mesh.add_face(vertices[t.a], vertices[t.b], vertices[t.c]);
    });
    return mesh;
}

void difference_of_spheres(benchmark::State& state) {
    const mesh_cut_scenes::cut_scene_t scene = mesh_cut_scenes::spheres(state.range(0));
    const mesh_t victim = surface_of(scene.victim), cutter = surface_of(scene.cutter);
    if (!CGAL::Polygon_mesh_processing::is_outward_oriented(victim) ||
        !CGAL::Polygon_mesh_processing::is_outward_oriented(cutter)) {
        state.SkipWithError("a sphere is no solid");
        return;
    }
    bool is_cut = true;
    mesh_t victim_copy, cutter_copy;
    for (auto _ : state) {
        state.PauseTiming();
        victim_copy = victim;
        cutter_copy = cutter;
        state.ResumeTiming();
        is_cut = CGAL::Polygon_mesh_processing::corefine_and_compute_difference(victim_copy, cutter_copy,
                                                                                victim_copy);
    }
    if (!is_cut || victim_copy.number_of_faces() == victim.number_of_faces())
        state.SkipWithError("nothing was cut");
}

BENCHMARK(difference_of_spheres)
    ->Name("mesh_cut/spheres/cgal")
    ->DenseRange(2, 6)
    ->Unit(benchmark::kMillisecond);

}  // namespace
