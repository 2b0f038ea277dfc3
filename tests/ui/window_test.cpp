// The window in the test's own process, for what no hand can bring about. Run by test_window.py on its
// desktop.

#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <gtkmm/main.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/progressbar.h>

#include <cerrno>
#include <iostream>
#include <new>
#include <sstream>

#include "app/window/ViewWindow.h"
#include "find_control.h"
#include "utils/memory/alloc_mmap_win.h"

namespace {

TEST(CutProgress, AFractionAboveOneIsAFullBar) {
    ulk3d::ViewWindow window("ulkedit");
    window.show();
    while (!window.area().get_mapped())
        Gtk::Main::iteration();
    const auto* const bar = ulk_test::find_control<Gtk::ProgressBar>(window);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->get_fraction(), 0.0);
    // In a main loop as a cut is: without one the window takes it that the user has quit, and ends the
    // process.
    Glib::signal_idle().connect_once([&window] {
        window.on_cut_progress(1.5);
        Gtk::Main::quit();
    });
    Gtk::Main::run();
    EXPECT_EQ(bar->get_fraction(), 1.0);
}

TEST(OutOfMemory, InACallbackIsALineAndTheProgramGoesOn) {
    ulk3d::ViewWindow window("ulkedit");
    std::ostringstream told;
    std::streambuf* const former = std::cerr.rdbuf(told.rdbuf());
    Glib::signal_idle().connect_once([] { throw std::bad_alloc(); });
    Glib::signal_idle().connect_once([] { Gtk::Main::quit(); });
    Gtk::Main::run();
    std::cerr.rdbuf(former);
    EXPECT_EQ(told.str(), "ulkedit: out of memory.\n");
}

/// Prints and closes the box with a title.
bool answer_box(const char* title) {
    for (Gtk::Window* const window : Gtk::Window::list_toplevels()) {
        auto* const box = dynamic_cast<Gtk::MessageDialog*>(window);
        if (box == nullptr || box->get_title() != title)
            continue;
        std::cerr << title << ": " << box->property_text().get_value() << std::endl;
        box->response(Gtk::RESPONSE_OK);
        return false;
    }
    return true;
}

TEST(LastMessageDeathTest, IsShownInABoxBeforeTheEnd) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto end = [] {
        const ulk3d::ViewWindow window("ulkedit");
        Glib::signal_timeout().connect([] { return answer_box("Error"); }, 50);
        std::uint64_t size = 0;
        libutils::alloc_mmap_win().allocate(size, "/nonexistent/file", 0, 0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(ENOENT),
                "\nError: alloc_mmap_win::allocate\\(\\) failed with error 2: No such file or directory\n$");
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    Gtk::Main toolkit(&argc, &argv, true);
    return RUN_ALL_TESTS();
}
