#include "app/editor/polygon_report.h"

#include <array>
#include <bit>
#include <charconv>
#include <ostream>
#include <string>

#include "model/polygon/polygon.h"
#include "model/polygon/strip_walk.h"
#include "model/print.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

std::string hexadecimal(float value) {
    char digits[8];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, std::bit_cast<std::uint32_t>(value), 16).ptr;
    return {digits, end};
}

void print_triangle(std::ostream& out, const strip_triangle_t& triangle, std::span<const vertex_t> vertices) {
    const std::uint32_t p = triangle.position;
    // Element places in the order of the corners: in an even triangle of a strip the first two are swapped.
    const std::array<std::uint32_t, 3> places{p + (triangle.flipped ? 1 : 0), p + (triangle.flipped ? 0 : 1),
                                              p + 2};
    out << "element id: " << places[0] << ", " << places[1] << ", " << places[2] << '\n';
    out << "vertex id: " << triangle.a << ", " << triangle.b << ", " << triangle.c << '\n';
    out << "vertex value: \n";
    const std::array<std::uint32_t, 3> corners{triangle.a, triangle.b, triangle.c};
    for (const std::uint32_t corner : corners)
        out << vertices[corner] << '\n';
    out << "vertex value(hex): \n";
    for (const std::uint32_t corner : corners) {
        const pos3& at = vertices[corner].position;
        out << "pos3( " << hexadecimal(at.x) << ", " << hexadecimal(at.y) << ", " << hexadecimal(at.z)
            << ")\n";
    }
}

}  // namespace

void report_polygon(std::ostream& out, std::uint64_t model_index, std::uint64_t polygon_id,
                    const polygon_t& polygon) {
    out << "select polygon model_id: " << model_index << ", polygon_id: " << polygon_id << '\n';
    const array_span<const vertex_t> vertices(polygon.vertices);
    const const_index_span elements(polygon.elements);
    walk_strips(elements.span(), vertices.size(), [&](const strip_triangle_t& triangle) {
        if (triangle.id == polygon_id)
            print_triangle(out, triangle, vertices.span());
    });
    out.flush();
}

}  // namespace ulk3d
