#include "fuzz/parts/mesh_scene.h"

#include <algorithm>
#include <bit>

#include "support/cut_meshes.h"

namespace ulk_test {

using ulk3d::restart_mark;

namespace {

// How the first byte of a coordinate tells its form.
constexpr std::uint32_t byte_form = 160;   // from here on one byte of 1/128 follows, below is the lattice
constexpr std::uint32_t float_form = 248;  // from here on the four bytes of a float follow
constexpr std::uint32_t lattice_places = 9;

float on_lattice(std::uint32_t place) {
    return static_cast<float>(place) / 4 - 1;
}

float of_byte(std::uint32_t byte) {
    return static_cast<float>(byte) / 128 - 1;
}

bool same_bits(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

class reader_t {
  public:
    explicit reader_t(std::span<const std::uint8_t> bytes) : left(bytes) {}

    std::uint32_t below(std::uint32_t limit) { return byte() % limit; }

    pos3 point() {
        const float x = number(), y = number(), z = number();
        return {x, y, z};
    }

    plain_mesh_t mesh(std::uint32_t most_points, std::uint32_t most_elements) {
        plain_mesh_t mesh;
        mesh.points.resize(below(most_points + 1));
        for (pos3& place : mesh.points)
            place = point();
        mesh.elements.resize(below(most_elements + 1));
        const auto count = static_cast<std::uint32_t>(mesh.points.size());
        for (std::uint32_t& element : mesh.elements) {
            const std::uint32_t index = below(count + 1);
            element = index < count ? index : restart_mark;
        }
        return mesh;
    }

  private:
    std::uint32_t byte() {
        if (left.empty())
            return 0;
        const std::uint8_t first = left.front();
        left = left.subspan(1);
        return first;
    }

    float number() {
        const std::uint32_t form = byte();
        if (form < byte_form)
            return on_lattice(form % lattice_places);
        if (form < float_form)
            return of_byte(byte());
        std::uint32_t bits = 0;
        for (int n = 0; n < 4; ++n)
            bits = bits << 8 | byte();
        return std::bit_cast<float>(bits);
    }

    std::span<const std::uint8_t> left;
};

class writer_t {
  public:
    void byte(std::size_t value) { bytes.push_back(static_cast<std::uint8_t>(value)); }

    void point(const pos3& place) {
        for (const float number : {place.x, place.y, place.z})
            coordinate(number);
    }

    void mesh(const plain_mesh_t& mesh, std::size_t most_points, std::size_t most_elements) {
        const std::size_t points = std::min(mesh.points.size(), most_points);
        byte(points);
        for (std::size_t n = 0; n < points; ++n)
            point(mesh.points[n]);
        const std::size_t elements = std::min(mesh.elements.size(), most_elements);
        byte(elements);
        for (std::size_t n = 0; n < elements; ++n)
            byte(std::min<std::size_t>(mesh.elements[n], points));
    }

    std::vector<std::uint8_t> bytes;

  private:
    void coordinate(float number) {
        for (std::uint32_t place = 0; place < lattice_places; ++place)
            if (same_bits(number, on_lattice(place)))
                return byte(place);
        for (std::uint32_t value = 0; value < 256; ++value) {
            if (same_bits(number, of_byte(value))) {
                byte(byte_form);
                return byte(value);
            }
        }
        byte(float_form);
        for (int shift = 24; shift >= 0; shift -= 8)
            byte(std::bit_cast<std::uint32_t>(number) >> shift & 0xFF);
    }
};

}  // namespace

mesh_scene_t read_mesh_scene(std::span<const std::uint8_t> bytes) {
    reader_t reader(bytes);
    mesh_scene_t scene;
    scene.victim = reader.mesh(most_victim_points, most_victim_elements);
    scene.cutter = reader.mesh(most_cutter_points, most_cutter_elements);
    scene.axis_from = reader.point();
    scene.axis_to = reader.point();
    for (std::uint32_t count = reader.below(most_selected + 1); count > 0; --count)
        scene.selected.insert(reader.below(polygon_id_limit));
    return scene;
}

std::vector<std::uint8_t> bytes_of(const mesh_scene_t& scene) {
    writer_t writer;
    writer.mesh(scene.victim, most_victim_points, most_victim_elements);
    writer.mesh(scene.cutter, most_cutter_points, most_cutter_elements);
    writer.point(scene.axis_from);
    writer.point(scene.axis_to);
    const std::size_t count = std::min<std::size_t>(scene.selected.size(), most_selected);
    writer.byte(count);
    auto id = scene.selected.begin();
    for (std::size_t n = 0; n < count; ++n)
        writer.byte(*id++);
    return writer.bytes;
}

strip_mesh_t strip_mesh_of(const plain_mesh_t& mesh) {
    strip_mesh_t strips = mesh_of(mesh.points, {});
    strips.elements = mesh.elements;
    return strips;
}

}  // namespace ulk_test
