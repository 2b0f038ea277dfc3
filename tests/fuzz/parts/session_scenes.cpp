#include "fuzz/parts/session_scenes.h"

#include <array>
#include <sstream>
#include <string_view>
#include <vector>

namespace ulk_test {

namespace {

/// A mesh, its points as text; the normals are zero, so that it gets default frames.
std::string mesh_text(const std::vector<std::string_view>& points, const std::vector<int>& elements) {
    std::ostringstream text;
    text << "begin polygon_surface," << points.size() << ',' << elements.size() << '\n';
    for (const std::string_view point : points)
        text << "position " << point << '\n';
    for (const int element : elements)
        text << "element " << element << '\n';
    for (const char* direction : {"tangent", "binormal", "normal"})
        for (std::size_t n = 0; n < points.size(); ++n)
            text << direction << " 0,0,0\n";
    text << "end\n";
    return std::move(text).str();
}

std::string box_text(const char* low, const char* high) {
    std::vector<std::string> corners;
    for (unsigned n = 0; n < 8; ++n)
        corners.push_back(std::string((n & 1) != 0 ? high : low) + ',' + ((n & 2) != 0 ? high : low) + ',' +
                          ((n & 4) != 0 ? high : low));
    return mesh_text({corners.begin(), corners.end()}, {6, 7, 4, 5, 1, 7, 3, 6, 2, 4, 0, 1, 2, 3});
}

/// Rows and columns with the same knots each.
std::string net_text(std::string_view sizes, std::string_view resolution,
                     const std::vector<std::string_view>& points, const std::vector<std::string_view>& knots1,
                     std::size_t rows, const std::vector<std::string_view>& knots2, std::size_t columns) {
    std::ostringstream text;
    text << "begin nurbs_surface," << sizes << "\nresolution " << resolution << '\n';
    for (std::size_t row = 0; row < rows; ++row)
        for (const std::string_view knot : knots1)
            text << "knot1 " << knot << '\n';
    for (std::size_t column = 0; column < columns; ++column)
        for (const std::string_view knot : knots2)
            text << "knot2 " << knot << '\n';
    for (std::size_t n = 0; n < points.size(); ++n)
        text << "weight " << 1 + n % 2 << "\ncolor " << 40 * n << ",128,255,255\nposition " << points[n]
             << '\n';
    text << "end\n";
    return std::move(text).str();
}

std::array<std::string, session_scene_count> make_scenes() {
    const std::string triangle = mesh_text({"0,0,0", "1,0,0", "0,1,0"}, {0, 1, 2});
    const std::string flat_net = net_text("2,2,2,2", "3,3", {"0,0,0", "1,0,0", "0,1,0", "1,1,0.5"},
                                          {"0", "0", "1", "1"}, 2, {"0", "0", "1", "1"}, 2);
    return {triangle,
            mesh_text({"-1,-1,0", "1,-1,0", "-1,1,0", "1,1,0"}, {0, 1, 2, 3}),
            flat_net,
            net_text("3,3,2,2", "4,3", {"-1,-1,0", "0,-1,1", "1,-1,0", "-1,1,0", "0,1,-1", "1,1,0"},
                     {"0", "0", "0", "1", "1", "1"}, 2, {"0", "0", "1", "1"}, 3),
            box_text("-1/2", "1/2"),
            box_text("0", "1"),
            "begin environment\nreflectalpha 0.5\nend\n" + triangle + flat_net,
            mesh_text({"0,0,0", "1,0,0", "0,1,0", "0,0,0", "0/0,1,1"},
                      {0, 1, 2, 3, 9, -1, -1, 0, 0, 1, 2, -2, 4, 3, 2, 1})};
}

}  // namespace

const std::string& session_scene(std::size_t number) {
    static const auto* const scenes = new std::array(make_scenes());
    return (*scenes)[number % session_scene_count];
}

}  // namespace ulk_test
