#include "dialogs/tables/ArrayDialog.h"

#include <gtkmm/checkbutton.h>
#include <gtkmm/separator.h>

#include <string>
#include <utility>

#include "dialogs/controls/dialog_answers.h"
#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

constexpr array_dialog_kind_t point_kind{3, {-100.0, 100.0, 0.1, 1.0, 7}, {"x", "y", "z"}};
constexpr array_dialog_kind_t color_kind{4, {0.0, 255.0, 1.0, 8.0, 0}, {"r", "g", "b", "a"}};

}  // namespace

ArrayDialogPoint::ArrayDialogPoint(const net_table_t& shown, apply_t apply_table, const Glib::ustring& title,
                                   Gtk::Window& window)
    : ArrayDialog(point_kind, shown, std::move(apply_table), title, window) {}

ArrayDialogColor::ArrayDialogColor(const net_table_t& shown, apply_t apply_table, const Glib::ustring& title,
                                   Gtk::Window& window)
    : ArrayDialog(color_kind, shown, std::move(apply_table), title, window) {}

/// The cell of one point: a check button on the left, and right of it its numbers one above the other.
class ArrayDialog::item_t : public table_cell_t {
  public:
    explicit item_t(ArrayDialog& shown_dialog) : dialog(shown_dialog) {
        add_part(check);
        check.signal_toggled().connect([this] { dialog.points[point].selected = check.get_active(); });
        for (std::uint32_t i = 0; i < dialog.kind.numbers; ++i) {
            spins.push_back(std::make_unique<number_spin_t>(dialog.kind.range, 0));
            spins.back()->number_given.connect(
                [this, i](double number) { dialog.points[point].numbers[i] = number; });
            add_part(*spins.back());
        }
        stops = parts.size();
        add_part(separator);
    }

    void show(std::uint64_t cell) override {
        const net_layout_t& places = dialog.layout;
        const unsigned column = places.column_of(cell), row = places.row_of(cell);
        point = row * dialog.columns + column;
        std::string name = "制御点 ";
        libutils::append_number(name, column);
        name += ',';
        libutils::append_number(name, row);
        check.set_active(dialog.points[point].selected);
        name_part(check, name + " 選択");
        parts.front().place = places.check(column, row);
        for (unsigned i = 0; i < spins.size(); ++i) {
            spins[i]->show_number(dialog.points[point].numbers[i]);
            name_part(*spins[i], name + ' ' + dialog.kind.axes[i]);
            parts[1 + i].place = places.number(column, row, i);
        }
        parts.back().place = places.separator(column, row);
    }

    void finish_typing() override {
        for (const auto& spin : spins)
            spin->update();
    }

  private:
    void add_part(Gtk::Widget& widget) {
        widget.show();
        parts.push_back({&widget, {}});
    }

    ArrayDialog& dialog;
    std::uint64_t point = 0;
    Gtk::CheckButton check;
    std::vector<std::unique_ptr<number_spin_t>> spins;
    Gtk::HSeparator separator;
};

ArrayDialog::ArrayDialog(const array_dialog_kind_t& edited_kind, const net_table_t& shown,
                         apply_t apply_table, const Glib::ustring& title, Gtk::Window& window)
    : Gtk::Dialog(title, window, true),
      kind(edited_kind),
      columns(shown.columns),
      points(shown.points),
      layout(columns, columns == 0 ? 0 : points.size() / columns, kind.numbers),
      table(*this, layout.column_lines(), layout.row_lines()),
      apply(std::move(apply_table)) {
    for (number_row_t& point : points)
        for (std::uint32_t i = 0; i < kind.numbers; ++i)
            point.numbers[i] = kind.range.clamped(point.numbers[i]);
    if (columns != 0 || shown.rows != 0) {
        scroller.set_policy(Gtk::POLICY_AUTOMATIC, Gtk::POLICY_AUTOMATIC);
        table.scroll_in(scroller);
        get_content_area()->pack_start(scroller, Gtk::PACK_EXPAND_WIDGET);
    }
    set_size_request(640, 480);
    add_answer_buttons(*this);
    show_all_children(true);
}

ArrayDialog::~ArrayDialog() {
    // The window would keep a pointer to the focused widget.
    unset_focus();
}

std::uint64_t ArrayDialog::cells() const {
    return layout.cells();
}

std::uint64_t ArrayDialog::cell_at(unsigned left, unsigned top) const {
    return layout.cell_at(left, top);
}

int ArrayDialog::kind_of(std::uint64_t) const {
    return 0;
}

std::unique_ptr<table_cell_t> ArrayDialog::make_cell(int) {
    return std::make_unique<item_t>(*this);
}

void ArrayDialog::on_response(int id) {
    Gtk::Dialog::on_response(id);
    if (!writes_back(id))
        return;
    table.finish_typing();
    apply(points);
}

}  // namespace ulk3d
