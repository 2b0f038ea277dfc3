#include <array>
#include <iostream>

#include "app/editor/ulkedit.h"
#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "render/offscreen/offscreen_context.h"
#include "render/offscreen/offscreen_target.h"
#include "tool/command_line/command_line.h"
#include "tool/command_line/values.h"
#include "tool/commands/commands.h"
#include "tool/pictures/averaged_picture.h"
#include "tool/pictures/fit_scene.h"
#include "tool/scenes/scene_session.h"
#include "utils/codecs/png_file.h"

namespace ulktool {

using libutils::rgba_picture_t;
using ulk3d::mtx3w;
using ulk3d::view_layout_t;
using ulk3d::viewport_t;

namespace {

struct named_view_t {
    const char* name;
    viewport_t (view_layout_t::*area)() const;
};

constexpr std::array<named_view_t, 4> views{{
    {"perspective", &view_layout_t::perspective},
    {"front", &view_layout_t::front},
    {"side", &view_layout_t::side},
    {"top", &view_layout_t::top},
}};

struct job_t {
    std::string scene, picture;
    picture_size_t size{1024, 768};
    const named_view_t* view = nullptr;  ///< null for all four
    bool points = true;
    bool grid = true;
    bool transparent = false;
    bool fit = false;
    std::array<double, 3> turn{};  ///< degrees about x, then y, then z
    int supersample = 1;
};

const named_view_t& read_view(const std::string& name) {
    for (const named_view_t& view : views)
        if (name == view.name)
            return view;
    throw usage_error_t("--view " + name + ": this is not perspective, front, side or top");
}

job_t read_job(const command_line_t& line) {
    job_t job{.scene = line.files()[0], .picture = line.files()[1]};
    if (const std::string* const size = line.find("--size"))
        job.size = read_size("--size", *size);
    if (const std::string* const view = line.find("--view"))
        job.view = &read_view(*view);
    job.points = !line.has("--no-points");
    job.grid = !line.has("--no-grid");
    job.transparent = line.has("--transparent");
    job.fit = line.has("--fit");
    if (const std::string* const turn = line.find("--turn"))
        job.turn = read_triple("--turn", *turn);
    if (const std::string* const supersample = line.find("--supersample"))
        job.supersample = read_integer("--supersample", *supersample, 1, 8);
    return job;
}

mtx3w turning(const std::array<double, 3>& degrees) {
    const auto about = [&degrees](std::size_t axis, const ulk3d::dir3& direction) {
        return ulk3d::rotation(static_cast<float>(degrees[axis]), direction);
    };
    return about(0, {1, 0, 0}) * about(1, {0, 1, 0}) * about(2, {0, 0, 1});
}

/// Turns the scene about the origin in the perspective view, as a drag of the mouse does.
void turn_view(ulk3d::camera_t& camera, const mtx3w& turn) {
    const ulk3d::dir3& back = camera.trackball.translation;
    camera.view = {turn * ulk3d::translation(back), ulk3d::translation(-back) * transpose(turn)};
}

bool open(ulk3d::ulkedit_t& editor, const std::string& path) {
    ulk3d::scene_view_t& view = editor.view();
    const bool opened = editor.scene().append(
        [&](ulk3d::scene_t& loaded) { return load_scene_file(loaded, path, view.glpolygon, std::cerr); });
    if (!opened)
        std::cerr << path << ": does not load" << std::endl;
    return opened;
}

/// Looks at the scene as the window does after opening it, but for what the job has otherwise. False when it
/// is to fit the scene and there is nothing to see.
bool look(ulk3d::ulkedit_t& editor, const job_t& job) {
    ulk3d::scene_view_t& view = editor.view();
    view.opaque = !job.transparent;
    editor.set_control_points(job.points);
    view.fit(editor.models());
    const mtx3w turn = turning(job.turn);
    if (job.fit && !fit_scene(view.cameras, view.areas, editor.models(), turn, job.points))
        return false;
    if (!job.fit && job.turn != std::array<double, 3>{})
        turn_view(view.cameras, turn);
    // Derives the orthographic views, and the lines of their grids.
    editor.set_grid(job.grid);
    return true;
}

/// What of a frame a job asks for.
rgba_picture_t picture_of(const rgba_picture_t& frame, const view_layout_t& layout, const job_t& job) {
    if (job.view == nullptr)
        return frame;
    // In a viewport y counts upwards, in a picture downwards.
    const viewport_t area = (layout.*job.view->area)();
    return frame.part(area.x, frame.height - area.y - area.height, area.width, area.height);
}

int draw(const job_t& job) {
    ulk3d::offscreen_context_t context;
    create_or_exit(context);
    ulk3d::ulkedit_t editor("");
    editor.init();

    // A view is half as wide and high as the frame, so a single view needs a frame of twice its size.
    const int scale = (job.view == nullptr ? 1 : 2) * job.supersample;
    const ulk3d::offscreen_target_t target(job.size.width * scale, job.size.height * scale);
    if (!target.is_complete()) {
        std::cerr << "ulktool render: a picture of this size can not be drawn" << std::endl;
        return exit_failed;
    }
    target.bind();
    editor.reshape(target.pixel_width(), target.pixel_height());
    if (!open(editor, job.scene))
        return exit_failed;
    // Points and lines are as wide in the end as they are without.
    editor.set_pixel_scale(job.supersample);
    if (!look(editor, job)) {
        std::cerr << job.scene << ": there is nothing to see" << std::endl;
        return exit_failed;
    }
    editor.display();

    rgba_picture_t picture = picture_of(target.read_pixels(), editor.layout(), job);
    if (job.supersample > 1)
        picture = averaged_picture(picture, job.supersample);
    if (!libutils::write_png(job.picture.c_str(), picture)) {
        std::cerr << job.picture << ": could not be written" << std::endl;
        return exit_failed;
    }
    return exit_done;
}

int render(const command_line_t& line) {
    return draw(read_job(line));
}

constexpr std::array<option_t, 8> options{{
    {.name = "--size",
     .value = value_t::needed,
     .value_name = "WxH",
     .help = "The size of the picture in pixels, 1024x768 unless told otherwise."},
    {.name = "--view",
     .value = value_t::needed,
     .value_name = "VIEW",
     .help = "perspective, front, side or top: this view alone."},
    {.name = "--no-points",
     .help = "Leaves the points out of the perspective view, as the window's button does."},
    {.name = "--no-grid", .help = "Leaves the grids out."},
    {.name = "--transparent", .help = "Leaves the ground out."},
    {.name = "--turn",
     .value = value_t::needed,
     .value_name = "X,Y,Z",
     .help = "Turns the scene in the perspective view by these degrees: the top towards you, then the\n"
             "front to the right, then the picture counter-clockwise; about the origin, or with --fit\n"
             "about the middle of the scene."},
    {.name = "--fit",
     .help = "Puts the whole scene into each view, centred and in its true proportions, whatever its\n"
             "place and size. A scene that shows nothing is a failure then."},
    {.name = "--supersample",
     .value = value_t::needed,
     .value_name = "N",
     .help = "Draws N times as wide and high, from 1 to 8, and averages: edges become smooth."},
}};

}  // namespace

const command_t render_command{
    .name = "render",
    .files = "SCENE PICTURE.png",
    .help = "Draws the frame of the view area as it is after opening SCENE, or one of its views.",
    .options = options,
    .example = "ulktool render vase.ulk vase.png --size 256x256 --view perspective --fit --supersample 4",
    .run = render,
};

}  // namespace ulktool
