#include <array>
#include <charconv>
#include <iostream>
#include <optional>

#include "app/editor/ulkedit.h"
#include "render/offscreen/offscreen_context.h"
#include "render/offscreen/offscreen_target.h"
#include "tool/commands.h"
#include "tool/scene_session.h"
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
    int width = 1024, height = 768;
    const named_view_t* view = nullptr;  ///< null for all four
    bool transparent = false;
};

/// Parses "640x480". False unless both numbers are from 1 to 16384.
bool parse_size(const std::string& text, job_t& job) {
    const char* const end = text.data() + text.size();
    const auto [cross, width_error] = std::from_chars(text.data(), end, job.width);
    if (width_error != std::errc() || cross == end || *cross != 'x')
        return false;
    const auto [stop, height_error] = std::from_chars(cross + 1, end, job.height);
    constexpr int largest = 16384;
    return height_error == std::errc() && stop == end && job.width > 0 && job.height > 0 &&
           job.width <= largest && job.height <= largest;
}

bool parse_view(const std::string& name, job_t& job) {
    for (const named_view_t& view : views)
        if (name == view.name)
            job.view = &view;
    return job.view != nullptr;
}

std::optional<job_t> parse(arguments_t arguments) {
    job_t job;
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const bool has_value = i + 1 < arguments.size();
        if (word == "--size") {
            if (!has_value || !parse_size(arguments[++i], job))
                return std::nullopt;
        } else if (word == "--view") {
            if (!has_value || !parse_view(arguments[++i], job))
                return std::nullopt;
        } else if (word == "--transparent") {
            job.transparent = true;
        } else if (word.starts_with("--")) {
            return std::nullopt;
        } else {
            paths.push_back(word);
        }
    }
    if (paths.size() != 2)
        return std::nullopt;
    job.scene = paths[0];
    job.picture = paths[1];
    return job;
}

int draw(const job_t& job) {
    ulk3d::offscreen_context_t context;
    create_or_exit(context);
    ulk3d::ulkedit_t editor("");
    editor.init();

    // A view is half as wide and high as the frame, so a single view needs a frame of twice its size.
    const int scale = job.view == nullptr ? 1 : 2;
    const ulk3d::offscreen_target_t target(job.width * scale, job.height * scale);
    if (!target.is_complete()) {
        std::cerr << "ulktool render: a picture of this size can not be drawn" << std::endl;
        return exit_failed;
    }
    target.bind();
    editor.reshape(target.pixel_width(), target.pixel_height());
    if (!editor.file_open(job.scene.c_str(), std::cerr))
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

}  // namespace

int render(arguments_t arguments) {
    const std::optional<job_t> job = parse(arguments);
    if (!job) {
        std::cerr << "ulktool render: see ulktool render --help\n";
        return exit_usage;
    }
    return draw(*job);
}

}  // namespace ulktool
