#include <iostream>

#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"
#include "tool/command_line/command_line.h"
#include "tool/commands/commands.h"
#include "tool/pictures/scene_pictures.h"
#include "tool/scenes/scene_session.h"
#include "utils/text/numbers.h"

namespace ulktool {

namespace {

std::string text_of(const ulk3d::pos3& p) {
    std::string text = "(";
    libutils::append_number(text, p.x);
    text += ", ";
    libutils::append_number(text, p.y);
    text += ", ";
    libutils::append_number(text, p.z);
    return text + ")";
}

std::uint64_t count_triangles(const ulk3d::polygon_t& polygon) {
    std::uint64_t count = 0;
    if (polygon.element_count() > 0) {
        const ulk3d::const_index_span elements(polygon.elements);
        ulk3d::walk_strips(elements.span(), polygon.vertex_count(),
                           [&count](const ulk3d::strip_triangle_t&) { ++count; });
    }
    return count;
}

void print_pictures(const std::vector<scene_picture_t>& pictures) {
    for (const scene_picture_t& picture : pictures) {
        std::cout << "  " << picture.key << ": " << picture.name << ", "
                  << (picture.problem.empty() ? picture.size : picture.problem);
        if (!picture.warning.empty())
            std::cout << "; " << picture.warning;
        std::cout << '\n';
    }
}

void print_model(std::uint64_t index, const ulk3d::model_entry_t& entry, const std::string& path) {
    const ulk3d::modeling_t& model = entry.modeling();
    std::cout << "model " << index << ": ";
    if (entry.kind == ulk3d::model_kind_t::nurbs) {
        const ulk3d::nurbs_t& nurbs = entry.nurbs;
        std::cout << "nurbs surface, " << nurbs.count1 << " x " << nurbs.count2 << " points, order "
                  << nurbs.order1 << " x " << nurbs.order2 << ", resolution " << nurbs.resolution1 << " x "
                  << nurbs.resolution2 << '\n';
    } else {
        std::cout << "polygon surface\n";
    }
    std::cout << "  mesh: " << entry.polygon.vertex_count() << " vertices, " << entry.polygon.element_count()
              << " elements, " << count_triangles(entry.polygon) << " triangles\n";
    ulk3d::pos3 low, high;
    model.bounds(low, high);
    std::cout << "  box: " << text_of(low) << " to " << text_of(high) << '\n';
    print_pictures(model_pictures(entry.texture, path));
}

int info(const command_line_t& line) {
    const std::string& path = line.files().front();
    scene_session_t session;
    ulk3d::scene_t scene;
    if (!session.load_or_tell(scene, path))
        return exit_failed;
    if (!scene.environment.cubetex.empty())
        std::cout << "environment: " << scene.environment.cubetex << '\n';
    std::cout << "models: " << scene.models.size() << '\n';
    std::uint64_t index = 0;
    for (const auto& entry : scene.models)
        print_model(index++, *entry, path);
    return exit_done;
}

}  // namespace

const command_t info_command{
    .name = "info",
    .files = "FILE",
    .help = "Prints the models of a file with their counts, boxes and pictures.",
    .options = {},
    .example = "ulktool info scene.ulk",
    .run = info,
};

}  // namespace ulktool
