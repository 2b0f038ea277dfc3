#pragma once

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "support/cut_scenes.h"

/// Scenes of the kind that people make with the cut: round coordinates, common planes, holes, slots, letters.
namespace ulk_test {

/// One victim and the cutters that are taken out of it one after the other.
struct cut_work_t {
    std::string name;
    strip_mesh_t victim;
    std::vector<strip_mesh_t> cutters;
};

/// A prism over a polygon in the x, y plane, which runs counter-clockwise and is seen whole from its first
/// corner.
inline strip_mesh_t prism(const std::vector<ulk3d::pos2>& outline, float low, float high) {
    std::vector<pos3> points;
    std::vector<corner_ids_t> triangles;
    const auto n = static_cast<std::uint32_t>(outline.size());
    for (const float z : {low, high})
        for (const ulk3d::pos2& p : outline)
            points.push_back({p.x, p.y, z});
    for (std::uint32_t k = 0; k < n; ++k) {
        const std::uint32_t next = (k + 1) % n;
        triangles.insert(triangles.end(), {{k, next, n + k}, {next, n + next, n + k}});
        if (k >= 1 && k + 1 < n)
            triangles.insert(triangles.end(), {{0, k + 1, k}, {n, n + k, n + k + 1}});
    }
    return mesh_of(points, triangles);
}

inline strip_mesh_t cylinder(float x, float y, float radius, std::uint32_t sides, float low, float high) {
    std::vector<ulk3d::pos2> outline;
    for (std::uint32_t k = 0; k < sides; ++k) {
        const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(k) / static_cast<float>(sides);
        outline.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
    }
    return prism(outline, low, high);
}

/// z becomes y: what lay stands.
inline strip_mesh_t upright(strip_mesh_t mesh) {
    for (ulk3d::vertex_t& vertex : mesh.vertices)
        vertex.position = {vertex.position.x, -vertex.position.z, vertex.position.y};
    return mesh;
}

inline strip_mesh_t scaled(const strip_mesh_t& mesh, float size, float offset) {
    return transformed(transformed(mesh, ulk3d::scale(size, size, size)),
                       ulk3d::translation({offset, offset, offset}));
}

inline cut_work_t scaled(const cut_work_t& work, float size, float offset) {
    cut_work_t result{work.name, scaled(work.victim, size, offset), {}};
    for (const strip_mesh_t& cutter : work.cutters)
        result.cutters.push_back(scaled(cutter, size, offset));
    return result;
}

inline std::vector<strip_mesh_t> holes(std::uint32_t across, std::uint32_t sides, float radius) {
    std::vector<strip_mesh_t> cutters;
    for (std::uint32_t n = 0; n < across * across; ++n) {
        const float step = 2 / static_cast<float>(across);
        const float x = (static_cast<float>(n % across) + 0.5F) * step - 1;
        const float y = (static_cast<float>(n / across) + 0.5F) * step - 1;
        cutters.push_back(cylinder(x, y, radius, sides, -0.5F, 0.5F));
    }
    return cutters;
}

inline cut_work_t upright(const cut_work_t& work) {
    cut_work_t result{work.name + ", upright", upright(work.victim), {}};
    for (const strip_mesh_t& cutter : work.cutters)
        result.cutters.push_back(upright(cutter));
    return result;
}

/// The strokes of an E, a T and an L as boxes on the grid.
inline std::vector<strip_mesh_t> letters() {
    const auto stroke = [](float x0, float y0, float x1, float y1) {
        return box({x0, y0, 0}, {x1, y1, 0.2F});
    };
    return {stroke(-0.9F, -0.4F, -0.8F, 0.4F), stroke(-0.8F, 0.3F, -0.4F, 0.4F),
            stroke(-0.8F, -0.1F, -0.5F, 0),    stroke(-0.8F, -0.4F, -0.4F, -0.3F),
            stroke(-0.2F, 0.3F, 0.3F, 0.4F),   stroke(0, -0.4F, 0.1F, 0.3F),
            stroke(0.5F, -0.4F, 0.6F, 0.4F),   stroke(0.6F, -0.4F, 0.9F, -0.3F)};
}

inline std::vector<cut_work_t> works() {
    const strip_mesh_t plate = box({-1, -1, -0.1F}, {1, 1, 0.1F});
    const strip_mesh_t cube = box({-0.5F, -0.5F, -0.5F}, {0.5F, 0.5F, 0.5F});
    std::vector<cut_work_t> works{
        {"box minus one from its middle", cube, {box({0, 0, 0}, {1, 1, 1})}},
        {"box minus its half", cube, {box({0, -0.5F, -0.5F}, {0.5F, 0.5F, 0.5F})}},
        {"box minus a box inside", cube, {box({-0.2F, -0.2F, -0.2F}, {0.2F, 0.2F, 0.2F})}},
        {"box minus itself", cube, {cube}},
        {"box touched at a side", cube, {box({0.5F, -0.2F, -0.2F}, {1, 0.2F, 0.2F})}},
        {"box touched by its like", cube, {box({0.5F, -0.5F, -0.5F}, {1.5F, 0.5F, 0.5F})}},
        {"sphere minus its half", sphere({0, 0, 0}, 1, 2), {box({0, -1, -1}, {1, 1, 1})}},
        {"sphere minus an octant", sphere({0, 0, 0}, 1, 2), {box({0, 0, 0}, {1, 1, 1})}},
        {"sphere in strips minus its half",
         in_strips(sphere({0, 0, 0}, 1, 2)),
         {box({-1, -1, 0}, {1, 1, 1})}},
        {"plate with a hole as deep as it", plate, {cylinder(0, 0, 0.5F, 32, -0.1F, 0.1F)}},
        {"plate with a hole", plate, {cylinder(0, 0, 0.5F, 32, -0.5F, 0.5F)}},
        {"plate with a blind hole", plate, {cylinder(0, 0, 0.5F, 32, 0, 0.1F)}},
        {"plate with four holes", plate, holes(2, 32, 0.3F)},
        {"plate with sixteen holes", plate, holes(4, 16, 0.2F)},
        {"plate with a slot", plate, {box({-0.8F, -0.1F, -0.1F}, {0.8F, 0.1F, 0.1F})}},
        {"plate with a slot to its edge", plate, {box({-1, -0.1F, 0}, {0.5F, 0.1F, 0.1F})}},
        {"plate with letters", plate, letters()},
        {"tube", cylinder(0, 0, 1, 32, -1, 1), {cylinder(0, 0, 0.8F, 32, -1, 1)}},
        {"elbow of two tubes", cylinder(0, 0, 0.5F, 24, -1, 1), {upright(cylinder(0, 0, 0.5F, 24, -1, 1))}},
        {"torus minus its half", torus({0, 0, 0}, 0.8F, 0.3F, 24, 12), {box({0, -2, -1}, {2, 2, 1})}},
    };
    for (const std::size_t n : {9U, 10U, 12U, 13U, 16U, 17U})
        works.push_back(upright(works[n]));
    return works;
}

}  // namespace ulk_test
