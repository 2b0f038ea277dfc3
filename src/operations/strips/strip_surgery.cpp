#include "operations/strips/strip_surgery.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "gltextures/gr_check_error.h"

namespace ulk3d {

using libgr::grCheckError;

namespace {

/// How the indices of a triangle are rewritten, in letters: A, B, C are the vertices of its corners i0, i1,
/// i2, n and m the new ones, N the index that follows the triangle, | the restart mark.
///
/// `triangles` replaces all three indices of a strip's first triangle, but only the last index of a later
/// one: the other two also belong to the triangle before it. When something follows that can not continue in
/// the same strip with the same winding, the next letters restart it. Whatever followed comes after them.
struct rewrite_t {
    std::string_view triangles;
    std::string_view one_follows;
    std::string_view more_follow;
};

/// Rows: a strip's first triangle, one with an even number, one with an odd number (a flipped one). Within
/// each row by the last corner: i0, i1, i2. The order of the other two follows from the winding.
using rewrite_table_t = std::array<std::array<rewrite_t, 3>, 3>;

/// The odd triangle with i0 last could continue as "nAC" in its strip, but an empty triangle (B, n, A) would
/// then lie on the split edge: it could be picked, would be saved, and would be split again by the next cut.
constexpr rewrite_table_t one_vertex_rewrites = {{
    {{{"BCn|nCA", "", ""}, {"BCnA", "|BA", "|BAN|B"}, {"AnCB", "N|C", "N|C"}}},
    {{{"n|nCA", "", ""}, {"n|BCn", "|BA", "|BAN|B"}, {"|AnCB", "N|C", "N|C"}}},
    {{{"n|AnC", "|BA", "|BA"}, {"nB", "|CB", "|CB"}, {"|AnCB", "|AC", "|AC"}}},
}};

constexpr rewrite_table_t two_vertex_rewrites = {{
    {{{"BCnmA", "|AC", "|ACN|A"}, {"AnmBC", "|BA", "|BAN|B"}, {"AnmBC", "", ""}}},
    {{{"nmA", "|AC", "|ACN|A"}, {"|AnmBC", "|BA", "|BAN|B"}, {"|AnmBC", "", ""}}},
    {{{"mnA", "|BA", "|BA"}, {"|AnmBC", "|CB", "|CB"}, {"|AnmBC", "|AC", "|AC"}}},
}};

using corners_t = std::array<std::uint32_t, 3>;  ///< element positions, or the vertices there

/// A triangle of a strip that is to be rewritten.
struct place_t {
    std::uint32_t high;          ///< its last position
    std::size_t corner_at_high;  ///< which corner is there, 0 to 2
    std::int32_t number;         ///< in its strip
    corners_t vertices;          ///< of the corners

    bool is_first() const { return number == 0; }
    std::uint32_t replaced() const { return is_first() ? 3 : 1; }
    const rewrite_t& row(const rewrite_table_t& table) const {
        const std::size_t later = number % 2 == 0 ? 1 : 2;
        return table[is_first() ? 0 : later][corner_at_high];
    }
};

bool is_vertex(const strip_mesh_t& mesh, std::size_t position) {
    return position < mesh.elements.size() && mesh.elements[position] < mesh.vertices.size();
}

/// Reports which corners are where they can not be. The first pair names the highest position in both lines.
void print_impossible(std::size_t corner_at_high, std::uint32_t high, std::uint32_t low) {
    const std::string i = std::to_string(high);
    const std::string l = std::to_string(low);
    const std::array<std::string, 3> lines = {
        "i(" + i + ") == i0(" + i + ")\nl(" + l + ") == i2(" + i + ")\n",
        "i==i1(" + i + ")\nl==i0(" + l + ")\n",
        "i==i2(" + i + ")\nl==i1(" + l + ")\n",
    };
    std::cerr << lines[corner_at_high] << std::flush;
}

/// The place of a triangle; empty when there can not be one with that winding.
std::optional<place_t> find_place(const strip_mesh_t& mesh, std::int32_t number, const corners_t& corners) {
    const auto [lowest, highest] = std::ranges::minmax_element(corners);
    const std::uint32_t low = *lowest;
    const std::uint32_t high = *highest;
    const bool in_a_row = high - low == 2 && std::ranges::count(corners, low + 1) == 1;
    const bool are_vertices =
        std::ranges::all_of(corners, [&mesh](std::uint32_t position) { return is_vertex(mesh, position); });
    if (number < 0 || !in_a_row || !are_vertices)
        return std::nullopt;

    const auto corner_at_high = static_cast<std::size_t>(highest - corners.begin());
    const bool turned = number % 2 != 0;
    const std::size_t corner_at_low = (corner_at_high + (turned ? 2 : 1)) % 3;
    if (corners[corner_at_low] != low) {
        if (!turned)
            print_impossible(corner_at_high, high, low);
        return std::nullopt;
    }
    const std::vector<std::uint32_t>& e = mesh.elements;
    return place_t{high, corner_at_high, number, {e[corners[0]], e[corners[1]], e[corners[2]]}};
}

/// Replaces `count` elements by `indices`; what is behind them is moved once.
void replace_elements(std::vector<std::uint32_t>& elements, std::uint32_t first, std::uint32_t count,
                      std::span<const std::uint32_t> indices) {
    const auto from = elements.begin() + static_cast<std::ptrdiff_t>(first);
    const std::size_t common = std::min<std::size_t>(count, indices.size());
    const auto behind = std::ranges::copy(indices.first(common), from).out;
    if (indices.size() > count)
        elements.insert(behind, indices.begin() + static_cast<std::ptrdiff_t>(common), indices.end());
    else
        elements.erase(behind, from + static_cast<std::ptrdiff_t>(count));
}

/// The letters that lead over to the rest of the strip; empty when nothing follows or everything can continue
/// as it is.
std::string_view restart_letters(const strip_mesh_t& mesh, const place_t& place, const rewrite_t& row) {
    if (!is_vertex(mesh, std::size_t{place.high} + 1))
        return {};
    return is_vertex(mesh, std::size_t{place.high} + 2) ? row.more_follow : row.one_follows;
}

/// Converts the letters to indices.
std::vector<std::uint32_t> spelled(std::string_view letters, const corners_t& vertices, std::uint32_t next,
                                   std::uint32_t new_vertex) {
    std::vector<std::uint32_t> indices;
    for (const char letter : letters) {
        switch (letter) {
            case 'A':
            case 'B':
            case 'C':
                indices.push_back(vertices[static_cast<std::size_t>(letter - 'A')]);
                break;
            case 'n':
                indices.push_back(new_vertex);
                break;
            case 'm':
                indices.push_back(new_vertex + 1);
                break;
            case 'N':
                indices.push_back(next);
                break;
            default:
                indices.push_back(restart_mark);
        }
    }
    return indices;
}

/// Where the walk is after a rewrite.
struct passed_t {
    std::uint32_t advance;    ///< to the last index of the new triangles
    std::uint32_t run_count;  ///< there
    bool starts_anew;         ///< a restart mark and two repeated indices come next
};

/// Rewrites the indices of a triangle; its new vertices are the next ones that the mesh gets.
passed_t rewrite(strip_mesh_t& mesh, const place_t& place, const rewrite_t& row) {
    const std::string_view rest = restart_letters(mesh, place, row);
    const std::uint32_t next = rest.empty() ? restart_mark : mesh.elements[place.high + 1];
    std::string letters(row.triangles);
    letters += rest;
    replace_elements(
        mesh.elements, place.high + 1 - place.replaced(), place.replaced(),
        spelled(letters, place.vertices, next, static_cast<std::uint32_t>(mesh.vertices.size())));

    const std::uint32_t kept = place.is_first() ? 0 : static_cast<std::uint32_t>(place.number) + 2;
    const std::size_t last_mark = row.triangles.rfind('|');
    const std::size_t run = last_mark == std::string_view::npos ? kept + row.triangles.size()
                                                                : row.triangles.size() - last_mark - 1;
    return {static_cast<std::uint32_t>(row.triangles.size()) - place.replaced(),
            static_cast<std::uint32_t>(run), rest.starts_with('|')};
}

void set_counts(std::int32_t& triangle_number, std::uint32_t& run_count, std::uint32_t run) {
    run_count = run;
    triangle_number = static_cast<std::int32_t>(run) - 3;
}

template <class Record>
Record between(const Record& a, const Record& b, float t) {
    return a * (1.0F - t) + b * t;
}

}  // namespace

std::uint32_t add_vertex0(strip_mesh_t& mesh, std::int32_t& triangle_number, std::uint32_t& run_count,
                          std::uint32_t i0, std::uint32_t i1, std::uint32_t i2, float t) {
    grCheckError("add_vertex0(start)");
    const auto place = find_place(mesh, triangle_number, {i0, i1, i2});
    if (!place)
        return 0;
    const passed_t passed = rewrite(mesh, *place, place->row(one_vertex_rewrites));
    const auto [a, b, c] = place->vertices;
    mesh.vertices.push_back(between(mesh.vertices[a], mesh.vertices[b], t));
    mesh.frames.push_back(between(mesh.frames[a], mesh.frames[b], t));
    grCheckError("add_vertex0(1)");
    set_counts(triangle_number, run_count, passed.run_count);
    return passed.advance;
}

std::uint32_t add_vertex(strip_mesh_t& mesh, std::int32_t& triangle_number, std::uint32_t& run_count,
                         std::uint32_t i0, std::uint32_t i1, std::uint32_t i2, float t1, float t2) {
    grCheckError("add_vertex(start)");
    const auto place = find_place(mesh, triangle_number, {i0, i1, i2});
    if (!place)
        return 0;
    const passed_t passed = rewrite(mesh, *place, place->row(two_vertex_rewrites));
    const auto [a, b, c] = place->vertices;
    const std::vector<vertex_t>& v = mesh.vertices;
    const std::array new_vertices = {v[a] + (v[b] - v[a]) * t1, v[c] + (v[a] - v[c]) * t2};
    const std::vector<frame_t>& f = mesh.frames;
    const std::array new_frames = {between(f[a], f[b], t1), between(f[c], f[a], t2)};
    mesh.vertices.insert(mesh.vertices.end(), new_vertices.begin(), new_vertices.end());
    mesh.frames.insert(mesh.frames.end(), new_frames.begin(), new_frames.end());
    grCheckError("add_vertex(1)");
    set_counts(triangle_number, run_count, passed.starts_anew ? 2 : passed.run_count);
    return passed.advance + (passed.starts_anew ? 3 : 0);
}

void del_elements(strip_mesh_t& mesh, std::uint32_t first, std::uint32_t last, strip_place_t place) {
    grCheckError("del_elements()");
    std::vector<std::uint32_t>& e = mesh.elements;
    if (first > last || last >= e.size())
        return;
    const std::uint32_t count = last - first + 1;
    const bool next_follows = is_vertex(mesh, std::size_t{last} + 1);
    const bool has_previous = first > 0 && is_vertex(mesh, first - 1);
    switch (place) {
        case strip_place_t::at_end:
            replace_elements(e, first, count, {});
            break;
        case strip_place_t::at_start: {
            if (!next_follows || !is_vertex(mesh, std::size_t{last} + 2) ||
                !is_vertex(mesh, std::size_t{last} + 3))
                return;
            const std::array indices = {e[last + 2],  e[last + 1], e[last + 3],
                                        restart_mark, e[last + 2], e[last + 3]};
            // The triangle that is now the first was a flipped one; what follows it needs a strip of its own.
            const bool more_follows = is_vertex(mesh, std::size_t{last} + 4);
            replace_elements(e, first, count + 3, std::span(indices).first(more_follows ? 6 : 3));
            break;
        }
        case strip_place_t::even_ahead: {
            if (!has_previous || !next_follows)
                return;
            // The triangle of the next index was a flipped one: it is alone in its strip when more follows.
            const std::array indices = {restart_mark, e[last],      e[first - 1],
                                        e[last + 1],  restart_mark, e[last]};
            const bool more_follows = is_vertex(mesh, std::size_t{last} + 2);
            replace_elements(e, first, count, std::span(indices).first(more_follows ? 6 : 3));
            break;
        }
        case strip_place_t::odd_ahead: {
            if (!has_previous || !next_follows)
                return;
            const std::array indices = {restart_mark, e[first - 1], e[last]};
            replace_elements(e, first, count, indices);
            break;
        }
    }
}

}  // namespace ulk3d
