#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/cut_meshes.h"

/// Random scenes for the mesh cut, both of kinds that occur in practice and of kinds that should not.
namespace ulk_test {

struct cut_scene_t {
    strip_mesh_t victim, cutter;
};

class cut_scenes_t {
  public:
    explicit cut_scenes_t(unsigned seed) : random(seed) {}

    bool one_in(unsigned n) { return random() % n == 0; }
    std::uint32_t below(std::uint32_t n) { return static_cast<std::uint32_t>(random() % n); }
    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }
    pos3 place(float reach) {
        return {between(-reach, reach), between(-reach, reach), between(-reach, reach)};
    }
    /// On a coarse lattice, so that corners, edges and planes coincide.
    pos3 lattice_place() {
        const auto step = [this] { return static_cast<float>(below(5)) * 0.5F - 1; };
        return {step(), step(), step()};
    }

    strip_mesh_t turned(const strip_mesh_t& mesh) {
        const ulk3d::dir3 axis{between(-1, 1), between(-1, 1), between(-1, 1)};
        return transformed(mesh, ulk3d::rotation(between(0, 360), axis));
    }

    strip_mesh_t random_tetrahedron(float reach) {
        return tetrahedron(place(reach), place(reach), place(reach), place(reach));
    }

    strip_mesh_t random_box() {
        const pos3 a = place(1), b = place(1);
        return box(component_min(a, b), component_max(a, b));
    }

    strip_mesh_t lattice_box() {
        const auto size = [this] { return static_cast<float>(1 + below(3)) * 0.5F; };
        const pos3 low = lattice_place();
        return box(low, {low.x + size(), low.y + size(), low.z + size()});
    }

    strip_mesh_t closed_mesh(int detail) {
        switch (below(5)) {
            case 0:
                return random_tetrahedron(1.5F);
            case 1:
                return random_box();
            case 2:
                return turned(random_box());
            case 3:
                return turned(torus(place(0.3F), 0.8F, 0.3F, 6 + below(10), 4 + below(6)));
            default:
                return turned(
                    sphere(place(0.7F), between(0.4F, 1.2F), 1 + static_cast<int>(below(2)) + detail));
        }
    }

    /// Random elements over random vertices: strips that share and repeat vertices.
    strip_mesh_t strip_soup(std::uint32_t vertex_count, std::uint32_t element_count, bool on_lattice) {
        std::vector<pos3> points;
        for (std::uint32_t n = 0; n < vertex_count; ++n)
            points.push_back(on_lattice ? lattice_place() : place(1));
        strip_mesh_t mesh = mesh_of(points, {});
        for (std::uint32_t n = 0; n < element_count; ++n)
            mesh.elements.push_back(one_in(6) ? ulk3d::restart_mark : below(vertex_count));
        return mesh;
    }

    strip_mesh_t needles(std::uint32_t count) {
        std::vector<pos3> points;
        std::vector<corner_ids_t> triangles;
        for (std::uint32_t n = 0; n < count; ++n) {
            const pos3 a = place(1), b = place(1);
            const float width = std::pow(10.0F, between(-6, -2));
            points.insert(points.end(), {a, b, {b.x + width, b.y - width, b.z + width / 2}});
            triangles.push_back({3 * n, 3 * n + 1, 3 * n + 2});
        }
        return mesh_of(points, triangles);
    }

    /// One long strip that winds around the z axis.
    strip_mesh_t ribbon(std::uint32_t length) {
        std::vector<pos3> points;
        for (std::uint32_t n = 0; n < length; ++n) {
            const float angle = static_cast<float>(n) * 0.31F;
            points.push_back({std::cos(angle), std::sin(angle) + (n % 2 == 0 ? 0.2F : 0.0F),
                              static_cast<float>(n) / static_cast<float>(length) * 2 - 1});
        }
        strip_mesh_t mesh = mesh_of(points, {});
        for (std::uint32_t n = 0; n < length; ++n)
            mesh.elements.push_back(n);
        return mesh;
    }

    /// Replaces some coordinates by extreme or special floats.
    strip_mesh_t with_odd_values(strip_mesh_t mesh) {
        static constexpr float infinity = std::numeric_limits<float>::infinity();
        static constexpr float odd[] = {infinity, -infinity, std::numeric_limits<float>::quiet_NaN(),
                                        3e38F,    -3e38F,    1e-40F,
                                        1e20F,    -0.0F};
        for (ulk3d::vertex_t& vertex : mesh.vertices)
            for (float* value : {&vertex.position.x, &vertex.position.y, &vertex.position.z})
                if (one_in(30))
                    *value = odd[below(std::size(odd))];
        return mesh;
    }

    cut_scene_t scene(std::uint32_t kind) {
        switch (kind) {
            case 0:
                return {closed_mesh(0), closed_mesh(0)};
            case 1:
                return {in_strips(closed_mesh(0)), in_strips(closed_mesh(0))};
            case 2:
                return {lattice_box(), lattice_box()};
            case 3:
                return {in_strips(sheet(7, 2, [](float x, float y) { return 0.2F * std::sin(5 * x) * y; })),
                        closed_mesh(0)};
            case 4:
                return {strip_soup(30, 80, true), strip_soup(12, 24, true)};
            case 5:
                return {strip_soup(40, 130, false), strip_soup(12, 20, false)};
            case 6:
                return {needles(40), closed_mesh(-1)};
            case 7:
                return {closed_mesh(0), needles(40)};
            case 8:
                return {ribbon(200), closed_mesh(-1)};
            case 9:
                return {with_odd_values(closed_mesh(0)), closed_mesh(-1)};
            case 10:
                return {closed_mesh(0), with_odd_values(closed_mesh(-1))};
            case 11: {
                const float size = std::pow(10.0F, between(-4, 6));
                const ulk3d::mtx3w scale = ulk3d::scale(size, size, size);
                return {transformed(closed_mesh(0), scale), transformed(closed_mesh(-1), scale)};
            }
            case 12: {
                const strip_mesh_t mesh = closed_mesh(0);
                return {mesh, shaken(mesh, one_in(2) ? 0 : 2e-5F, below(1000))};
            }
            default: {
                const ulk3d::mtx3w far =
                    ulk3d::translation({between(-1e3F, 1e3F), 1e3F, between(-1e3F, 1e3F)});
                return {transformed(closed_mesh(0), far), transformed(closed_mesh(-1), far)};
            }
        }
    }

    static constexpr std::uint32_t kinds = 14;

  private:
    std::mt19937 random;
};

/// Any two NaNs are the same, because it is unspecified which one an operation passes on.
inline bool is_same(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

template <typename Record>
bool is_same(const std::vector<Record>& a, const std::vector<Record>& b) {
    using floats_t = std::array<float, sizeof(Record) / sizeof(float)>;
    return std::ranges::equal(a, b, [](const Record& p, const Record& q) {
        return std::ranges::equal(std::bit_cast<floats_t>(p), std::bit_cast<floats_t>(q),
                                  [](float x, float y) { return is_same(x, y); });
    });
}

inline bool is_same(const strip_mesh_t& a, const strip_mesh_t& b) {
    return a.elements == b.elements && is_same(a.vertices, b.vertices) && is_same(a.frames, b.frames);
}

}  // namespace ulk_test
