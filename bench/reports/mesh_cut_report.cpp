#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "model/math/vectors.h"
#include "operations/cut/mesh_cut.h"
#include "operations/cut/unit_space.h"
#include "support/cut_area.h"
#include "support/cut_scenes.h"
#include "support/cut_works.h"

/// Prints how far the mesh cut can be trusted, by families of random scenes and for scenes that people make,
/// at several sizes and distances from the origin: the area that was left inside the cutter and the area that
/// was lost outside, in percent of the area of the victim's triangles that reach into the cutter; the length
/// of seams that were torn, in percent of the model's size; the share of slivers; and how many triangles
/// there are for each one before. Usage: `mesh_cut_report [scenes per family]`
namespace {

using namespace ulk3d;
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

void cut(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    split_by(victim, cutter, {});
    remove_inside(victim, cutter, {});
}

struct quality_t {
    cut_area_t area;
    double cracks = 0, size = 0;
    std::size_t before = 0, after = 0, slivers = 0;

    void add(const strip_mesh_t& victim, const strip_mesh_t& result, const strip_mesh_t& cutter,
             unsigned seed) {
        const box3 box = box_of(victim).value();
        const double extent = length(box.high - box.low);
        const double far = length(as_dir(box.high)) + length(as_dir(box.low));
        // What single precision leaves of places this far from the origin.
        const double tolerance = std::max(1e-4 * extent, 4e-7 * far);
        const std::vector<face_t> faces = faces_of(result);
        const auto samples = static_cast<std::uint32_t>(2000 / faces_of(victim).size() + 1);
        area += measure_cut(victim, result, cutter, samples, seed, tolerance);
        cracks += length_of_cracks(victim, result, cutter, tolerance);
        size += extent;
        before += faces_of(victim).size();
        after += faces.size();
        slivers += count_slivers(faces);
    }

    void print(const char* name) const {
        std::printf("%-36s %9.4f %9.4f %9.4f %9.2f %8zu %8zu\n", name,
                    percent(area.left_inside, area.touched), percent(area.lost_outside, area.touched),
                    percent(cracks, size), percent(static_cast<double>(slivers), static_cast<double>(after)),
                    before, after);
    }
};

void print_header(const char* title) {
    std::printf("%-36s %9s %9s %9s %9s %8s %8s\n", title, "left %", "lost %", "cracks %", "slivers %",
                "before", "after");
}

quality_t quality_of(const cut_work_t& work) {
    quality_t quality;
    strip_mesh_t mesh = work.victim;
    for (std::size_t n = 0; n < work.cutters.size(); ++n) {
        const strip_mesh_t before = mesh;
        cut(mesh, work.cutters[n]);
        quality.add(before, mesh, work.cutters[n], static_cast<unsigned>(n));
    }
    quality.before = faces_of(work.victim).size();
    quality.after = faces_of(mesh).size();
    quality.slivers = count_slivers(faces_of(mesh));
    return quality;
}

struct place_t {
    float size, offset;
};

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 50;
    print_header("random scenes");
    for (const family_t& family : families) {
        cut_scenes_t random(1);
        quality_t quality;
        for (int n = 0; n < count; ++n) {
            const cut_scene_t scene = family.scene(random);
            strip_mesh_t mesh = scene.victim;
            cut(mesh, scene.cutter);
            quality.add(scene.victim, mesh, scene.cutter, static_cast<unsigned>(n));
        }
        quality.print(family.name);
    }
    for (const auto& [size, offset] :
         {place_t{1, 0}, {1e-3F, 0}, {1e4F, 0}, {1, 100}, {1, 1000}, {1e-3F, 0.1F}}) {
        std::printf("\n");
        print_header(("size " + std::to_string(size) + ", offset " + std::to_string(offset)).c_str());
        for (const cut_work_t& work : works())
            quality_of(scaled(work, size, offset)).print(work.name.c_str());
    }
    return 0;
}
