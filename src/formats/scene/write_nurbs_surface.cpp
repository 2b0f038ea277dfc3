#include <span>

#include "formats/scene/color_writer.h"
#include "formats/scene/point_fields.h"
#include "formats/scene/scene_text.h"
#include "model/nurbs/nurbs.h"

namespace ulk3d {

namespace {

void write_values(std::string_view key, std::span<const float> values, text_output& output) {
    for (const float value : values)
        output.line(key, ' ', value);
}

void write_points(std::span<const control_point_t> points, color_writer& colors, text_output& output) {
    for (const control_point_t& point : points) {
        colors.write(point.color, output);
        write_position(point.position, output);
    }
}

}  // namespace

bool write_nurbs_surface(const nurbs_t& nurbs, text_output& output) {
    if (nurbs.count1 == 0 || nurbs.order1 == 0 || nurbs.count2 == 0 || nurbs.order2 == 0)
        return false;
    output.line("begin nurbs_surface,", nurbs.count1, ',', nurbs.order1, ',', nurbs.count2, ',',
                nurbs.order2);
    output.line("resolution ", nurbs.resolution1, ',', nurbs.resolution2);
    write_texture_keys(*nurbs.texture, output);
    color_writer colors;
    for (std::uint64_t row = 0; row < nurbs.count2; ++row) {
        write_values("knot1", nurbs.knot1.row(row), output);
        write_values("weight", nurbs.weight.row(row), output);
        write_points(nurbs.points.row(row), colors, output);
    }
    output.line();
    write_values("knot2", nurbs.knot2.data, output);
    output.line("end");
    return true;
}

}  // namespace ulk3d
