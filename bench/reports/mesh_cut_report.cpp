#include <cstdio>
#include <cstdlib>
#include <functional>

#include "operations/cut/mesh_cut.h"
#include "support/cut_area.h"
#include "support/cut_scenes.h"

/// Prints how accurate the mesh cut is, by families of random scenes: the area that was left inside the
/// cutter and the area that was lost outside, in percent of the area of the victim's triangles that reach
/// into the cutter. Usage: `mesh_cut_report [scenes per family]`
namespace {

using namespace ulk_test;

struct family_t {
    const char* name;
    std::function<cut_scene_t(cut_scenes_t&)> scene;
};

strip_mesh_t plate(cut_scenes_t& random) {
    const float thickness = random.between(0.01F, 0.05F);
    return random.turned(box({-1, -1, -thickness}, {1, 1, thickness}));
}

strip_mesh_t some_sphere(cut_scenes_t& random) {
    return random.turned(sphere(random.place(0.6F), random.between(0.5F, 1), 2));
}

strip_mesh_t some_torus(cut_scenes_t& random) {
    return random.turned(torus(random.place(0.3F), 0.8F, 0.3F, 16, 8));
}

strip_mesh_t some_sheet(cut_scenes_t& random) {
    const float height = random.between(0.05F, 0.4F);
    return random.turned(sheet(8, 2, [height](float x, float y) { return height * std::sin(4 * x) * y; }));
}

strip_mesh_t soup(cut_scenes_t& random) {
    std::vector<pos3> points;
    std::vector<corner_ids_t> triangles;
    for (std::uint32_t n = 0; n < 20; ++n) {
        points.insert(points.end(), {random.place(1), random.place(1), random.place(1)});
        triangles.push_back({3 * n, 3 * n + 1, 3 * n + 2});
    }
    return mesh_of(points, triangles);
}

const family_t families[] = {
    {"tetrahedra",
     [](auto& r) {
         return cut_scene_t{r.random_tetrahedron(1), r.random_tetrahedron(1)};
     }},
    {"turned boxes",
     [](auto& r) {
         return cut_scene_t{r.turned(r.random_box()), r.turned(r.random_box())};
     }},
    {"upright boxes",
     [](auto& r) {
         return cut_scene_t{r.random_box(), r.random_box()};
     }},
    {"boxes with common planes",
     [](auto& r) {
         return cut_scene_t{r.lattice_box(), r.lattice_box()};
     }},
    {"turned box, upright cutter",
     [](auto& r) {
         return cut_scene_t{r.turned(r.random_box()), r.random_box()};
     }},
    {"plates",
     [](auto& r) {
         return cut_scene_t{plate(r), plate(r)};
     }},
    {"spheres",
     [](auto& r) {
         return cut_scene_t{some_sphere(r), some_sphere(r)};
     }},
    {"tori",
     [](auto& r) {
         return cut_scene_t{some_torus(r), some_torus(r)};
     }},
    {"sheets by spheres",
     [](auto& r) {
         return cut_scene_t{some_sheet(r), some_sphere(r)};
     }},
    {"sheets by upright boxes",
     [](auto& r) {
         return cut_scene_t{some_sheet(r), r.random_box()};
     }},
    {"soups by tori",
     [](auto& r) {
         return cut_scene_t{soup(r), some_torus(r)};
     }},
};

double percent(double part, double whole) {
    return whole > 0 ? 100 * part / whole : 0;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 50;
    std::printf("%-28s %8s %14s %14s\n", "family", "scenes", "left inside %", "lost outside %");
    for (const family_t& family : families) {
        cut_scenes_t random(1);
        cut_area_t sum;
        for (int n = 0; n < count; ++n) {
            const cut_scene_t scene = family.scene(random);
            strip_mesh_t mesh = scene.victim;
            split_by(mesh, scene.cutter, {});
            remove_inside(mesh, scene.cutter, {});
            const auto samples = static_cast<std::uint32_t>(2000 / faces_of(scene.victim).size() + 1);
            sum += measure_cut(scene.victim, mesh, scene.cutter, samples, static_cast<unsigned>(n));
        }
        std::printf("%-28s %8d %14.4f %14.4f\n", family.name, count, percent(sum.left_inside, sum.touched),
                    percent(sum.lost_outside, sum.touched));
    }
    return 0;
}
