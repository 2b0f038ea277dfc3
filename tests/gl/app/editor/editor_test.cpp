#include "gl/app/editor/editor_test.h"

#include "utils/text/numbers.h"

namespace ulk_test {

std::string polygon_block(const std::vector<ulk3d::pos3>& vertices, const std::vector<int>& elements) {
    std::string text = "begin polygon_surface," + std::to_string(vertices.size()) + "," +
                       std::to_string(elements.size()) + "\n";
    for (const ulk3d::pos3& p : vertices) {
        text += "position ";
        libutils::append_number(text, p.x);
        text += ",";
        libutils::append_number(text, p.y);
        text += ",";
        libutils::append_number(text, p.z);
        text += "\n";
    }
    for (const int element : elements)
        text += "element " + std::to_string(element) + "\n";
    for (std::size_t i = 0; i < vertices.size(); ++i)
        text += "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n";
    return text + "end\n";
}

const std::vector<ulk3d::pos3>& scattered_points() {
    static const std::vector<ulk3d::pos3> points{
        {-0.9F, -0.8F, -0.7F}, {0.8F, -0.5F, 0.9F},  {-0.3F, 0.9F, 0.5F}, {0.5F, 0.6F, -0.9F},
        {0.1F, 0.15F, -0.2F},  {-0.6F, -0.2F, 0.2F}, {0.9F, 0.9F, -0.45F}};
    return points;
}

std::string scattered_block() {
    return polygon_block(scattered_points(), {0, 1, 2, 3, 4, 5, 6});
}

std::string square_block(float size, float depth) {
    return polygon_block(
        {{-size, -size, depth}, {size, -size, depth}, {-size, size, depth}, {size, size, depth}},
        {0, 1, 2, 3});
}

}  // namespace ulk_test
