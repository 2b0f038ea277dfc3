#include "fuzz/parts/mesh_mutator.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

#include "fuzz/parts/mesh_scene.h"

namespace ulk_test {

namespace {

using ulk3d::pos3;
using ulk3d::restart_mark;

constexpr float pos3::*axes[] = {&pos3::x, &pos3::y, &pos3::z};

class mesh_changer_t {
  public:
    mesh_changer_t(mesh_scene_t& changed, std::uint64_t seed) : scene(changed), random(seed) {}

    void change() {
        using change_t = void (mesh_changer_t::*)();
        // Places most often: what touches what decides which way an edit takes.
        static constexpr change_t changes[] = {
            &mesh_changer_t::snap_coordinate,  &mesh_changer_t::snap_coordinate,
            &mesh_changer_t::copy_coordinate,  &mesh_changer_t::copy_coordinate,
            &mesh_changer_t::copy_point,       &mesh_changer_t::put_on_edge,
            &mesh_changer_t::flatten,          &mesh_changer_t::nudge,
            &mesh_changer_t::move_mesh,        &mesh_changer_t::odd_coordinate,
            &mesh_changer_t::add_point,        &mesh_changer_t::remove_point,
            &mesh_changer_t::change_element,   &mesh_changer_t::change_element,
            &mesh_changer_t::insert_element,   &mesh_changer_t::erase_element,
            &mesh_changer_t::swap_elements,    &mesh_changer_t::add_triangle,
            &mesh_changer_t::add_triangle,     &mesh_changer_t::share_triangle,
            &mesh_changer_t::make_solid,       &mesh_changer_t::swap_meshes,
            &mesh_changer_t::change_fold_axis, &mesh_changer_t::change_selected,
        };
        (this->*random.of(changes))();
    }

  private:
    plain_mesh_t& a_mesh() { return random.one_in(2) ? scene.victim : scene.cutter; }
    float lattice() { return static_cast<float>(random.below(9)) / 4 - 1; }
    pos3 lattice_point() {
        const float x = lattice(), y = lattice(), z = lattice();
        return {x, y, z};
    }
    float pos3::*an_axis() { return random.of(axes); }

    /// Some point of either mesh; one end of the axis when there is none.
    pos3& a_point() {
        plain_mesh_t& mesh = a_mesh();
        return mesh.points.empty() ? scene.axis_from : mesh.points[random.below(mesh.points.size())];
    }
    std::uint32_t an_index(const plain_mesh_t& mesh) {
        return mesh.points.empty() ? restart_mark
                                   : static_cast<std::uint32_t>(random.below(mesh.points.size()));
    }

    // Places.

    void snap_coordinate() { a_point().*an_axis() = lattice(); }

    void copy_coordinate() {
        const auto axis = an_axis();
        const float value = a_point().*axis;
        a_point().*axis = value;
    }

    void copy_point() {
        const pos3 place = a_point();
        a_point() = place;
    }

    /// At a quarter, half or three quarters of the way between two points.
    void put_on_edge() {
        const pos3 a = a_point(), b = a_point();
        const float part = static_cast<float>(1 + random.below(3)) / 4;
        pos3& place = a_point();
        for (const auto axis : axes)
            place.*axis = a.*axis + (b.*axis - a.*axis) * part;
    }

    /// Puts some points of a mesh into one plane that is parallel to two axes.
    void flatten() {
        const auto axis = an_axis();
        const float value = random.one_in(2) ? lattice() : a_point().*axis;
        for (pos3& place : a_mesh().points)
            if (!random.one_in(3))
                place.*axis = value;
    }

    /// By about the tolerance of all comparisons, or by the last bit.
    void nudge() {
        static constexpr float ways[] = {1e-5F, -1e-5F, 2e-5F, -2e-5F, 3e-5F, -3e-5F, 1e-4F};
        float& coordinate = a_point().*an_axis();
        coordinate = random.one_in(3) ? std::nextafter(coordinate, lattice()) : coordinate + random.of(ways);
    }

    void move_mesh() {
        const auto axis = an_axis();
        const float way = lattice();
        for (pos3& place : a_mesh().points)
            place.*axis += way;
    }

    void odd_coordinate() {
        static constexpr float infinity = std::numeric_limits<float>::infinity();
        static constexpr float odd[] = {
            infinity, -infinity, std::numeric_limits<float>::quiet_NaN(), 3e38F, -1e20F, 1e-40F, -0.0F, 1e6F};
        const bool any_bits = random.one_in(2);
        a_point().*an_axis() =
            any_bits ? std::bit_cast<float>(static_cast<std::uint32_t>(random.next())) : random.of(odd);
    }

    // Strips.

    void add_point() { a_mesh().points.push_back(random.one_in(3) ? a_point() : lattice_point()); }

    void remove_point() {
        plain_mesh_t& mesh = a_mesh();
        if (mesh.points.empty())
            return;
        const std::uint32_t removed = an_index(mesh);
        mesh.points.erase(mesh.points.begin() + removed);
        for (std::uint32_t& element : mesh.elements) {
            if (element == removed)
                element = restart_mark;
            else if (element != restart_mark && element > removed)
                --element;
        }
    }

    void change_element() {
        plain_mesh_t& mesh = a_mesh();
        if (!mesh.elements.empty())
            mesh.elements[random.below(mesh.elements.size())] =
                random.one_in(6) ? restart_mark : an_index(mesh);
    }

    void insert_element() {
        plain_mesh_t& mesh = a_mesh();
        const auto place = static_cast<std::ptrdiff_t>(random.below(mesh.elements.size() + 1));
        mesh.elements.insert(mesh.elements.begin() + place, random.one_in(3) ? restart_mark : an_index(mesh));
    }

    void erase_element() {
        plain_mesh_t& mesh = a_mesh();
        if (!mesh.elements.empty())
            mesh.elements.erase(mesh.elements.begin() +
                                static_cast<std::ptrdiff_t>(random.below(mesh.elements.size())));
    }

    void swap_elements() {
        std::vector<std::uint32_t>& elements = a_mesh().elements;
        if (!elements.empty())
            std::swap(elements[random.below(elements.size())], elements[random.below(elements.size())]);
    }

    void add_triangle() {
        plain_mesh_t& mesh = a_mesh();
        if (!mesh.elements.empty())
            mesh.elements.push_back(restart_mark);
        for (int corner = 0; corner < 3; ++corner)
            mesh.elements.push_back(an_index(mesh));
    }

    /// Three points of one mesh become a triangle of the other.
    void share_triangle() {
        const bool to_cutter = random.one_in(2);
        const plain_mesh_t& from = to_cutter ? scene.victim : scene.cutter;
        plain_mesh_t& to = to_cutter ? scene.cutter : scene.victim;
        if (from.points.empty())
            return;
        if (!to.elements.empty())
            to.elements.push_back(restart_mark);
        for (int corner = 0; corner < 3; ++corner) {
            to.elements.push_back(static_cast<std::uint32_t>(to.points.size()));
            to.points.push_back(from.points[an_index(from)]);
        }
    }

    /// A closed mesh of one strip: a tetrahedron between points, or a box upright on the lattice.
    void make_solid() {
        plain_mesh_t& mesh = a_mesh();
        if (random.one_in(2)) {
            mesh.points = {a_point(), a_point(), lattice_point(), lattice_point()};
            mesh.elements = {0, 1, 2, 3, 0, 1};
            return;
        }
        const pos3 low = lattice_point(), high = lattice_point();
        mesh.points.clear();
        for (std::uint32_t corner = 0; corner < 8; ++corner)
            mesh.points.push_back({(corner & 1) != 0 ? high.x : low.x, (corner & 2) != 0 ? high.y : low.y,
                                   (corner & 4) != 0 ? high.z : low.z});
        mesh.elements = {6, 7, 4, 5, 1, 7, 3, 6, 2, 4, 0, 1, 2, 3};
    }

    void swap_meshes() { std::swap(scene.victim, scene.cutter); }

    // The fold.

    void change_fold_axis() {
        pos3& end = random.one_in(2) ? scene.axis_from : scene.axis_to;
        end = random.one_in(3) ? lattice_point() : a_point();
    }

    void change_selected() {
        const auto id = static_cast<std::uint32_t>(random.below(polygon_id_limit) / (1 + random.below(6)));
        if (scene.selected.erase(id) == 0)
            scene.selected.insert(id);
    }

    mesh_scene_t& scene;
    fuzz_random_t random;
};

std::vector<std::uint8_t> held_to(std::vector<std::uint8_t> bytes, std::size_t most_bytes) {
    if (bytes.size() > most_bytes)
        bytes.resize(most_bytes);
    return bytes;
}

}  // namespace

std::vector<std::uint8_t> mutated_mesh_scene(std::span<const std::uint8_t> bytes, std::size_t most_bytes,
                                             std::uint64_t seed, byte_mutator_t mutate_bytes) {
    fuzz_random_t random(seed);
    if (mutate_bytes != nullptr && random.one_in(3)) {
        std::vector<std::uint8_t> changed(bytes.begin(), bytes.end());
        changed.resize(std::max(bytes.size(), most_bytes));
        changed.resize(mutate_bytes(changed.data(), std::min(bytes.size(), most_bytes), most_bytes));
        return changed;
    }
    mesh_scene_t scene = read_mesh_scene(bytes);
    for (std::size_t count = 1 + random.below(3); count > 0; --count)
        mesh_changer_t(scene, random.next()).change();
    return held_to(bytes_of(scene), most_bytes);
}

}  // namespace ulk_test
