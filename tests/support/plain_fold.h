#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <set>
#include <vector>

#include "model/math/matrices.h"
#include "model/math/rotations.h"
#include "model/math/vectors.h"
#include "operations/strips/strip_mesh.h"
#include "render/gl/element_array.h"

/// The fold step by step, as it is defined: strips are cut in place, one insertion at a time, with one pass
/// over the selected elements for every vertex that is torn. The reference for tests and benchmarks.
namespace ulk_test {

struct plain_strips_t {
    std::vector<std::uint32_t> elements;
    std::vector<bool> marked;  ///< by position in `elements`
    std::vector<std::size_t> touched;

    void insert_behind(std::size_t place, std::size_t count) {
        const auto at = static_cast<std::ptrdiff_t>(place + 1);
        elements.insert(elements.begin() + at, count, 0);
        marked.insert(marked.begin() + at, count, false);
    }
    void mark(std::initializer_list<std::size_t> places) {
        for (const std::size_t place : places) {
            marked[place] = true;
            touched.push_back(place);
        }
    }
};

/// Cuts the strip before the triangle whose last element is at `i`, the n-th element of its strip, with n
/// above 3. True when the triangle now stands alone, because another strip begins before the next two
/// elements, at i + 5.
inline bool plain_cut(plain_strips_t& strips, std::size_t& i, std::uint64_t n, std::uint64_t vertex_count) {
    std::vector<std::uint32_t>& e = strips.elements;
    const std::uint32_t first = e[i - 2], second = e[i - 1], last = e[i];
    const bool another_follows = i + 1 < e.size() && e[i + 1] < vertex_count;
    if (n % 2 == 0 && another_follows) {
        strips.insert_behind(i, 6);
        e[i] = ulk3d::restart_mark;
        e[i + 1] = second;
        e[i + 2] = first;
        e[i + 3] = last;
        e[i + 4] = ulk3d::restart_mark;
        e[i + 5] = second;
        e[i + 6] = last;
        return true;
    }
    strips.insert_behind(i, 3);
    e[i] = ulk3d::restart_mark;
    e[i + 1] = n % 2 == 0 ? second : first;
    e[i + 2] = n % 2 == 0 ? first : second;
    e[i + 3] = last;
    i += 3;
    return false;
}

inline plain_strips_t plain_separate(const std::vector<std::uint32_t>& elements, std::uint64_t vertex_count,
                                     const std::set<std::uint32_t>& selected) {
    plain_strips_t strips{elements, std::vector<bool>(elements.size()), {}};
    std::uint64_t n = 0;
    std::uint32_t triangle = ulk3d::restart_mark;  // minus one
    bool inside = false;
    for (std::size_t i = 0; i < strips.elements.size(); ++i) {
        if (strips.elements[i] >= vertex_count) {
            n = 0;
            inside = false;
            continue;
        }
        if (++n < 3)
            continue;
        ++triangle;
        const bool marked = selected.contains(triangle);
        if (marked && inside) {
            strips.mark({i});
        } else if (marked) {
            const std::size_t before = i;
            if (n > 3 && plain_cut(strips, i, n, vertex_count)) {
                strips.mark({before + 1, before + 2, before + 3});
                n = 2;
                i = before + 6;
                continue;
            }
            strips.mark({i, i - 1, i - 2});
            inside = true;
        } else if (inside) {
            inside = false;
            const std::size_t before = i;
            if (n > 3 && plain_cut(strips, i, n, vertex_count)) {
                n = 2;
                i = before + 6;
            }
        }
    }
    return strips;
}

inline void plain_tear(ulk3d::strip_mesh_t& mesh, const plain_strips_t& strips) {
    const std::size_t vertex_count = mesh.vertices.size();
    std::vector<std::uint32_t> uses(vertex_count), marked_uses(vertex_count);
    for (std::size_t i = 0; i < mesh.elements.size(); ++i) {
        if (mesh.elements[i] >= vertex_count)
            continue;
        ++uses[mesh.elements[i]];
        marked_uses[mesh.elements[i]] += strips.marked[i];
    }
    std::size_t f = static_cast<std::size_t>(-1);
    for (std::uint32_t v = 0; v < vertex_count; ++v) {
        if (marked_uses[v] < 1 || marked_uses[v] >= uses[v])
            continue;
        do
            ++f;
        while (f < vertex_count && uses[f] != 0);
        if (f >= mesh.vertices.size()) {
            mesh.vertices.resize(f + 1);
            mesh.frames.resize(f + 1);
        }
        for (std::size_t i = 0; i < mesh.elements.size(); ++i)
            if (strips.marked[i] && mesh.elements[i] == v)
                mesh.elements[i] = static_cast<std::uint32_t>(f);
        mesh.vertices[f] = mesh.vertices[v];
        mesh.frames[f] = mesh.frames[v];
    }
}

inline void plain_turn(ulk3d::strip_mesh_t& mesh, const plain_strips_t& strips, const ulk3d::pos3& a,
                       const ulk3d::pos3& b, float angle) {
    using namespace ulk3d;
    const mtx3w to_axis = translation(origin - a), from_axis = translation(a - origin);
    const mtx3w points = to_axis * rot3_to_mtx({angle, b - a}) * from_axis;
    const mtx3w frames = transpose(to_axis * rot3_to_mtx({-angle, b - a}) * from_axis);
    std::set<std::uint32_t> turning;
    for (const std::size_t place : strips.touched)
        if (place < mesh.elements.size() && mesh.elements[place] < mesh.vertices.size())
            turning.insert(mesh.elements[place]);
    const auto turned = [&](const dir3& v) {
        return dir3{v.x * frames[0] + v.y * frames[4] + v.z * frames[8],
                    v.x * frames[1] + v.y * frames[5] + v.z * frames[9],
                    v.x * frames[2] + v.y * frames[6] + v.z * frames[10]};
    };
    for (const std::uint32_t v : turning) {
        mesh.vertices[v].position = transform_point(mesh.vertices[v].position, points);
        frame_t& frame = mesh.frames[v];
        frame = {turned(frame.tangent), turned(frame.binormal), turned(frame.normal)};
    }
}

inline void plain_fold(const std::set<std::uint32_t>& selected, const ulk3d::pos3& a, const ulk3d::pos3& b,
                       float angle, ulk3d::strip_mesh_t& mesh) {
    const plain_strips_t strips = plain_separate(mesh.elements, mesh.vertices.size(), selected);
    mesh.elements = strips.elements;
    plain_tear(mesh, strips);
    plain_turn(mesh, strips, a, b, angle);
}

}  // namespace ulk_test
