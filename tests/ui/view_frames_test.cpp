// When the view draws its scene, and what shows when it does not, in the test's own process. Run by
// test_window.py on its desktop.

#include <GL/glew.h>
#include <gdk/gdkkeysyms.h>
#include <gdkmm/pixbuf.h>
#include <glibmm/main.h>
#include <glibmm/spawn.h>
#include <gtest/gtest.h>
#include <gtkmm/main.h>
#include <gtkmm/menu.h>
#include <gtkmm/menubar.h>
#include <gtkmm/progressbar.h>
#include <gtkmm/togglebutton.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/window/ViewWindow.h"
#include "find_control.h"
#include "support/captured_stream.h"
#include "support/scene_text.h"

namespace ulk3d {
namespace {

using ulk_test::find_control;

/// Moves the pointer and presses keys and buttons, by the words of xdotool.
void hand(const std::string& words) {
    int status = -1;
    Glib::spawn_command_line_sync("xdotool " + words, nullptr, nullptr, &status);
    ASSERT_EQ(status, 0) << words;
}

void run_for(unsigned milliseconds) {
    bool over = false;
    // Behind the toolkit's frames: one that is due comes first, however late this loop is.
    Glib::signal_timeout().connect_once([&over] { over = true; }, milliseconds, Glib::PRIORITY_LOW);
    while (!over)
        Gtk::Main::iteration();
}

testing::AssertionResult becomes(const std::function<bool()>& condition) {
    for (int turns = 2000; turns > 0; --turns) {
        if (condition())
            return testing::AssertionSuccess();
        run_for(10);
    }
    return testing::AssertionFailure() << "not within 20 seconds";
}

/// Calls a function at the end of each frame, which is where a frame makes its pixels opaque.
class frame_watch_t {
  public:
    explicit frame_watch_t(std::function<void()> function)
        : at_frame(std::move(function)), original(__glewClearBufferfv) {
        watching = this;
        __glewClearBufferfv = [](GLenum buffer, GLint index, const GLfloat* value) {
            watching->original(buffer, index, value);
            watching->at_frame();
        };
    }
    ~frame_watch_t() { __glewClearBufferfv = original; }
    frame_watch_t(const frame_watch_t&) = delete;
    frame_watch_t& operator=(const frame_watch_t&) = delete;

  private:
    static inline frame_watch_t* watching = nullptr;
    std::function<void()> at_frame;
    PFNGLCLEARBUFFERFVPROC original;
};

struct place_t {
    int x, y;
};

std::string words_of(const place_t& place) {
    return std::to_string(place.x) + ' ' + std::to_string(place.y);
}

GdkEventKey return_key() {
    GdkEventKey key{};
    key.keyval = GDK_KEY_Return;
    return key;
}

/// A window that shows a triangle, at rest. All tests share it: a second window of the process would find the
/// maps of the first one's surfaces in no context.
class ViewFrames : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        shown = std::make_unique<ViewWindow>("ulkedit");
        shown->show();
        while (!shown->area().get_mapped())
            Gtk::Main::iteration();
        open_triangle();
    }
    static void open_triangle() {
        const ulk_test::temporary_folder_t folder;
        std::ostringstream errors;
        ASSERT_TRUE(
            shown->area().open_file(folder.write("triangle.ulk", ulk_test::triangle_block()), errors));
    }
    static void TearDownTestSuite() { shown.reset(); }

    void SetUp() override {
        counted = area.signal_draw().connect(
            [this](const Cairo::RefPtr<Cairo::Context>&) {
                ++repaints;
                return false;
            },
            false);
        hand("mousemove 1279 0");
        area.key_press(return_key());
        ASSERT_TRUE(becomes([this] { return repaints > 0; }));
        settle();
        first_picture = picture();
        repaints = 0;
        watch.emplace([this] {
            ++frames;
            during_frame();
        });
    }
    void TearDown() override { counted.disconnect(); }

    /// Returns when the window has not been repainted for a while.
    void settle() {
        int before = 0;
        do {
            before = repaints;
            window.get_display()->sync();
            run_for(200);
        } while (repaints != before);
    }

    /// That so many frames are drawn, and no more.
    void expect_frames(int count) {
        EXPECT_TRUE(becomes([this, count] { return frames >= count; }));
        settle();
        EXPECT_EQ(frames, count);
    }

    /// The pixels of the view as the screen has them.
    std::string picture() {
        place_t place{};
        area.translate_coordinates(window, 0, 0, place.x, place.y);
        const auto pixels = Gdk::Pixbuf::create(window.get_window(), place.x, place.y,
                                                area.get_allocated_width(), area.get_allocated_height());
        return {reinterpret_cast<const char*>(pixels->get_pixels()), pixels->get_byte_length()};
    }

    /// A place on the screen, counted from the corner of a widget of the window.
    place_t on_screen(Gtk::Widget& widget, int x, int y) {
        place_t place{}, origin{};
        widget.translate_coordinates(window, x, y, place.x, place.y);
        window.get_window()->get_origin(origin.x, origin.y);
        return {origin.x + place.x, origin.y + place.y};
    }

    /// That the window has been repainted, with the picture of the last frame.
    void expect_last_frame() {
        ASSERT_TRUE(becomes([this] { return repaints > 0; }));
        settle();
        EXPECT_EQ(frames, 0);
        EXPECT_TRUE(picture() == first_picture);
    }

    ViewWindow& window = *shown;
    ViewArea& area = window.area();
    int frames = 0, repaints = 0;
    std::function<void()> during_frame = [] {};
    std::string first_picture;

  private:
    static inline std::unique_ptr<ViewWindow> shown;
    sigc::connection counted;
    std::optional<frame_watch_t> watch;
};

TEST_F(ViewFrames, ThePictureHasMoreThanOneColour) {
    std::set<std::string> colours;
    for (std::size_t i = 0; i + 3 <= first_picture.size(); i += 3)
        colours.insert(first_picture.substr(i, 3));
    EXPECT_GT(colours.size(), 2U);
    area.set_grid(false);
    expect_frames(1);
    EXPECT_FALSE(picture() == first_picture);
    area.set_grid(true);
}

TEST_F(ViewFrames, ARepaintOfTheWindowDrawsNone) {
    window.queue_draw();
    expect_last_frame();
}

TEST_F(ViewFrames, AControlThatThePointerPassesDrawsNone) {
    auto& button = *find_control<Gtk::ToggleButton>(window);
    const auto is_lit = [&button] { return (button.get_state_flags() & Gtk::STATE_FLAG_PRELIGHT) != 0; };
    hand("mousemove " + words_of(on_screen(button, 5, 5)));
    ASSERT_TRUE(becomes(is_lit));
    settle();
    hand("mousemove 1279 0");
    ASSERT_TRUE(becomes([&] { return !is_lit(); }));
    settle();
    EXPECT_EQ(frames, 0);
    EXPECT_TRUE(picture() == first_picture);
}

bool tooltip_shows() {
    return std::ranges::any_of(Gtk::Window::list_toplevels(), [](const Gtk::Window* shown) {
        return shown->get_mapped() && shown->get_type_hint() == Gdk::WINDOW_TYPE_HINT_TOOLTIP;
    });
}

TEST_F(ViewFrames, ATooltipThatComesAndGoesDrawsNone) {
    auto& button = *find_control<Gtk::ToggleButton>(window);
    button.set_tooltip_text("a text of\nthree lines\nover the view");
    hand("mousemove " + words_of(on_screen(button, 5, 5)));
    settle();
    hand("mousemove " + words_of(on_screen(button, 8, 5)));
    ASSERT_TRUE(becomes(tooltip_shows));
    hand("mousemove 1279 0");
    ASSERT_TRUE(becomes([] { return !tooltip_shows(); }));
    expect_last_frame();
}

TEST_F(ViewFrames, AMenuOverTheViewDrawsNone) {
    auto& item = *dynamic_cast<Gtk::MenuItem*>(find_control<Gtk::MenuBar>(window)->get_children().front());
    const Gtk::Menu& menu = *item.get_submenu();
    hand("mousemove " + words_of(on_screen(item, 5, 5)) + " click 1");
    ASSERT_TRUE(becomes([&menu] { return menu.get_mapped(); }));
    place_t top{};
    menu.get_window()->get_origin(top.x, top.y);
    ASSERT_GT(top.y + menu.get_allocated_height(), on_screen(area, 0, 0).y + 20);
    settle();
    hand("key Escape");
    ASSERT_TRUE(becomes([&menu] { return !menu.get_mapped(); }));
    hand("mousemove 1279 0");
    expect_last_frame();
}

TEST_F(ViewFrames, AWindowThatWasHiddenShowsAllOfTheLastOne) {
    window.hide();
    settle();
    repaints = 0;
    window.show();
    ASSERT_TRUE(becomes([this] { return repaints > 0 && area.get_mapped(); }));
    settle();
    EXPECT_TRUE(picture() == first_picture);
}

TEST_F(ViewFrames, RequestsThatComeTogetherDrawOne) {
    area.redraw();
    area.set_grid(true);
    expect_frames(1);
    EXPECT_TRUE(picture() == first_picture);
}

TEST_F(ViewFrames, ACutDrawsThoseThatAreAskedFor) {
    frames = 0;
    open_triangle();
    expect_frames(1);
    auto& bar = *find_control<Gtk::ProgressBar>(window);
    int calls = 0;
    area.cut_current([&](double) {
        if (calls++ > 0)
            return;
        frames = repaints = 0;
        bar.set_fraction(0.5);
        window.queue_draw();
        EXPECT_TRUE(becomes([this] { return repaints > 0; }));
        settle();
        EXPECT_EQ(frames, 0);
        area.set_grid(false);
        expect_frames(1);
        area.set_grid(true);
        expect_frames(2);
        frames = 0;
        // The repaints have made the window's own context current.
        area.make_current();
    });
    EXPECT_GT(calls, 0);
    expect_frames(1);
    area.delete_current();
    expect_frames(2);
}

TEST_F(ViewFrames, ANewSizeIsDrawn) {
    const int width = window.get_width(), height = window.get_height();
    window.resize(width + 40, height + 30);
    ASSERT_TRUE(becomes([this] { return frames > 0; }));
    settle();
    const std::string resized = picture();
    EXPECT_GT(resized.size(), first_picture.size());
    frames = 0;
    area.redraw();
    expect_frames(1);
    EXPECT_TRUE(picture() == resized);
    window.resize(width, height);
    ASSERT_TRUE(becomes([this] { return picture().size() == first_picture.size(); }));
    settle();
    EXPECT_TRUE(picture() == first_picture);
}

TEST_F(ViewFrames, WhatIsDrawnOutsideOneIsNotShown) {
    area.with_gl_unseen([](ulkedit_t&) {
        GLint framebuffer = 0;
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
        EXPECT_NE(framebuffer, 0);
        glEnable(GL_SCISSOR_TEST);
        glScissor(100, 100, 50, 50);
        glClearBufferfv(GL_COLOR, 0, std::array{1.0F, 0.0F, 0.0F, 1.0F}.data());
        glDisable(GL_SCISSOR_TEST);
    });
    frames = 0;
    window.queue_draw();
    expect_last_frame();
    area.redraw();
    expect_frames(1);
    EXPECT_TRUE(picture() == first_picture);
}

TEST_F(ViewFrames, AKeyThatRunsOutOfMemoryDrawsOne) {
    // The camera goes back to its start before Return looks for the points to fit.
    const auto map = __glewMapBufferRange;
    __glewMapBufferRange = [](GLenum, GLintptr, GLsizeiptr, GLbitfield) -> void* { throw std::bad_alloc(); };
    {
        const ulk_test::captured_stream told(std::cerr);
        area.key_press(return_key());
        EXPECT_EQ(told.text(), "ulkedit: out of memory.\n");
    }
    __glewMapBufferRange = map;
    expect_frames(1);
}

TEST_F(ViewFrames, OneThatRanOutOfMemoryIsDrawnAgainAtTheNextRepaint) {
    during_frame = [] { throw std::bad_alloc(); };
    {
        const ulk_test::captured_stream told(std::cerr);
        area.redraw();
        expect_frames(1);
        EXPECT_EQ(told.text(), "ulkedit: out of memory.\n");
    }
    during_frame = [] {};
    window.queue_draw();
    expect_frames(2);
    EXPECT_TRUE(picture() == first_picture);
}

TEST_F(ViewFrames, MotionsThatWaitDuringOneAreAllHandledBeforeTheNext) {
    constexpr int motions = 40;
    place_t pointer = on_screen(area, area.get_allocated_width() * 3 / 4, area.get_allocated_height() / 4);
    hand("mousemove " + words_of(pointer) + " keydown alt mousedown 3");
    EXPECT_TRUE(becomes([this] { return frames > 0; }));
    settle();

    std::vector<std::string> handled, expected;
    const int start = pointer.x;
    const int left = on_screen(area, 0, 0).x;
    sigc::connection listening = area.signal_motion_notify_event().connect(
        [&handled, start, left](const GdkEventMotion* event) {
            handled.push_back(std::to_string(static_cast<int>(event->x) + left - start));
            return false;
        },
        false);
    // Three frames that take far longer than the screen's refresh, with motions that come during each.
    int bursts = 3;
    during_frame = [&] {
        handled.push_back("frame");
        expected.push_back("frame");
        if (bursts == 0)
            return;
        --bursts;
        std::string words;
        for (int i = 0; i < motions; ++i) {
            ++pointer.x;
            words += " mousemove " + words_of(pointer);
            expected.push_back(std::to_string(pointer.x - start));
        }
        hand(words);
        // Now they are in the queue of this process.
        window.get_display()->sync();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    };
    frames = 0;
    area.redraw();
    EXPECT_TRUE(becomes([&bursts] { return bursts == 0; }));
    expect_frames(4);
    EXPECT_EQ(handled, expected);
    listening.disconnect();
    during_frame = [] {};
    hand("mouseup 3 keyup alt");
    settle();
}

}  // namespace
}  // namespace ulk3d
