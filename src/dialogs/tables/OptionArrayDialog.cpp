#include "dialogs/tables/OptionArrayDialog.h"

#include <atkmm/object.h>

#include <algorithm>
#include <string>
#include <utility>

#include "dialogs/controls/dialog_answers.h"
#include "dialogs/tables/KnotViewerDialog.h"
#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

constexpr spin_range_t knot_range{-100.0, 100.0, 0.025, 0.1, 7};
constexpr guint row_spacing = 2;

/// Names of the numbers of an option table, for screen readers.
const char* name_of_table(std::uint32_t index) {
    constexpr const char* names[] = {"横ノット", "縦ノット", "重み"};
    return index < std::size(names) ? names[index] : "";
}

std::string decimal(std::uint64_t number) {
    std::string text;
    libutils::append_number(text, number);
    return text;
}

}  // namespace

OptionArrayDialog::knot_t::knot_t(std::uint64_t place, float value, const Glib::ustring& accessible_name)
    : place_in_table(place), spin(knot_range, value), first_value(static_cast<float>(spin.get_value())) {
    spin.get_accessible()->set_name(accessible_name);
}

float OptionArrayDialog::knot_t::value() const {
    return spin.is_touched() ? static_cast<float>(spin.get_value()) : first_value;
}

OptionArrayDialog::viewbtn_t::viewbtn_t(OptionArrayDialog& dialog, unsigned number)
    : button(decimal(number)) {
    button.get_accessible()->set_name("ノット列 " + decimal(number) + " の基底関数");
    button.pressed_signal.connect(sigc::bind(sigc::mem_fun(dialog, &OptionArrayDialog::on_view), number));
}

OptionArrayDialog::OptionArrayDialog(Gtk::Window& parent, const form_t& form, option_table_t shown,
                                     apply_t apply_table, const Glib::ustring& title, std::string folder)
    : Gtk::Dialog(title, parent, true),
      index(form.index),
      option(std::move(shown)),
      apply(std::move(apply_table)),
      shader_folder(std::move(folder)),
      layout(option.values.rows, option.values.columns, form.hasviews, form.columns) {
    build_table();
    set_size_request(640, 480);
    add_answer_buttons(*this);
    show_all_children(true);
}

OptionArrayDialog::~OptionArrayDialog() {
    // As in ArrayDialog, cells are destroyed fast outside the window and newest first. The window would keep
    // a pointer to the focused one.
    unset_focus();
    scroller.remove();
    while (!items.empty())
        items.pop_back();
}

void OptionArrayDialog::build_table() {
    table.set_row_spacings(row_spacing);
    if (layout.table_rows() > 0 && layout.table_columns() > 0) {
        table.resize(layout.table_rows(), layout.table_columns());
        for (unsigned row = 0; row < layout.rows; ++row)
            add_row(row);
    }
    scroller.set_policy(Gtk::POLICY_AUTOMATIC, Gtk::POLICY_AUTOMATIC);
    scroller.add(table);
    get_content_area()->pack_start(scroller, Gtk::PACK_EXPAND_WIDGET);
    watch_cells();
}

void OptionArrayDialog::add_row(unsigned row) {
    if (layout.has_views)
        put(std::make_unique<viewbtn_t>(*this, row), layout.view(row));
    for (unsigned element = 0; element < layout.columns; ++element) {
        const std::uint64_t place = row * option.values.columns + element;
        auto knot = std::make_unique<knot_t>(place, option.values.data[place], name_of(row, element));
        knots.push_back(knot.get());
        put(std::move(knot), layout.value(row, element));
    }
}

void OptionArrayDialog::put(std::unique_ptr<item_t> item, const table_place_t& place) {
    // Shown at once: the style of a widget depends on the nearest shown one beside it.
    item->widget().show();
    table.attach(item->widget(), place.left, place.right, place.top, place.bottom, Gtk::EXPAND | Gtk::FILL,
                 Gtk::EXPAND | Gtk::FILL, 0, 0);
    items.push_back({std::move(item), place});
}

void OptionArrayDialog::watch_cells() {
    // Tab visits the table line by line.
    std::vector<const placed_item_t*> order;
    for (const placed_item_t& item : items)
        order.push_back(&item);
    std::ranges::sort(order, {},
                      [](const placed_item_t* item) { return std::pair(item->place.top, item->place.left); });
    for (const placed_item_t* const item : order)
        cells_in_view.add({&item->item->widget()});
    cells_in_view.watch();
}

Glib::ustring OptionArrayDialog::name_of(unsigned row, unsigned element) const {
    return std::string(name_of_table(index)) + ' ' + decimal(row) + ',' + decimal(element);
}

void OptionArrayDialog::on_map() {
    Gtk::Dialog::on_map();
    // The toolkit has given the focus to the top of the table and scrolled there.
    if (!knots.empty())
        knots.front()->widget().grab_focus();
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
    finish_typing(*this);
    apply(values());
}

matrix_t<float> OptionArrayDialog::values() const {
    matrix_t<float> values = option.values;
    for (const knot_t* const knot : knots)
        values.data[knot->place()] = knot->value();
    return values;
}

void OptionArrayDialog::on_view(unsigned row) {
    finish_typing(*this);
    const matrix_t<float> shown = values();
    KnotViewerDialog viewer(*this, option.order, option.count, row, shown, decimal(row), shader_folder);
    viewer.run();
}

}  // namespace ulk3d
