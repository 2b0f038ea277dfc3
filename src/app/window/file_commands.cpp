// The commands of ViewWindow that ask for a file.

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/filefilter.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/stock.h>
#include <sys/stat.h>

#include <optional>
#include <sstream>

#include "app/window/ViewWindow.h"
#include "dialogs/controls/system_text.h"
#include "dialogs/texts/ErrorDialog.h"
#include "utils/text/strings.h"

namespace ulk3d {

namespace {

/// A chooser with the program's two kinds of files. The accept button says Open even for saving: users know
/// it that way.
class scene_file_chooser_t : public Gtk::FileChooserDialog {
  public:
    scene_file_chooser_t(const char* title, Gtk::FileChooserAction action)
        : Gtk::FileChooserDialog(title, action) {
        add_button(Gtk::Stock::OPEN, Gtk::RESPONSE_OK);
        add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
        add_kind("ulkファイル", ".ulk");
        add_kind("stlファイル", ".stl");
    }

    /// Runs the dialog once; returns the bytes of the chosen path, or nothing when it was not accepted.
    std::optional<std::string> choose() {
        if (run() != Gtk::RESPONSE_OK)
            return std::nullopt;
        return get_filename();
    }

  private:
    /// Files whose names end in `extension`, in upper or lower case. The bytes of the name decide: a pattern
    /// of the toolkit would be compared with what it shows for a name that is no UTF-8.
    void add_kind(const char* name, const char* extension) {
        const Glib::RefPtr<Gtk::FileFilter> filter = Gtk::FileFilter::create();
        filter->set_name(name);
        // The wrapper of this function ends the program at a file of which not everything is known.
        gtk_file_filter_add_custom(filter->gobj(), GTK_FILE_FILTER_FILENAME, has_extension,
                                   const_cast<char*>(extension), nullptr);
        add_filter(filter);
    }

    static gboolean has_extension(const GtkFileFilterInfo* file, gpointer extension) {
        return file->filename != nullptr &&
               libutils::has_extension(file->filename, static_cast<const char*>(extension)) == 0;
    }
};

/// Shows over a window that the program is busy.
class busy_pointer_t {
  public:
    explicit busy_pointer_t(Gtk::Window& shown_window) : window(shown_window.get_window()) {
        if (!window)
            return;
        window->set_cursor(Gdk::Cursor::create(window->get_display(), Gdk::WATCH));
        window->get_display()->flush();
    }
    ~busy_pointer_t() {
        if (window)
            window->set_cursor();
    }
    busy_pointer_t(const busy_pointer_t&) = delete;
    busy_pointer_t& operator=(const busy_pointer_t&) = delete;

  private:
    Glib::RefPtr<Gdk::Window> window;
};

bool file_exists(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}

bool may_overwrite(Gtk::Window& parent, const std::string& path) {
    Gtk::MessageDialog question(parent, widget_text(path) + " に上書き保存してもよろしいですか?", false,
                                Gtk::MESSAGE_QUESTION, Gtk::BUTTONS_OK, true);
    question.add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
    question.set_title("上書き確認");
    return question.run() == Gtk::RESPONSE_OK;
}

/// Asks for a path to save to, until a new file is named or the user agrees to overwrite an existing one.
/// Empty when the user cancels.
std::optional<std::string> choose_save_path(Gtk::Window& parent) {
    scene_file_chooser_t chooser("保存", Gtk::FILE_CHOOSER_ACTION_SAVE);
    for (;;) {
        std::optional<std::string> path = chooser.choose();
        if (!path || !file_exists(*path) || may_overwrite(parent, *path))
            return path;
    }
}

}  // namespace

void ViewWindow::on_file_open() {
    std::optional<std::string> path;
    std::ostringstream errors;
    bool opened = false;
    {
        // The chooser stays while the file is read: the toolkit changes the pointer of a window only when it
        // knows that the pointer is there.
        scene_file_chooser_t chooser("開く", Gtk::FILE_CHOOSER_ACTION_OPEN);
        path = chooser.choose();
        if (!path)
            return;

        const busy_pointer_t over_chooser(chooser), over_window(*this);
        opened = viewarea.open_file(*path, errors);
    }
    show_opened(*path, opened, errors.str());
}

void ViewWindow::open_files(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        std::ostringstream errors;
        bool opened = false;
        {
            const busy_pointer_t over_window(*this);
            opened = viewarea.open_file(path, errors);
        }
        show_opened(path, opened, errors.str());
    }
}

void ViewWindow::show_opened(const std::string& path, bool opened, const std::string& errors) {
    if (opened) {
        copy_models_to_menu();
        set_file_title(path);
        return;
    }
    show_error(widget_text(path) + "のオープンに失敗しました", "ファイルオープンエラー");
    ErrorDialog messages(widget_text(errors), "file open error.", *this);
    messages.run();
    set_model_title();
}

void ViewWindow::on_file_save_as() {
    const std::optional<std::string> path = choose_save_path(*this);
    if (!path)
        return;
    if (viewarea.save_models_to(*path))
        set_file_title(*path);
    else
        show_error(widget_text(*path) + " の保存に失敗しました", "ファイル保存エラー");
}

void ViewWindow::on_file_save_model_as() {
    const std::optional<std::string> path = choose_save_path(*this);
    if (!path)
        return;
    if (!viewarea.save_current_to(*path))
        show_error("ファイルの上書き保存に失敗しました", "ファイル保存エラー");
    // Unlike the other save command, this one shows the file in the title even when nothing was written.
    set_file_title(*path);
}

}  // namespace ulk3d
