// The window in the test's own process, for what no hand can bring about. Run by test_window.py on its
// desktop.

#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <gtkmm/main.h>
#include <gtkmm/progressbar.h>

#include "app/window/ViewWindow.h"

namespace {

/// The first control of a type below a widget; null when there is none.
template <class Control>
Control* find_control(Gtk::Widget& widget) {
    if (auto* const control = dynamic_cast<Control*>(&widget))
        return control;
    if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
        for (Gtk::Widget* child : container->get_children())
            if (auto* const control = find_control<Control>(*child))
                return control;
    return nullptr;
}

TEST(CutProgress, AFractionAboveOneIsAFullBar) {
    ulk3d::ViewWindow window("ulkedit");
    window.show();
    while (!window.area().get_mapped())
        Gtk::Main::iteration();
    const auto* const bar = find_control<Gtk::ProgressBar>(window);
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

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    Gtk::Main toolkit(&argc, &argv, true);
    return RUN_ALL_TESTS();
}
