// What dialogs show of the current model, and what their OK and Apply do to it.

#include <iostream>

#include "gl/app/editor/editor_test.h"
#include "operations/settings/model_settings.h"
#include "support/captured_stream.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr std::uint64_t mesh = 0, net = 1;

/// A scene of a mesh and a net.
class DialogCommands : public editor_test {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        open(triangle_block() + patch_block());
    }

    const polygon_t& polygon() { return entry(mesh).polygon; }
    const nurbs_t& nurbs() { return entry(net).nurbs; }
};

TEST_F(DialogCommands, ShowAMesh) {
    EXPECT_EQ(editor.vertex_text(attribute_t::position), "0,0,0\n1,0,0\n0,1,0\n");
    EXPECT_EQ(editor.vertex_text(attribute_t::normal), "0,0,1\n0,0,1\n0,0,1\n");
    EXPECT_EQ(editor.element_text(), "0\n1\n2\n-1\n");
    EXPECT_TRUE(editor.net_table(attribute_t::position).points.empty());
    EXPECT_TRUE(editor.option_table(0).values.data.empty());
}

TEST_F(DialogCommands, ShowANet) {
    editor.select_model(net);
    const net_table_t points = editor.net_table(attribute_t::position);
    EXPECT_EQ(points.columns, 2U);
    EXPECT_EQ(points.rows, 2U);
    ASSERT_EQ(points.points.size(), 4U);
    EXPECT_EQ(points.points[3].numbers, (std::array<double, 4>{1, 1, 0, 0}));
    EXPECT_EQ(editor.option_table(0).values.data, nurbs().knot1.data);
    EXPECT_EQ(editor.vertex_text(attribute_t::position), "");
    EXPECT_EQ(editor.element_text(), "");
}

TEST_F(DialogCommands, ShowNothingWithoutAModel) {
    editor.delete_current();
    editor.delete_current();
    ASSERT_EQ(editor.current_model(), nullptr);
    EXPECT_TRUE(editor.net_table(attribute_t::position).points.empty());
    EXPECT_TRUE(editor.option_table(0).values.data.empty());
    EXPECT_EQ(editor.vertex_text(attribute_t::position), "");
    EXPECT_EQ(editor.element_text(), "");
}

TEST_F(DialogCommands, SetAMesh) {
    polygon_settings_t settings = polygon_settings(entry(mesh));
    settings.names.name = "named.ulk";
    editor.set_polygon(settings);
    EXPECT_EQ(polygon().name, "named.ulk");
    editor.set_vertex_text(attribute_t::position, "5,6,7\n");
    EXPECT_EQ(points_of(mesh), (std::vector<pos3>{{5, 6, 7}, {1, 0, 0}, {0, 1, 0}}));
    editor.set_element_text("2\n1\n0\n");
    EXPECT_EQ(editor.element_text(), "2\n1\n0\n-1\n");
}

TEST_F(DialogCommands, MakeTheNormalsOfAMeshThatIsWrittenAsText) {
    ASSERT_TRUE(editor.add_model(model_kind_t::polygon));
    editor.set_polygon({{"new.ulk", "", "", ""}, 3, 3});
    editor.set_vertex_text(attribute_t::position, "0,0,0\n1,0,0\n0,0,1\n");
    EXPECT_EQ(editor.vertex_text(attribute_t::normal), "0,0,1\n0,0,1\n0,0,1\n");
    editor.set_element_text("0\n1\n2\n");
    EXPECT_EQ(editor.vertex_text(attribute_t::normal), "0,-1,0\n0,-1,0\n0,-1,0\n");
    editor.set_vertex_text(attribute_t::position, "0,0,0\n0,1,0\n0,0,1\n");
    EXPECT_EQ(editor.vertex_text(attribute_t::normal), "1,0,-0\n1,0,-0\n1,0,-0\n");
    editor.set_vertex_text(attribute_t::normal, "0,1,0\n");
    editor.set_vertex_text(attribute_t::position, "0,0,0\n1,0,0\n0,1,0\n");
    EXPECT_EQ(editor.vertex_text(attribute_t::normal), "0,1,0\n0,-0,1\n0,-0,1\n");
}

TEST_F(DialogCommands, LeaveTheNormalsThatCameWithAFile) {
    editor.set_vertex_text(attribute_t::position, "0,0,0\n1,0,0\n0,0,1\n");
    editor.set_element_text("1\n0\n2\n");
    EXPECT_EQ(editor.vertex_text(attribute_t::normal), "0,0,1\n0,0,1\n0,0,1\n");
}

TEST_F(DialogCommands, SetANetAndItsSurface) {
    editor.select_model(net);
    net_table_t table = editor.net_table(attribute_t::position);
    table.points[0].numbers[2] = 3;
    editor.set_net_table(attribute_t::position, table.points);
    EXPECT_EQ(points_of(net)[0], (pos3{0, 0, 3}));
    EXPECT_EQ(vertices_of(entry(net).polygon)[0].position, (pos3{0, 0, 3}));
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(net)[0], (pos3{0, 0, 0}));

    const vertex_t middle = vertices_of(entry(net).polygon)[16];
    matrix_t<float> weights = editor.option_table(2).values;
    weights.data[0] = 5;
    editor.set_option_table(2, weights);
    EXPECT_EQ(nurbs().weight.data, weights.data);
    EXPECT_NE(vertices_of(entry(net).polygon)[16], middle);

    nurbs_settings_t settings = nurbs_settings(entry(net));
    settings.count1 = 5;
    const captured_stream errors(std::cerr);  // the new net has no points yet
    editor.set_nurbs(settings);
    EXPECT_EQ(nurbs().count1, 5U);
}

TEST_F(DialogCommands, LeaveModelsOfTheOtherKindAlone) {
    const polygon_settings_t mesh_settings = polygon_settings(entry(mesh));
    nurbs_settings_t net_settings = nurbs_settings(entry(net));
    editor.select_model(net);
    const net_table_t table = editor.net_table(attribute_t::position);
    const matrix_t<float> knots = editor.option_table(0).values;
    editor.set_polygon({{"other.ulk", "", "", ""}, 7, 7});
    editor.set_vertex_text(attribute_t::position, "5,6,7\n");
    editor.set_element_text("2\n1\n0\n");
    EXPECT_EQ(nurbs_settings(entry(net)), net_settings);
    EXPECT_EQ(vertices_of(entry(net).polygon)[0].position, (pos3{0, 0, 0}));
    EXPECT_EQ(elements_of(entry(net).polygon)[0], 33U);

    editor.select_model(mesh);
    net_settings.names.name = "other.ulk";
    editor.set_nurbs(net_settings);
    editor.set_net_table(attribute_t::position, table.points);
    editor.set_option_table(0, knots);
    EXPECT_EQ(polygon_settings(entry(mesh)), mesh_settings);
    EXPECT_EQ(points_of(mesh), (std::vector<pos3>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
}

}  // namespace
