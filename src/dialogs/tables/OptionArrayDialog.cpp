#include "dialogs/tables/OptionArrayDialog.h"

#include <string>
#include <utility>

#include "dialogs/controls/MyButton.h"
#include "dialogs/controls/dialog_answers.h"
#include "dialogs/controls/number_spin.h"
#include "dialogs/tables/KnotViewerDialog.h"
#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

constexpr spin_range_t knot_range{-100.0, 100.0, 0.025, 0.1, 7};

enum : int { knot_kind, view_kind };

enum : std::uint32_t { row_knots = 0, column_knots = 1, weights = 2 };

/// Names of the numbers of an option table, for screen readers.
const char* name_of_table(std::uint32_t index) {
    switch (index) {
        case row_knots:
            return "横ノット";
        case column_knots:
            return "縦ノット";
        case weights:
            return "重み";
        default:
            return "";
    }
}

std::string decimal(std::uint64_t number) {
    std::string text;
    libutils::append_number(text, number);
    return text;
}

}  // namespace

class OptionArrayDialog::item_t : public table_cell_t {
  public:
    virtual Gtk::Widget& widget() = 0;

  protected:
    explicit item_t(OptionArrayDialog& shown_dialog) : dialog(shown_dialog) {}

    void fill_part() {
        widget().show();
        parts.push_back({&widget(), {}});
    }

    OptionArrayDialog& dialog;
};

class OptionArrayDialog::knot_t : public item_t {
  public:
    explicit knot_t(OptionArrayDialog& shown_dialog) : item_t(shown_dialog) {
        fill_part();
        spin.number_given.connect(
            [this](double number) { dialog.option.values.data[place] = static_cast<float>(number); });
    }

    Gtk::Widget& widget() override { return spin; }

    void show(std::uint64_t cell) override {
        const unsigned row = dialog.layout.row_of(cell), element = dialog.layout.element_of(cell);
        place = row * dialog.option.values.columns + element;
        spin.show_number(dialog.option.values.data[place]);
        name_part(spin, dialog.name_of(row, element));
        parts.front().place = dialog.layout.value(row, element);
    }

    void finish_typing() override { spin.update(); }

  private:
    std::uint64_t place = 0;  ///< in the option table, counted row by row
    number_spin_t spin{knot_range, 0};
};

class OptionArrayDialog::viewbtn_t : public item_t {
  public:
    explicit viewbtn_t(OptionArrayDialog& shown_dialog) : item_t(shown_dialog) {
        fill_part();
        button.pressed_signal.connect([this] { dialog.on_view(row); });
    }

    Gtk::Widget& widget() override { return button; }

    void show(std::uint64_t cell) override {
        row = dialog.layout.row_of(cell);
        button.set_label(decimal(row));
        name_part(button, "ノット列 " + decimal(row) + " の基底関数");
        parts.front().place = dialog.layout.view(row);
    }

  private:
    unsigned row = 0;
    MyButton button;
};

OptionArrayDialog::OptionArrayDialog(Gtk::Window& parent, const form_t& form, option_table_t shown,
                                     apply_t apply_table, const Glib::ustring& title, std::string folder)
    : Gtk::Dialog(title, parent, true),
      index(form.index),
      option(std::move(shown)),
      apply(std::move(apply_table)),
      shader_folder(std::move(folder)),
      layout(option.values.rows, option.values.columns, form.hasviews, form.columns),
      table(*this, layout.column_lines(), layout.row_lines()) {
    for (float& value : option.values.data)
        value = static_cast<float>(knot_range.clamped(value));
    scroller.set_policy(Gtk::POLICY_AUTOMATIC, Gtk::POLICY_AUTOMATIC);
    table.scroll_in(scroller);
    get_content_area()->pack_start(scroller, Gtk::PACK_EXPAND_WIDGET);
    set_size_request(640, 480);
    add_answer_buttons(*this);
    show_all_children(true);
}

OptionArrayDialog::~OptionArrayDialog() {
    // The window would keep a pointer to the focused widget.
    unset_focus();
}

std::uint64_t OptionArrayDialog::cells() const {
    return layout.cells();
}

std::uint64_t OptionArrayDialog::cell_at(unsigned left, unsigned top) const {
    return layout.cell_at(left, top);
}

int OptionArrayDialog::kind_of(std::uint64_t cell) const {
    return layout.is_view(cell) ? view_kind : knot_kind;
}

std::unique_ptr<table_cell_t> OptionArrayDialog::make_cell(int kind) {
    if (kind == view_kind)
        return std::make_unique<viewbtn_t>(*this);
    return std::make_unique<knot_t>(*this);
}

Glib::ustring OptionArrayDialog::name_of(unsigned row, unsigned element) const {
    // Like control points, by the column and the row in which it lies in the table.
    const unsigned column = layout.upright ? row : element, line = layout.upright ? element : row;
    return std::string(name_of_table(index)) + ' ' + decimal(column) + ',' + decimal(line);
}

void OptionArrayDialog::on_map() {
    Gtk::Dialog::on_map();
    // The toolkit has given the focus to the top of the table and scrolled there.
    if (layout.cells() > 0 && layout.columns > 0)
        table.focus_cell(layout.has_views ? 1 : 0);
}

void OptionArrayDialog::on_realize() {
    Gtk::Dialog::on_realize();
    // The first row is at the bottom.
    const Glib::RefPtr<Gtk::Adjustment> vertical = scroller.get_vadjustment();
    vertical->set_value(vertical->get_upper() - vertical->get_page_size());
}

void OptionArrayDialog::on_response(int id) {
    Gtk::Dialog::on_response(id);
    if (!writes_back(id))
        return;
    table.finish_typing();
    apply(option.values);
}

void OptionArrayDialog::on_view(unsigned row) {
    table.finish_typing();
    KnotViewerDialog viewer(*this, option.order, option.count, row, option.values, decimal(row),
                            shader_folder);
    viewer.run();
}

}  // namespace ulk3d
