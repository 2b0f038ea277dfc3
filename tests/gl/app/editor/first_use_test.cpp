// Which stores of a model are there after each command and gesture: those that it has used, with the content
// that they would have had if all had been made with the model.

#include <algorithm>
#include <functional>
#include <iostream>

#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"
#include "support/gl_state.h"
#include "support/poisoned_stores.h"
#include "support/stl_bytes.h"
#include "support/watched_stores.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

const std::string of_mesh = "vertices normals elements ";

class FirstUses : public editor_test {
  protected:
    /// The buffers of a mesh that have a store.
    static std::string made(const polygon_t& mesh) {
        std::string names;
        const auto add = [&names](const char* name, GLuint id) {
            if (id != 0 && gl_store_size(id) > 0)
                names += std::string(name) + ' ';
        };
        add("vertices", mesh.vertices.buffer_id());
        add("normals", mesh.normals.buffer_id());
        add("elements", mesh.elements.buffer_id());
        add("wknmls", mesh.wknmls.buffer_id());
        add("pointsizes", mesh.pointsizes.buffer_id());
        add("selectionfeedback", mesh.selectionfeedback.buffer_id());
        add("normalfeedback", mesh.normalfeedback.buffer_id());
        add("selectelems", mesh.selectelems.buffer_id());
        return names;
    }
    std::string made(std::size_t index) { return made(entry(index).polygon); }

    void expect_nothing_selected(std::size_t index) {
        const polygon_t& mesh = entry(index).polygon;
        EXPECT_EQ(pointsizes_of(mesh), std::vector<float>(mesh.vertex_count(), unselected_point_size));
        EXPECT_EQ(selectelems_of(mesh),
                  std::vector<std::uint32_t>(3 * (mesh.element_count() - 2), restart_mark));
    }

    static constexpr pos3 corner{-1, -1, 0};

    const sigc::slot<void, double> progress{[](double) {}};

  private:
    const poisoned_stores poison;
};

TEST_F(FirstUses, ALoadMakesTheMesh) {
    open(square_block());
    EXPECT_EQ(made(0), of_mesh);
    expect_nothing_selected(0);
}

TEST_F(FirstUses, ALoadOfAnStlFileMakesTheMesh) {
    const stl_triangle_t triangle{{0, 0, 1}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const std::string path = folder.write("a.stl", stl_file({triangle, triangle}));
    std::ostringstream messages;
    ASSERT_TRUE(editor.file_open(path.c_str(), messages));
    EXPECT_EQ(made(0), of_mesh);
    expect_nothing_selected(0);
}

TEST_F(FirstUses, ASurfaceNeedsTheFramePass) {
    open(patch_block());
    EXPECT_EQ(made(0), "vertices normals elements wknmls normalfeedback ");
    EXPECT_EQ(gl_store_size(entry(0).nurbs.selectionfeedback.buffer_id()), 0);
    EXPECT_EQ(gl_store_size(entry(0).nurbs.pointsizes.buffer_id()), 0);
    EXPECT_EQ(pointsizes_of(entry(0).nurbs), std::vector<float>(4, unselected_point_size));
}

TEST_F(FirstUses, AFrameDrawsThePoints) {
    open(square_block());
    static_cast<void>(frame());
    EXPECT_EQ(made(0), of_mesh + "pointsizes ");
    expect_nothing_selected(0);
}

TEST_F(FirstUses, APickCapturesThePoints) {
    open(square_block());
    EXPECT_TRUE(click(left_button, place_of(view_t::front, corner)));
    EXPECT_EQ(made(0), of_mesh + "pointsizes selectionfeedback ");
    EXPECT_EQ(marked(0), std::vector<std::size_t>{0});
    EXPECT_EQ(pointsizes_of(entry(0).polygon), (std::vector<float>{5, 3, 3, 3}));
}

TEST_F(FirstUses, AnotherOperationGivesBackWhatPicksHaveTaken) {
    open(square_block());
    open(patch_block());
    EXPECT_TRUE(click(left_button, place_of(view_t::front, corner)));
    EXPECT_GT(gl_store_size(entry(1).nurbs.selectionfeedback.buffer_id()), 0);
    editor.set_mode(operation_mode_t::clipping);
    EXPECT_EQ(made(0), of_mesh + "pointsizes ");
    EXPECT_EQ(gl_store_size(entry(1).nurbs.selectionfeedback.buffer_id()), 0);

    editor.set_mode(operation_mode_t::selection);
    editor.scene().clear_selection();
    EXPECT_TRUE(click(left_button, place_of(view_t::front, corner)));
    EXPECT_EQ(marked(0), std::vector<std::size_t>{0});
}

TEST_F(FirstUses, AnotherOperationGivesBackThePicksOfASurfaceThatWasPolygonized) {
    open(patch_block());
    EXPECT_TRUE(click(left_button, place_of(view_t::front, {0, 0, 0})));
    editor.polygonize_current();
    EXPECT_TRUE(click(left_button, place_of(view_t::front, {0, 0, 0})));
    EXPECT_GT(gl_store_size(entry(0).polygon.selectionfeedback.buffer_id()), 0);
    EXPECT_GT(gl_store_size(entry(0).nurbs.selectionfeedback.buffer_id()), 0);
    editor.set_mode(operation_mode_t::punish);
    EXPECT_EQ(gl_store_size(entry(0).polygon.selectionfeedback.buffer_id()), 0);
    EXPECT_EQ(gl_store_size(entry(0).nurbs.selectionfeedback.buffer_id()), 0);
}

TEST_F(FirstUses, ASurfaceThatWasPolygonizedNeedsNoFramePass) {
    open(patch_block());
    const std::vector<frame_t> frames = frames_of(entry(0).polygon);
    editor.polygonize_current();
    EXPECT_EQ(made(0), of_mesh);
    EXPECT_EQ(frames_of(entry(0).polygon), frames);
    ASSERT_TRUE(entry(0).polygon.extend(2000, 2000));
    EXPECT_EQ(made(0), of_mesh);
}

TEST_F(FirstUses, AMarkOfAPointWritesItsSize) {
    open(square_block());
    mark(0, {2});
    EXPECT_EQ(made(0), of_mesh + "pointsizes ");
    EXPECT_EQ(pointsizes_of(entry(0).polygon), (std::vector<float>{3, 3, 5, 3}));
}

TEST_F(FirstUses, AMarkOfAPolygonWritesItsTriangle) {
    open(square_block());
    ASSERT_TRUE(editor.scene().select_polygon(0, 1));
    EXPECT_EQ(made(0), of_mesh + "selectelems ");
    const std::vector<std::uint32_t> strip = elements_of(entry(0).polygon);
    EXPECT_EQ(
        selectelems_of(entry(0).polygon),
        (std::vector<std::uint32_t>{restart_mark, restart_mark, restart_mark, strip[2], strip[1], strip[3]}));
}

TEST_F(FirstUses, ASelectionOfNothingMakesNothing) {
    open(square_block());
    editor.scene().clear_selection();
    editor.scene().clear_polygons();
    EXPECT_EQ(made(0), of_mesh);
}

TEST_F(FirstUses, ASaveReadsTheMesh) {
    open(square_block());
    EXPECT_TRUE(editor.save_models_to(folder.path("saved.ulk").c_str()));
    EXPECT_TRUE(editor.save_models_to(folder.path("saved.stl").c_str()));
    EXPECT_EQ(made(0), of_mesh);
}

TEST_F(FirstUses, PolygonizeKeepsWhatTheSurfaceHas) {
    open(patch_block());
    editor.select_model(0);
    editor.polygonize_current();
    ASSERT_EQ(entry(0).kind, model_kind_t::polygon);
    EXPECT_EQ(made(0).find("pointsizes"), std::string::npos) << made(0);
    EXPECT_EQ(made(0).find("selectelems"), std::string::npos) << made(0);
    expect_nothing_selected(0);
}

TEST_F(FirstUses, ACutMakesTheMeshes) {
    open(square_block(0.5F, 0.1F) + square_block());
    // The cutter stands across the victim.
    {
        const array_span<vertex_t> vertices(entry(0).polygon.vertices);
        for (vertex_t& vertex : vertices)
            vertex.position = {vertex.position.x, 0.1F, vertex.position.y};
    }
    editor.select_model(0);
    editor.cut_current(progress);
    EXPECT_GT(entry(1).polygon.vertex_count(), 4U) << "the cut has made vertices";
    EXPECT_EQ(made(1), of_mesh);
    expect_nothing_selected(1);
}

TEST_F(FirstUses, AFoldMakesTheMeshAndTheMarks) {
    open(square_block());
    editor.scene().fold_picks[0] = {0, 1};
    editor.scene().fold_picks[1] = {0, 2};
    editor.set_fold_angle(40);
    ASSERT_TRUE(editor.scene().select_polygon(0, 1));
    ASSERT_TRUE(editor.fold());
    EXPECT_EQ(made(0), of_mesh + "selectelems ");
    EXPECT_EQ(pointsizes_of(entry(0).polygon),
              std::vector<float>(entry(0).polygon.vertex_count(), unselected_point_size));
}

TEST_F(FirstUses, DialogsReadAndWriteTheMesh) {
    open(square_block());
    editor.select_model(0);
    editor.set_vertex_text(attribute_t::position, editor.vertex_text(attribute_t::position));
    editor.set_element_text(editor.element_text());
    editor.set_polygon({{"a.ulk", "", "", ""}, 6, 9});
    EXPECT_EQ(made(0), of_mesh);
    EXPECT_EQ(vertices_of(entry(0).polygon)[5], (vertex_t{{}, default_color, {}}));
    EXPECT_EQ(elements_of(entry(0).polygon)[8], restart_mark);
    expect_nothing_selected(0);
}

TEST_F(FirstUses, ANewMeshOfADialogIsFilled) {
    ASSERT_TRUE(editor.add_model(model_kind_t::polygon));
    editor.set_polygon({{"a.ulk", "", "", ""}, 6, 9});
    const std::size_t index = editor.models().size() - 1;
    EXPECT_EQ(made(index), of_mesh);
    EXPECT_EQ(vertices_of(entry(index).polygon), std::vector<vertex_t>(6, {{}, default_color, {}}));
    EXPECT_EQ(elements_of(entry(index).polygon), std::vector<std::uint32_t>(9, restart_mark));
    expect_nothing_selected(index);
}

TEST_F(FirstUses, AModelThatIsDeletedUnusedMakesNothing) {
    open(square_block() + square_block(0.5F, 0.5F));
    int stores = 0;
    const watched_stores watching([&stores](GLsizeiptr size) {
        stores += size > 0 ? 1 : 0;
        return true;
    });
    editor.select_model(0);
    editor.delete_current();
    EXPECT_EQ(editor.models().size(), 1U);
    EXPECT_EQ(stores, 0);
}

TEST_F(FirstUses, APickAfterAnEditCapturesAllPoints) {
    open(square_block());
    EXPECT_TRUE(click(left_button, place_of(view_t::front, corner)));
    editor.select_model(0);
    editor.set_polygon({{"a.ulk", "", "", ""}, 5, 6});
    EXPECT_EQ(made(0), of_mesh + "pointsizes ") << "the capture of four points is given back";
    click(left_button, place_of(view_t::front, corner));
    EXPECT_EQ(gl_store_size(entry(0).polygon.selectionfeedback.buffer_id()), 5 * 40);
    EXPECT_EQ(pointsizes_of(entry(0).polygon).size(), 5U);
}

/// GL has no memory for a store that a gesture is the first to use.
class FailingFirstUses : public FirstUses {
  protected:
    /// What is printed while no store of this size can be made.
    std::string told_without(GLsizeiptr failing_size, const std::function<void()>& use) {
        const captured_stream errors(std::cerr);
        const watched_stores failing([failing_size](GLsizeiptr size) { return size != failing_size; });
        use();
        return errors.text();
    }

    static constexpr GLsizeiptr of_sizes = 4 * 4, of_capture = 4 * 40, of_triangles = 6 * 4;
    const std::string of_buffer = "buffer_t::MapBufferRange(): ptr is NULL.\n";
    const std::string of_array = of_buffer + "array pointer is NULL.\n";
};

TEST_F(FailingFirstUses, APickFindsNothing) {
    open(square_block());
    const pixel_place_t place = place_of(view_t::front, corner);
    EXPECT_EQ(told_without(of_capture, [&] { click(left_button, place); }), of_buffer);
    EXPECT_TRUE(marked(0).empty());
    EXPECT_NE(told_without(of_sizes, [&] { click(left_button, place); }).find(of_array), std::string::npos);
    EXPECT_TRUE(marked(0).empty());
    EXPECT_TRUE(click(left_button, place));
    EXPECT_EQ(marked(0), std::vector<std::size_t>{0});
}

TEST_F(FailingFirstUses, APointIsNotMarked) {
    open(square_block());
    EXPECT_EQ(told_without(of_sizes, [&] { EXPECT_FALSE(model(0).select(2)); }), of_array);
    EXPECT_TRUE(marked(0).empty());
    mark(0, {2});
    EXPECT_EQ(pointsizes_of(entry(0).polygon), (std::vector<float>{3, 3, 5, 3}));
}

TEST_F(FailingFirstUses, APolygonIsNotMarked) {
    open(square_block());
    EXPECT_EQ(told_without(of_triangles, [&] { EXPECT_FALSE(editor.scene().select_polygon(0, 1)); }),
              of_buffer + "element pointer is NULL.\n");
    EXPECT_TRUE(entry(0).polygon.selectpolygons().empty());
    expect_nothing_selected(0);
    EXPECT_TRUE(editor.scene().select_polygon(0, 1));
}

TEST_F(FailingFirstUses, AFrameLacksThePoints) {
    open(square_block());
    const auto whole = frame();
    open(square_block());
    editor.select_model(0);
    editor.delete_current();
    libutils::rgba_picture_t without_points;
    EXPECT_NE(told_without(of_sizes, [&] { without_points = frame(); }).find(of_array), std::string::npos);
    EXPECT_NE(without_points.pixels, whole.pixels);
    EXPECT_EQ(frame().pixels, whole.pixels);
}

}  // namespace
