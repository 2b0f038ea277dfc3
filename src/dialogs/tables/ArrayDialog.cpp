#include "dialogs/tables/ArrayDialog.h"

#include <atkmm/object.h>

#include <string>
#include <utility>

#include "dialogs/controls/dialog_answers.h"
#include "dialogs/tables/table_layout.h"
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

ArrayDialog::ArrayDialog(const array_dialog_kind_t& edited_kind, const net_table_t& shown,
                         apply_t apply_table, const Glib::ustring& title, Gtk::Window& window)
    : Gtk::Dialog(title, window, true),
      kind(edited_kind),
      columns(shown.columns),
      rows(shown.rows),
      apply(std::move(apply_table)) {
    build_table(shown);
    set_size_request(640, 480);
    add_answer_buttons(*this);
    show_all_children(true);
}

ArrayDialog::~ArrayDialog() {
    // The toolkit looks up each widget that is destroyed in lists of all of them. Outside the window there
    // are fewer such lists, and in those that remain the newest widget comes first. The window would keep a
    // pointer to the focused one.
    unset_focus();
    scroller.remove();
    table.unset_focus_chain();
    while (!items.empty())
        items.pop_back();
}

void ArrayDialog::build_table(const net_table_t& shown) {
    if (columns == 0 && rows == 0)
        return;
    const net_layout_t layout(columns, rows, kind.numbers);
    table.set_row_spacings(0);
    if (layout.table_rows() > 0 && layout.table_columns() > 0)
        table.resize(layout.table_rows(), layout.table_columns());
    for (const number_row_t& numbers : shown.points) {
        if (numbers.point % columns >= layout.net_columns || numbers.point / columns >= layout.net_rows)
            continue;
        items.push_back(make_item(numbers));
        attach(*items.back(), layout);
    }
    set_tab_order();
    scroller.set_policy(Gtk::POLICY_AUTOMATIC, Gtk::POLICY_AUTOMATIC);
    scroller.add(table);
    get_content_area()->pack_start(scroller, Gtk::PACK_EXPAND_WIDGET);
    cells_in_view.watch();
}

std::unique_ptr<ArrayDialog::item_t> ArrayDialog::make_item(const number_row_t& numbers) const {
    auto item = std::make_unique<item_t>();
    item->point = numbers.point;
    std::string name = "制御点 ";
    libutils::append_number(name, numbers.point % columns);
    name += ',';
    libutils::append_number(name, numbers.point / columns);
    item->check.set_active(numbers.selected);
    item->check.get_accessible()->set_name(name + " 選択");
    item->spins.reserve(kind.numbers);
    for (std::uint32_t i = 0; i < kind.numbers; ++i) {
        const auto& spin =
            item->spins.emplace_back(std::make_unique<number_spin_t>(kind.range, numbers.numbers[i]));
        spin->get_accessible()->set_name(name + ' ' + kind.axes[i]);
    }
    return item;
}

void ArrayDialog::attach(item_t& item, const net_layout_t& layout) {
    const auto column = static_cast<unsigned>(item.point % columns);
    const auto row = static_cast<unsigned>(item.point / columns);
    const auto put = [this](Gtk::Widget& widget, const table_place_t& place) {
        // Shown at once: the style of a widget depends on the nearest shown one beside it.
        widget.show();
        table.attach(widget, place.left, place.right, place.top, place.bottom, Gtk::EXPAND | Gtk::FILL,
                     Gtk::EXPAND | Gtk::FILL, 0, 0);
    };
    put(item.check, layout.check(column, row));
    for (unsigned i = 0; i < item.spins.size(); ++i)
        put(*item.spins[i], layout.number(column, row, i));
    put(item.separator, layout.separator(column, row));

    std::vector<Gtk::Widget*> widgets{&item.check, &item.separator};
    for (const auto& spin : item.spins)
        widgets.push_back(spin.get());
    cells_in_view.add(std::move(widgets));
}

void ArrayDialog::set_tab_order() {
    std::vector<Gtk::Widget*> order;
    for (const auto& item : items) {
        order.push_back(&item->check);
        for (const auto& spin : item->spins)
            order.push_back(spin.get());
    }
    table.set_focus_chain(order);
}

std::vector<number_row_t> ArrayDialog::read_items() const {
    std::vector<number_row_t> numbers;
    for (const auto& item : items) {
        number_row_t& row = numbers.emplace_back();
        row.point = item->point;
        row.selected = item->check.get_active();
        for (std::size_t i = 0; i < item->spins.size(); ++i)
            row.numbers[i] = item->spins[i]->get_value();
    }
    return numbers;
}

void ArrayDialog::on_response(int id) {
    Gtk::Dialog::on_response(id);
    if (!writes_back(id))
        return;
    finish_typing(*this);
    apply(read_items());
}

}  // namespace ulk3d
