#include "tool/tidy/near_vertices.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

#include "model/math/vectors.h"
#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

namespace {

using ulk3d::pos3;
using ulk3d::vertex_t;

/// A cube of space, by the number of cells up to it. Its sides are a little longer than twice the tolerance.
using cell_t = std::array<double, 3>;

/// Two different numbers in single precision are never nearer to each other than this.
constexpr double least_distance = std::numeric_limits<float>::denorm_min();

double square_distance(const pos3& a, const pos3& b) {
    const double x = double{a.x} - b.x, y = double{a.y} - b.y, z = double{a.z} - b.z;
    return x * x + y * y + z * z;
}

/// Adding zero turns the negative zero into the positive one.
std::uint32_t comparable_bits(float value) {
    return std::bit_cast<std::uint32_t>(value + 0.0F);
}

/// What must be equal in vertices that are joined.
std::array<std::uint32_t, 6> attribute_bits(const vertex_t& vertex) {
    return {comparable_bits(vertex.color.r),    comparable_bits(vertex.color.g),
            comparable_bits(vertex.color.b),    comparable_bits(vertex.color.a),
            comparable_bits(vertex.texcoord.s), comparable_bits(vertex.texcoord.t)};
}

/// The vertices that stand for others, found by their cells and attributes. Those of one cell with the same
/// attributes are farther apart than the tolerance, and so are few.
class standing_vertices_t {
  public:
    /// Room for up to `count` of them.
    standing_vertices_t(std::span<const vertex_t> all, std::size_t count, double near_distance)
        : vertices(all),
          tolerance(near_distance < least_distance ? 0 : near_distance),
          side(2 * tolerance * (1 + 1e-6)),
          heads(std::bit_ceil(count + 1), no_vertex),
          next(all.size(), no_vertex) {}

    /// The nearest that agrees with a vertex; `no_vertex` where there is none.
    std::uint32_t nearest(const vertex_t& vertex) const {
        const auto attributes = attribute_bits(vertex);
        const cell_t own = cell_of(vertex.position);
        found_t found;
        if (side == 0) {
            look_in(own, vertex, attributes, found);
            return found.vertex;
        }
        // What is near enough lies in the vertex's cell or, on each axis, beyond the nearer of its walls.
        const cell_t beside = cell_beside(vertex.position, own);
        for (const double x : {own[0], beside[0]})
            for (const double y : {own[1], beside[1]})
                for (const double z : {own[2], beside[2]})
                    look_in({x, y, z}, vertex, attributes, found);
        return found.vertex;
    }

    void add(std::uint32_t vertex) {
        const vertex_t& added = vertices[vertex];
        std::uint32_t& head = heads[slot_of(cell_of(added.position), attribute_bits(added))];
        next[vertex] = head;
        head = vertex;
    }

  private:
    struct found_t {
        std::uint32_t vertex = no_vertex;
        double square = std::numeric_limits<double>::infinity();
    };

    cell_t cell_of(const pos3& p) const {
        if (side == 0)
            return {p.x, p.y, p.z};
        return {std::floor(p.x / side), std::floor(p.y / side), std::floor(p.z / side)};
    }

    /// On each axis the neighbour beyond the nearer wall.
    cell_t cell_beside(const pos3& p, const cell_t& own) const {
        const auto neighbour = [this](float coordinate, double cell) {
            return coordinate / side - cell < 0.5 ? cell - 1 : cell + 1;
        };
        return {neighbour(p.x, own[0]), neighbour(p.y, own[1]), neighbour(p.z, own[2])};
    }

    std::size_t slot_of(const cell_t& cell, const std::array<std::uint32_t, 6>& attributes) const {
        std::uint64_t hash = 0;
        const auto mix = [&hash](std::uint64_t value) {
            hash = (hash ^ value) * 0x9E3779B97F4A7C15U;
            hash ^= hash >> 32U;
        };
        for (const double number : cell)
            mix(std::bit_cast<std::uint64_t>(number + 0.0));
        for (const std::uint32_t bits : attributes)
            mix(bits);
        return hash & (heads.size() - 1);
    }

    void look_in(const cell_t& cell, const vertex_t& vertex, const std::array<std::uint32_t, 6>& attributes,
                 found_t& found) const {
        for (std::uint32_t i = heads[slot_of(cell, attributes)]; i != no_vertex; i = next[i]) {
            const double square = square_distance(vertices[i].position, vertex.position);
            const bool is_nearer = square < found.square || (square == found.square && i < found.vertex);
            if (is_nearer && square <= tolerance * tolerance && attribute_bits(vertices[i]) == attributes)
                found = {i, square};
        }
    }

    std::span<const vertex_t> vertices;
    double tolerance;
    double side;                       ///< of a cell; 0 when each position is one
    std::vector<std::uint32_t> heads;  ///< of the chains of vertices in `next`
    std::vector<std::uint32_t> next;
};

bool has_negative_zero(const vertex_t& vertex) {
    const auto words = std::bit_cast<std::array<std::uint32_t, 9>>(vertex);
    return std::ranges::find(words, std::bit_cast<std::uint32_t>(-0.0F)) != words.end();
}

}  // namespace

void join_near_vertices(std::span<const vertex_t> vertices, double tolerance,
                        std::vector<std::uint32_t>& standing) {
    if (tolerance == 0 && std::ranges::none_of(vertices, has_negative_zero))
        return;
    std::size_t count = 0;
    for (std::uint32_t vertex = 0; vertex < standing.size(); ++vertex)
        count += standing[vertex] == vertex ? 1 : 0;
    standing_vertices_t known(vertices, count, tolerance);
    for (std::uint32_t vertex = 0; vertex < standing.size(); ++vertex) {
        std::uint32_t& stands = standing[vertex];
        if (stands == no_vertex)
            continue;
        if (stands != vertex) {
            stands = standing[stands];
            continue;
        }
        if (!is_finite(vertices[vertex].position))
            continue;
        const std::uint32_t near = known.nearest(vertices[vertex]);
        if (near == no_vertex)
            known.add(vertex);
        else
            stands = near;
    }
}

}  // namespace ulktool
