// drag_source X Y WORD...: a small window at a place of the screen, from which the words can be dragged as
// the lines of a text/uri-list. Prints a line when it shows, and one after each drag: whether it was taken.

#include <gtkmm/main.h>
#include <gtkmm/window.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

class source_t : public Gtk::Window {
  public:
    source_t(int x, int y, std::vector<Glib::ustring> dragged_words)
        : Gtk::Window(Gtk::WINDOW_POPUP), words(std::move(dragged_words)) {
        set_default_size(40, 40);
        move(x, y);
        // Without the animation of a failed drag its end comes at once.
        signal_drag_failed().connect(
            [](const Glib::RefPtr<Gdk::DragContext>&, Gtk::DragResult) { return true; });
        drag_source_set({Gtk::TargetEntry("text/uri-list")}, Gdk::BUTTON1_MASK, Gdk::ACTION_COPY);
    }

  protected:
    bool on_map_event(GdkEventAny* event) override {
        std::cout << "shown" << std::endl;
        return Gtk::Window::on_map_event(event);
    }
    void on_drag_data_get(const Glib::RefPtr<Gdk::DragContext>&, Gtk::SelectionData& data, guint,
                          guint) override {
        std::string lines;
        for (const Glib::ustring& word : words)
            lines += word + "\r\n";
        data.set(data.get_target(), lines);
        taken = true;
    }
    void on_drag_end(const Glib::RefPtr<Gdk::DragContext>&) override {
        std::cout << (taken ? "taken" : "not taken") << std::endl;
        taken = false;
    }

  private:
    std::vector<Glib::ustring> words;
    bool taken = false;
};

}  // namespace

int main(int argc, char** argv) {
    Gtk::Main toolkit(&argc, &argv, true);
    source_t source(std::stoi(argv[1]), std::stoi(argv[2]), {argv + 3, argv + argc});
    source.show();
    Gtk::Main::run();
}
