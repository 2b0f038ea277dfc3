#include "load_files.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <string_view>

namespace {

/// Lines of a key and numbers, which are as short as they can be and still be read back as the same float.
class line_file_t {
  public:
    line_file_t(const std::string& path, char between_numbers, std::string_view end_of_line)
        : output(path, std::ios::binary), separator(between_numbers), line_end(end_of_line) {}

    template <typename First, typename... Others>
    void line(std::string_view key, First first, Others... others) {
        output << key;
        put(first);
        ((output << separator, put(others)), ...);
        output << line_end;
    }
    void line(std::string_view text) { output << text << line_end; }

  private:
    template <typename Number>
    void put(Number number) {
        char text[32];
        const char* const end = std::to_chars(text, text + sizeof text, number).ptr;
        output.write(text, end - text);
    }
    void put(const std::string& text) { output << text; }

    std::ofstream output;
    char separator;
    std::string_view line_end;
};

struct sheet_t {
    explicit sheet_t(std::uint64_t triangles)
        : squares_along(static_cast<std::uint64_t>(std::sqrt(static_cast<double>(triangles / 2)))),
          squares_down(triangles / 2 / squares_along),
          columns(squares_along + 1),
          rows(squares_down + 1) {}

    std::uint64_t squares_along, squares_down;
    std::uint64_t columns, rows;  ///< of vertices

    std::uint64_t triangles() const { return 2 * squares_along * squares_down; }
    std::uint64_t vertices() const { return columns * rows; }

    /// Calls visit(x, y, z, slope of z along x) for each vertex.
    template <typename Visit>
    void for_each_vertex(Visit visit) const {
        for (std::uint64_t row = 0; row < rows; ++row)
            for (std::uint64_t column = 0; column < columns; ++column) {
                const float x = static_cast<float>(column) / 37, y = static_cast<float>(row) / 41;
                visit(x, y, std::sin(x), std::cos(x));
            }
    }

    /// Calls visit(a, b, c) with the vertices of each triangle, in the order and direction of the strips.
    template <typename Visit>
    void for_each_triangle(Visit visit) const {
        for (std::uint64_t row = 0; row < squares_down; ++row)
            for (std::uint64_t column = 0; column < squares_along; ++column) {
                const std::uint64_t above = row * columns + column, below = above + columns;
                visit(below, above, below + 1);
                visit(below + 1, above, above + 1);
            }
    }
};

void write_strips(line_file_t& file, const sheet_t& sheet) {
    for (std::uint64_t row = 0; row < sheet.squares_down; ++row) {
        for (std::uint64_t column = 0; column < sheet.columns; ++column) {
            file.line("element ", (row + 1) * sheet.columns + column);
            file.line("element ", row * sheet.columns + column);
        }
        file.line("element -1");
    }
}

}  // namespace

std::uint64_t write_stl_file(const std::string& path, std::uint64_t triangles) {
    std::ofstream output(path, std::ios::binary);
    const char header[80] = {};
    const auto count = static_cast<std::uint32_t>(triangles);
    output.write(header, sizeof header);
    output.write(reinterpret_cast<const char*>(&count), sizeof count);
    for (std::uint32_t i = 0; i < count; ++i) {
        const float x = static_cast<float>(i % 1000) / 37, y = static_cast<float>(i / 1000) / 41;
        const float normal_and_corners[] = {
            0, 0, 0, x, y, std::sin(x), x + 1.0F / 37, y, std::sin(x), x, y + 1.0F / 41, std::cos(y)};
        char record[50] = {};
        std::memcpy(record, normal_and_corners, sizeof normal_and_corners);
        output.write(record, sizeof record);
    }
    return count;
}

std::uint64_t write_sheet_as_scene(const std::string& path, std::uint64_t triangles) {
    const sheet_t sheet(triangles);
    line_file_t file(path, ',', "\r\n");
    file.line("begin polygon_surface,", sheet.vertices(), sheet.squares_down * (2 * sheet.columns + 1));
    sheet.for_each_vertex([&](float x, float y, float z, float) {
        file.line("texcoord ", x / 20, y / 18);
        file.line("position ", x, y, z);
    });
    write_strips(file, sheet);
    sheet.for_each_vertex([&](float, float, float, float slope) {
        const float length = std::sqrt(1 + slope * slope);
        file.line("tangent ", 1 / length, 0, slope / length);
        file.line("binormal ", 0, 1, 0);
        file.line("normal ", -slope / length, 0, 1 / length);
    });
    file.line("end");
    return sheet.triangles();
}

std::uint64_t write_sheet_as_obj(const std::string& path, std::uint64_t triangles) {
    const sheet_t sheet(triangles);
    line_file_t file(path, ' ', "\n");
    sheet.for_each_vertex([&](float x, float y, float z, float) { file.line("v ", x, y, z); });
    sheet.for_each_vertex([&](float x, float y, float, float) { file.line("vt ", x / 20, y / 18); });
    sheet.for_each_vertex([&](float, float, float, float slope) {
        const float length = std::sqrt(1 + slope * slope);
        file.line("vn ", -slope / length, 0, 1 / length);
    });
    const auto corner = [](std::uint64_t vertex) {
        const std::string number = std::to_string(vertex + 1);
        return number + '/' + number + '/' + number;
    };
    sheet.for_each_triangle([&](std::uint64_t a, std::uint64_t b, std::uint64_t c) {
        file.line("f ", corner(a), corner(b), corner(c));
    });
    return sheet.triangles();
}

std::uint64_t write_bare_sheet_as_obj(const std::string& path, std::uint64_t triangles) {
    const sheet_t sheet(triangles);
    line_file_t file(path, ' ', "\n");
    sheet.for_each_vertex([&](float x, float y, float z, float) { file.line("v ", x, y, z); });
    sheet.for_each_triangle(
        [&](std::uint64_t a, std::uint64_t b, std::uint64_t c) { file.line("f ", a + 1, b + 1, c + 1); });
    return sheet.triangles();
}
