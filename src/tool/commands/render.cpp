#include <array>
#include <iostream>

#include "app/editor/ulkedit.h"
#include "render/offscreen/offscreen_context.h"
#include "render/offscreen/offscreen_target.h"
#include "tool/command_line/command_line.h"
#include "tool/command_line/values.h"
#include "tool/commands/commands.h"
#include "tool/scenes/scene_session.h"
#include "utils/codecs/png_file.h"

namespace ulktool {

using libutils::rgba_picture_t;
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
    bool transparent = false;
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
    job.transparent = line.has("--transparent");
    return job;
}

/// Opens a scene as the window does.
bool open(ulk3d::ulkedit_t& editor, const std::string& path) {
    ulk3d::scene_view_t& view = editor.view();
    const bool opened = editor.scene().append(
        [&](ulk3d::scene_t& loaded) { return load_scene_file(loaded, path, view.glpolygon, std::cerr); });
    if (opened)
        view.fit(editor.models());
    else
        std::cerr << path << ": does not load" << std::endl;
    return opened;
}

int draw(const job_t& job) {
    ulk3d::offscreen_context_t context;
    create_or_exit(context);
    ulk3d::ulkedit_t editor("");
    editor.init();

    // A view is half as wide and high as the frame, so a single view needs a frame of twice its size.
    const int scale = job.view == nullptr ? 1 : 2;
    const ulk3d::offscreen_target_t target(job.size.width * scale, job.size.height * scale);
    if (!target.is_complete()) {
        std::cerr << "ulktool render: a picture of this size can not be drawn" << std::endl;
        return exit_failed;
    }
    target.bind();
    editor.reshape(target.pixel_width(), target.pixel_height());
    if (!open(editor, job.scene))
        return exit_failed;
    editor.view().opaque = !job.transparent;
    editor.display();

    rgba_picture_t picture = target.read_pixels();
    if (job.view != nullptr) {
        // In a viewport y counts upwards, in a picture downwards.
        const viewport_t area = (editor.layout().*job.view->area)();
        picture = picture.part(area.x, picture.height - area.y - area.height, area.width, area.height);
    }
    if (!libutils::write_png(job.picture.c_str(), picture)) {
        std::cerr << job.picture << ": could not be written" << std::endl;
        return exit_failed;
    }
    return exit_done;
}

int render(const command_line_t& line) {
    return draw(read_job(line));
}

constexpr std::array<option_t, 3> options{{
    {.name = "--size",
     .value = value_t::needed,
     .value_name = "WxH",
     .help = "The size of the picture in pixels, 1024x768 unless told otherwise."},
    {.name = "--view",
     .value = value_t::needed,
     .value_name = "VIEW",
     .help = "perspective, front, side or top: this view alone."},
    {.name = "--transparent", .help = "Leaves the ground out."},
}};

}  // namespace

const command_t render_command{
    .name = "render",
    .files = "SCENE PICTURE.png",
    .help = "Draws the frame of the view area as it is after opening SCENE, or one of its views.",
    .options = options,
    .example = "ulktool render vase.ulk vase.png --size 800x600 --view perspective",
    .run = render,
};

}  // namespace ulktool
