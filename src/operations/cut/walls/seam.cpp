#include "operations/cut/walls/seam.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "model/math/tolerance.h"
#include "model/math/vectors.h"
#include "operations/cut/box_tree.h"
#include "operations/cut/walls/fill_slits.h"
#include "operations/cut/walls/patched_mesh.h"

namespace ulk3d {
namespace {

/// The places at the ends of edges, each once, ascending.
std::vector<std::uint32_t> ends_of(const std::vector<triangle_edge_t>& edges, const surface_view_t& surface) {
    std::vector<std::uint32_t> places;
    for (const triangle_edge_t& edge : edges)
        places.insert(places.end(), {surface.start_of(edge), surface.end_of(edge)});
    std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

std::vector<box3> boxes_of(const std::vector<pos3>& points) {
    std::vector<box3> boxes;
    for (const pos3& p : points)
        boxes.push_back({p, p});
    return boxes;
}

/// Moves vertices at open edges to one another. The later ones move: a victim's new vertices come behind its
/// old ones, and all of the wall behind these.
class vertex_mover_t {
  public:
    vertex_mover_t(strip_mesh_t& both, const unit_space_t& unit_space)
        : mesh(both), space(unit_space), triangles(triangles_of(both)), places(places_of(both.vertices)) {}

    /// Makes one place of those that are within `room` of each other.
    void join(float room);
    /// Moves the wall's vertices to the victim's nearest ones within `room`.
    void move_wall(std::uint32_t first_of_wall, float room);

  private:
    using moves_t = std::map<std::uint32_t, std::uint32_t>;  ///< places by the places from where

    std::vector<std::uint32_t> open_places() const {
        const surface_view_t surface{triangles, places};
        return ends_of(open_edges(surface), surface);
    }
    std::vector<pos3> unit_positions(const std::vector<std::uint32_t>& numbers) const;
    void carry_out(const moves_t& moves);

    strip_mesh_t& mesh;
    const unit_space_t& space;
    std::vector<triangle_vertices_t> triangles;
    std::vector<std::uint32_t> places;
};

std::vector<pos3> vertex_mover_t::unit_positions(const std::vector<std::uint32_t>& numbers) const {
    std::vector<pos3> positions;
    for (const std::uint32_t n : numbers)
        positions.push_back(space.to_unit(mesh.vertices[n].position));
    return positions;
}

void vertex_mover_t::join(float room) {
    const std::vector<std::uint32_t> open = open_places();
    const std::vector<pos3> positions = unit_positions(open);
    const box_tree_t tree(boxes_of(positions));
    moves_t moves;
    for (const auto& [a, b] : box_tree_t::meeting(tree, tree, room)) {
        if (b >= a || length(positions[a] - positions[b]) > room)
            continue;
        const auto [move, is_new] = moves.try_emplace(open[a], open[b]);
        move->second = std::min(move->second, open[b]);
    }
    // Where the target moves itself, on to its target: that of a lower number is known already.
    for (auto& [from, to] : moves)
        if (const auto next = moves.find(to); next != moves.end())
            to = next->second;
    carry_out(moves);
}

void vertex_mover_t::move_wall(std::uint32_t first_of_wall, float room) {
    std::vector<std::uint32_t> of_victim, of_wall;
    // A place has the number of its first vertex: one that both parts have counts as the victim's.
    for (const std::uint32_t place : open_places())
        (place < first_of_wall ? of_victim : of_wall).push_back(place);
    const std::vector<pos3> starts = unit_positions(of_wall), ends = unit_positions(of_victim);
    moves_t moves;
    std::vector<float> distances(starts.size(), room);
    for (const auto& [a, b] :
         box_tree_t::meeting(box_tree_t(boxes_of(starts)), box_tree_t(boxes_of(ends)), room)) {
        const float distance = length(ends[b] - starts[a]);
        if (distance > distances[a])
            continue;
        distances[a] = distance;
        moves[of_wall[a]] = of_victim[b];
    }
    carry_out(moves);
}

void vertex_mover_t::carry_out(const moves_t& moves) {
    for (std::size_t n = 0; n < mesh.vertices.size(); ++n) {
        const auto move = moves.find(places[n]);
        if (move == moves.end())
            continue;
        mesh.vertices[n].position = mesh.vertices[move->second].position;
        places[n] = move->second;
    }
}

/// Splits triangles at their open edges where the open edges of others end.
class edge_splitter_t {
  public:
    edge_splitter_t(patched_mesh_t& patched_mesh, const unit_space_t& unit_space)
        : patched(patched_mesh), space(unit_space), open(open_edges(patched.surface())) {}

    const std::vector<triangle_edge_t>& open_now() const { return open; }

    /// Splits at places within `room` of an edge until there are no more.
    void split(float room) {
        while (split_once(room))
            take_out_pairs(open, patched.surface());
    }

  private:
    struct point_t {
        std::uint32_t edge;  ///< place in `open`
        float t;
        std::uint32_t place;
    };

    std::vector<point_t> points_on_edges(float room) const;
    bool split_once(float room);
    void split_triangle(const triangle_edge_t& edge, std::span<const point_t> points);

    patched_mesh_t& patched;
    const unit_space_t& space;
    std::vector<triangle_edge_t> open;
    std::multimap<std::uint32_t, std::uint32_t>
        other_corners;  ///< open edges by triangle, as those are split
};

/// By edge, and by t for each.
std::vector<edge_splitter_t::point_t> edge_splitter_t::points_on_edges(float room) const {
    const surface_view_t surface = patched.surface();
    const std::vector<std::uint32_t> places = ends_of(open, surface);
    const auto unit = [&](std::uint32_t place) { return space.to_unit(patched.position_of(place)); };
    std::vector<pos3> positions;
    for (const std::uint32_t place : places)
        positions.push_back(unit(place));
    std::vector<box3> boxes;
    for (const triangle_edge_t& edge : open) {
        const pos3 a = unit(surface.start_of(edge)), b = unit(surface.end_of(edge));
        boxes.push_back({component_min(a, b), component_max(a, b)});
    }
    std::vector<point_t> points;
    for (const auto& [edge, n] :
         box_tree_t::meeting(box_tree_t(boxes), box_tree_t(boxes_of(positions)), room)) {
        const auto& [x, y, z] = patched.triangle(open[edge].triangle);
        const std::array corners{surface.places[x], surface.places[y], surface.places[z]};
        if (std::ranges::find(corners, places[n]) != corners.end())
            continue;
        const pos3 a = unit(surface.start_of(open[edge]));
        const dir3 along = unit(surface.end_of(open[edge])) - a;
        const float t = dot(positions[n] - a, along) / dot(along, along);
        const float distance = length(positions[n] - (a + along * t));
        // Flat enough that the parts are shorter than the edge: the splitting comes to an end.
        const float flat = std::min(t, 1 - t) * length(along) / 2;
        if (t > 0 && t < 1 && distance <= std::min(room, flat))
            points.push_back({edge, t, places[n]});
    }
    std::ranges::sort(points, {}, [](const point_t& p) { return std::tuple(p.edge, p.t, p.place); });
    return points;
}

/// Splits each triangle at one of its edges. Returns whether there was any to split.
bool edge_splitter_t::split_once(float room) {
    const std::vector<point_t> points = points_on_edges(room);
    if (points.empty())
        return false;
    std::map<std::uint32_t, std::span<const point_t>> by_triangle;
    for (std::size_t first = 0, end = 0; first < points.size(); first = end) {
        while (end < points.size() && points[end].edge == points[first].edge)
            ++end;
        by_triangle.try_emplace(open[points[first].edge].triangle, &points[first], end - first);
    }
    const std::vector<triangle_edge_t> before = std::exchange(open, {});
    other_corners.clear();
    for (std::uint32_t n = 0; n < before.size(); ++n) {
        const auto split = by_triangle.find(before[n].triangle);
        if (split == by_triangle.end())
            open.push_back(before[n]);
        else if (split->second.front().edge != n)
            other_corners.emplace(before[n].triangle, before[n].corner);
    }
    for (const auto& [triangle, edge_points] : by_triangle)
        split_triangle(before[edge_points.front().edge], edge_points);
    return true;
}

void edge_splitter_t::split_triangle(const triangle_edge_t& edge, std::span<const point_t> points) {
    const std::uint32_t behind = (edge.corner + 1) % 3;
    const triangle_vertices_t corners = patched.triangle(edge.triangle);
    const std::uint32_t a = corners[edge.corner], b = corners[behind], c = corners[(behind + 1) % 3];
    patched.take_out(edge.triangle);
    std::uint32_t from = a;
    std::vector<std::uint32_t> parts;
    const auto add_part = [&](std::uint32_t to) {
        parts.push_back(patched.add_triangle({from, to, c}));
        open.push_back({parts.back(), 0});
        from = to;
    };
    for (const point_t& p : points)
        add_part(patched.add_vertex(p.place, a, b, p.t));
    add_part(b);
    // Its other edges are now those of the first and the last part.
    const auto [first, last] = other_corners.equal_range(edge.triangle);
    for (auto other = first; other != last; ++other)
        open.push_back(other->second == behind ? triangle_edge_t{parts.back(), 1}
                                               : triangle_edge_t{parts.front(), 2});
}

/// What coordinates this far from the origin can not tell apart, in unit coordinates.
float rounding_in(const strip_mesh_t& mesh, const unit_space_t& space) {
    float largest = 0;
    for (const vertex_t& vertex : mesh.vertices)
        if (is_finite(vertex.position))
            largest = std::max({largest, std::fabs(vertex.position.x), std::fabs(vertex.position.y),
                                std::fabs(vertex.position.z)});
    return space.to_unit_length(largest) * std::numeric_limits<float>::epsilon();
}

/// Takes out the wall's triangles of which the moves have left an edge or a point.
void take_out_collapsed(patched_mesh_t& patched, std::uint32_t first_of_wall) {
    for (std::uint32_t n = 0; n < patched.triangle_count(); ++n)
        if (patched.triangle(n)[0] >= first_of_wall && patched.surface().is_collapsed(patched.triangle(n)))
            patched.take_out(n);
}

}  // namespace

void close_seam(strip_mesh_t& mesh, std::uint32_t first_of_wall, const unit_space_t& space, bool are_solids) {
    const float rounding = rounding_in(mesh, space);
    const float room = 2 * eps + rounding;
    vertex_mover_t mover(mesh, space);
    mover.join(eps / 20 + rounding);
    mover.move_wall(first_of_wall, room);
    patched_mesh_t patched(mesh);
    take_out_collapsed(patched, first_of_wall);
    edge_splitter_t splitter(patched, space);
    // What lies on an edge comes before what is only near it.
    splitter.split(eps / 20 + rounding);
    splitter.split(room);
    if (are_solids)
        fill_slits(patched, splitter.open_now());
    patched.write_strips();
}

}  // namespace ulk3d
