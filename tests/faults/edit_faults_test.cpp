// Cut, fold and the dialogs' OK while memory runs out: all of an edit is made, or none of it.

#include "faults/fault_loop.h"
#include "support/pictures.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr std::uint64_t cutter = 0, first_victim = 1, second_victim = 2;

std::string polygon_block(const std::string& points, std::size_t count, const std::string& strips,
                          std::size_t strip_count) {
    std::string text =
        "begin polygon_surface," + std::to_string(count) + "," + std::to_string(strip_count) + "\n" + points;
    text += strips;
    for (std::size_t i = 0; i < count; ++i)
        text += "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n";
    return text + "end\n";
}

/// A tetrahedron that reaches through z = 0.
std::string tetrahedron_block() {
    return polygon_block(
        "position -0.31,-0.27,-0.4\nposition 0.33,-0.22,-0.45\nposition 0.02,0.36,-0.42\nposition "
        "0.05,0.01,0.5\n",
        4,
        "element 0\nelement 2\nelement 1\nelement -1\nelement 0\nelement 1\nelement 3\nelement -1\n"
        "element 1\nelement 2\nelement 3\nelement -1\nelement 2\nelement 0\nelement 3\n",
        15);
}

std::string square_block(const std::string& depth) {
    std::string points;
    for (const char* corner : {"-0.9,-0.9,", "0.9,-0.9,", "-0.9,0.9,", "0.9,0.9,"})
        points += "position " + (corner + depth) + "\n";
    return polygon_block(points, 4, "element 0\nelement 1\nelement 2\nelement 3\n", 4);
}

class CutFaults : public fault_loop {
  protected:
    run_t cut() {
        return {.prepare =
                    [this] {
                        open(tetrahedron_block() + square_block("0.01") + square_block("-0.11"));
                        editor.select_model(cutter);
                    },
                .command = [this]() -> std::optional<bool> {
                    editor.cut_current(progress);
                    return std::nullopt;
                }};
    }

    const sigc::slot<void, double> progress{[](double) {}};
};

TEST_F(CutFaults, ChangeAllVictimsOrNone) {
    run_out_of_memory_everywhere(cut());
}

class FoldFaults : public fault_loop {
  protected:
    run_t fold() {
        return {.prepare =
                    [this] {
                        open(square_block("0.2") + square_block("0.01") + square_block("-0.11"));
                        editor.scene().fold_picks[0] = {0, 1};
                        editor.scene().fold_picks[1] = {0, 2};
                        editor.set_fold_angle(40);
                        for (const std::uint64_t model : {first_victim, second_victim})
                            select_polygons(entry(model).polygon, {1});
                    },
                .command = [this]() -> std::optional<bool> { return editor.fold(); }};
    }
};

TEST_F(FoldFaults, FoldAllModelsOrNone) {
    run_out_of_memory_everywhere(fold());
}

/// A mesh with a map and a point and a polygon that are selected, and a net with a step of undo.
class DialogFaults : public fault_loop {
  protected:
    static constexpr std::uint64_t mesh = 0, net = 1;

    void SetUp() override {
        fault_loop::SetUp();
        write_picture(folder, "colour.png", plain_picture(2, 2, {200, 100, 50}));
        write_picture(folder, "other.png", plain_picture(2, 2, {20, 10, 250}));
        write_cube(folder, "sky", {});
    }

    run_t apply(std::uint64_t model, const std::function<void()>& answer) {
        return {.prepare =
                    [this, model] {
                        open(square_block("0.2") + patch_block());
                        editor.select_model(mesh);
                        ASSERT_TRUE(entry(mesh).polygon.select(1));
                        select_polygons(entry(mesh).polygon, {1});
                        editor.select_model(model);
                    },
                .command = [answer]() -> std::optional<bool> {
                    answer();
                    return std::nullopt;
                }};
    }

    /// Has a text dialog hand its text over, as it does, without a copy of its own.
    void expect_text(const std::string& typed, const std::function<void(std::string)>& store) {
        std::string first, second;
        run_t run = apply(mesh, [&] {
            store(std::move(first));
            first.swap(second);
        });
        run.prepare = [&, former = run.prepare] {
            former();
            first = second = typed;
        };
        run_out_of_memory_everywhere(run);
    }
};

TEST_F(DialogFaults, OfAMesh) {
    const polygon_settings_t settings{
        {folder.path("a name that is longer than any small string.ulk"), "colour.png", "", "other.png"},
        7,
        9};
    run_out_of_memory_everywhere(apply(mesh, [&] { editor.set_polygon(settings); }));
}

TEST_F(DialogFaults, OfANewMesh) {
    const polygon_settings_t settings{{folder.path("new.ulk"), "", "", ""}, 4, 5};
    run_t run = apply(mesh, [&] { editor.set_polygon(settings); });
    run.prepare = [this, former = run.prepare] {
        former();
        editor.add_model(model_kind_t::polygon);
    };
    run_out_of_memory_everywhere(run);
}

TEST_F(DialogFaults, OfASurface) {
    const nurbs_settings_t settings{
        {folder.path("a name that is longer than any small string.ulk"), "colour.png", "other.png", ""},
        3,
        4,
        2,
        3,
        5,
        4};
    run_out_of_memory_everywhere(apply(net, [&] { editor.set_nurbs(settings); }));
}

TEST_F(DialogFaults, OfTheEnvironment) {
    const environment_settings_t settings{"sky.png", 0.25F, 0.5F, 1.5F};
    run_out_of_memory_everywhere(apply(mesh, [&] { editor.set_environment(settings); }));
}

TEST_F(DialogFaults, OfControlPoints) {
    std::vector<number_row_t> rows(4);
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = {i, i == 2, {0.5, static_cast<double>(i), 0.25, 0}};
    run_out_of_memory_everywhere(apply(net, [&] { editor.set_net_table(attribute_t::position, rows); }));
}

TEST_F(DialogFaults, OfWeights) {
    const matrix_t<float> weights{{1, 2, 3, 4}, 2, 2};
    run_out_of_memory_everywhere(apply(net, [&] { editor.set_option_table(2, weights); }));
}

TEST_F(DialogFaults, OfTexts) {
    expect_text("(1+2)/4,0.5*(2-1)),1\n0.25,0.125,-1\n1,2,3\n",
                [this](std::string text) { editor.set_vertex_text(attribute_t::position, std::move(text)); });
    expect_text("2\n1\n0\n-1\n", [this](std::string text) { editor.set_element_text(std::move(text)); });
}

/// The first mark of a kind is the first use of its buffer.
class MarkFaults : public fault_loop {
  protected:
    void fail_everywhere_in(const std::function<bool()>& mark) {
        const run_t run{.prepare = [this] { open(square_block("0.2") + patch_block()); },
                        .command = [mark]() -> std::optional<bool> { return mark(); }};
        for (const fallible_t operation : {fallible_t::buffer_store, fallible_t::buffer_mapping})
            for (const bool is_lasting : {false, true})
                EXPECT_GT(fail_everywhere({.operation = operation, .is_lasting = is_lasting}, run), 0U);
    }
};

TEST_F(MarkFaults, OfAPointOfAMesh) {
    fail_everywhere_in([this] { return editor.scene().select_vertex(0, 1); });
}

TEST_F(MarkFaults, OfAPointOfASurface) {
    fail_everywhere_in([this] { return editor.scene().select_vertex(1, 1); });
}

TEST_F(MarkFaults, OfAPolygon) {
    fail_everywhere_in([this] { return editor.scene().select_polygon(0, 1); });
}

}  // namespace
