#include "dialogs/tables/cell_table.h"

#include <atkmm/object.h>
#include <gtkmm/adjustment.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace ulk3d {

cell_table_t::cell_table_t(table_source_t& shown_source, const table_lines_t& column_lines,
                           const table_lines_t& row_lines)
    : source(shown_source), columns(column_lines), rows(row_lines) {
    set_has_window(false);
    set_redraw_on_allocate(false);
}

cell_table_t::~cell_table_t() {
    for (const auto& [number, cell] : shown)
        for (const table_cell_t::part_t& part : cell->parts)
            part.widget->unparent();
    for (const cell_ptr& sample : samples)
        for (const table_cell_t::part_t& part : sample->parts)
            part.widget->unparent();
    shown.clear();
    samples.clear();
}

void cell_table_t::scroll_in(Gtk::ScrolledWindow& window) {
    scroller = &window;
    make_samples();
    show();
    window.add(*this);
    for (const auto& place : {window.get_hadjustment(), window.get_vadjustment()}) {
        place->signal_value_changed().connect(sigc::mem_fun(*this, &cell_table_t::on_view_changed));
        // A view that gets smaller leaves the table its size.
        place->signal_changed().connect(sigc::mem_fun(*this, &cell_table_t::on_view_changed));
    }
}

void cell_table_t::finish_typing() {
    for (const auto& [number, cell] : shown)
        cell->finish_typing();
}

// ---- sizes

void cell_table_t::make_samples() {
    if (source.cells() == 0)
        return;
    // Lines of all sizes meet in these corners.
    const unsigned right = columns.lines() - 1, bottom = rows.lines() - 1;
    for (const std::uint64_t number :
         {source.cell_at(0, 0), source.cell_at(right, 0), source.cell_at(right, bottom)}) {
        const cell_ptr& cell = samples.emplace_back(make_cell(source.kind_of(number)));
        cell->show(number);
        for (const table_cell_t::part_t& part : cell->parts) {
            part.widget->set_child_visible(false);
            part.widget->set_parent(*this);
        }
    }
}

cell_table_t::cell_ptr cell_table_t::make_cell(int kind) {
    cell_ptr cell = source.make_cell(kind);
    cell->kind = kind;
    return cell;
}

table_lines_t cell_table_t::measured(table_lines_t lines, Gtk::Orientation orientation) const {
    int size = 0, natural = 0;
    for (const cell_ptr& sample : samples) {
        for (const auto& [widget, place] : sample->parts) {
            // What spans several lines fits where the others do.
            if (orientation == Gtk::ORIENTATION_HORIZONTAL && place.right - place.left == 1) {
                widget->get_preferred_width(size, natural);
                lines.fit(place.left, size);
            } else if (orientation == Gtk::ORIENTATION_VERTICAL && place.bottom - place.top == 1) {
                widget->get_preferred_height(size, natural);
                lines.fit(place.top, size);
            }
        }
    }
    return lines;
}

Gtk::SizeRequestMode cell_table_t::get_request_mode_vfunc() const {
    return Gtk::SIZE_REQUEST_CONSTANT_SIZE;
}

void cell_table_t::get_preferred_width_vfunc(int& minimum, int& natural) const {
    minimum = natural = measured(columns, Gtk::ORIENTATION_HORIZONTAL).least();
}

void cell_table_t::get_preferred_height_vfunc(int& minimum, int& natural) const {
    minimum = natural = measured(rows, Gtk::ORIENTATION_VERTICAL).least();
}

void cell_table_t::on_size_allocate(Gtk::Allocation& place_of_table) {
    set_allocation(place_of_table);
    columns = measured(columns, Gtk::ORIENTATION_HORIZONTAL);
    columns.fill(place_of_table.get_width());
    rows = measured(rows, Gtk::ORIENTATION_VERTICAL);
    rows.fill(place_of_table.get_height());
    blocks_shown = blocks_in_view();
    show_cells({});
    for (const auto& [number, cell] : shown)
        place(*cell);
}

// ---- cells in view

namespace {

/// The blocks in view and one more on each side. Their number stays the same wherever the view is, so that
/// cells that come and go are as many.
std::pair<unsigned, unsigned> seen_blocks(const table_lines_t& lines, const Gtk::Adjustment& place) {
    const unsigned all = lines.blocks();
    const unsigned count = std::min(lines.blocks_in(place.get_page_size()) + 2, all);
    const unsigned first = lines.block_at(place.get_value());
    const unsigned begin = std::min(first - std::min(first, 1U), all - count);
    return {begin, begin + count};
}

}  // namespace

cell_table_t::blocks_t cell_table_t::blocks_in_view() const {
    const auto [left, right] = seen_blocks(columns, *scroller->get_hadjustment().operator->());
    const auto [top, bottom] = seen_blocks(rows, *scroller->get_vadjustment().operator->());
    return {left, right, top, bottom};
}

void cell_table_t::add_cells(const blocks_t& blocks, cell_numbers& cells) const {
    for (unsigned row = blocks.top; row < blocks.bottom; ++row)
        for (unsigned column = blocks.left; column < blocks.right; ++column)
            cells.insert(source.cell_at(columns.first_line(column), rows.first_line(row)));
}

cell_table_t::blocks_t cell_table_t::blocks_around(std::uint64_t cell) const {
    const table_place_t& place = shown.at(cell)->parts.front().place;
    const unsigned column = columns.block_of(place.left), row = rows.block_of(place.top);
    return {column - std::min(column, 1U), std::min(column + 2, columns.blocks()), row - std::min(row, 1U),
            std::min(row + 2, rows.blocks())};
}

void cell_table_t::on_view_changed() {
    if (!blocks_shown || blocks_in_view() == *blocks_shown)
        return;
    blocks_shown = blocks_in_view();
    show_cells({});
}

void cell_table_t::show_cells(cell_numbers wanted) {
    if (!blocks_shown || source.cells() == 0)
        return;
    add_cells(*blocks_shown, wanted);
    // While the keyboard moves, the cell that it leaves is still the window's and may have to take over what
    // was typed.
    const auto* const window = dynamic_cast<const Gtk::Window*>(get_toplevel());
    for (const Gtk::Widget* const widget :
         {static_cast<const Gtk::Widget*>(get_focus_child()), window ? window->get_focus() : nullptr})
        if (const auto stop = find_stop(widget))
            wanted.insert(stop->cell);

    std::vector<cell_ptr> free_cells;
    for (auto entry = shown.begin(); entry != shown.end();) {
        if (wanted.contains(entry->first)) {
            ++entry;
            continue;
        }
        entry->second->finish_typing();
        free_cells.push_back(std::move(entry->second));
        entry = shown.erase(entry);
    }
    for (const std::uint64_t number : wanted)
        if (!shown.contains(number))
            show_cell(number, free_cells);
    for (cell_ptr& cell : free_cells) {
        for (const table_cell_t::part_t& part : cell->parts)
            remove(*part.widget);
        unused.push_back(std::move(cell));
    }
}

void cell_table_t::show_cell(std::uint64_t number, std::vector<cell_ptr>& free_cells) {
    const int kind = source.kind_of(number);
    cell_ptr& cell = shown[number];
    for (std::vector<cell_ptr>* const cells : {&free_cells, &unused}) {
        const auto found = std::ranges::find(*cells, kind, [](const cell_ptr& free) { return free->kind; });
        if (found == cells->end())
            continue;
        cell = std::move(*found);
        cells->erase(found);
        break;
    }
    if (!cell)
        cell = make_cell(kind);
    cell->show(number);
    for (const table_cell_t::part_t& part : cell->parts)
        if (part.widget->get_parent() == nullptr)
            add(*part.widget);
    place(*cell);
}

void cell_table_t::place(const table_cell_t& cell) {
    const Gtk::Allocation table = get_allocation();
    for (const auto& [widget, at] : cell.parts) {
        const int x = columns.begin(at.left), y = rows.begin(at.top);
        Gtk::Allocation area(table.get_x() + x, table.get_y() + y, columns.end(at.right) - x,
                             rows.end(at.bottom) - y);
        widget->size_allocate(area);
    }
}

// ---- the keyboard

namespace {

constexpr std::size_t last_part = std::numeric_limits<std::size_t>::max();

}  // namespace

std::optional<cell_table_t::stop_t> cell_table_t::find_stop(const Gtk::Widget* widget) const {
    if (widget == nullptr)
        return std::nullopt;
    for (const auto& [number, cell] : shown)
        for (std::size_t part = 0; part < cell->stops; ++part)
            if (cell->parts[part].widget == widget)
                return stop_t{number, part};
    return std::nullopt;
}

bool cell_table_t::on_focus(Gtk::DirectionType direction) {
    if (source.cells() == 0)
        return false;
    if (direction == Gtk::DIR_TAB_FORWARD || direction == Gtk::DIR_TAB_BACKWARD)
        return move_to_next_stop(direction == Gtk::DIR_TAB_FORWARD);
    // The toolkit looks for the nearest widget, so those that can be it have to be there.
    cell_numbers near;
    if (const auto focused = find_stop(get_focus_child()))
        add_cells(blocks_around(focused->cell), near);
    else if (blocks_shown && direction == Gtk::DIR_UP)
        add_cells({blocks_shown->left, blocks_shown->right, rows.blocks() - 1, rows.blocks()}, near);
    show_cells(std::move(near));
    return Gtk::Container::on_focus(direction);
}

bool cell_table_t::move_to_next_stop(bool forward) {
    const auto focused = find_stop(get_focus_child());
    if (!focused) {
        move_to({forward ? 0 : source.cells() - 1, forward ? 0 : last_part});
        return true;
    }
    auto [number, part] = *focused;
    if (forward) {
        if (++part < shown.at(number)->stops)
            move_to({number, part});
        else if (number + 1 < source.cells())
            move_to({number + 1, 0});
        else
            return false;
    } else {
        if (part > 0)
            move_to({number, part - 1});
        else if (number > 0)
            move_to({number - 1, last_part});
        else
            return false;
    }
    return true;
}

void cell_table_t::focus_cell(std::uint64_t cell) {
    move_to({cell, 0});
}

void cell_table_t::move_to(const stop_t& stop) {
    show_cells({stop.cell});
    const auto found = shown.find(stop.cell);
    if (found == shown.end())
        return;
    const table_cell_t& cell = *found->second;
    cell.parts[std::min(stop.part, cell.stops - 1)].widget->grab_focus();
}

// ---- children

GType cell_table_t::child_type_vfunc() const {
    return Gtk::Widget::get_type();
}

void cell_table_t::forall_vfunc(gboolean include_internals, GtkCallback callback, gpointer data) {
    // The callback may remove what it is given.
    std::vector<Gtk::Widget*> widgets;
    for (const auto& [number, cell] : shown)
        for (const table_cell_t::part_t& part : cell->parts)
            if (part.widget->get_parent() == this)
                widgets.push_back(part.widget);
    if (include_internals)
        for (const cell_ptr& sample : samples)
            for (const table_cell_t::part_t& part : sample->parts)
                if (part.widget->get_parent() == this)
                    widgets.push_back(part.widget);
    for (Gtk::Widget* const widget : widgets)
        callback(widget->gobj(), data);
}

void cell_table_t::on_add(Gtk::Widget* widget) {
    widget->set_parent(*this);
}

void cell_table_t::on_remove(Gtk::Widget* widget) {
    widget->unparent();
}

void name_part(Gtk::Widget& part, const Glib::ustring& name) {
    part.get_accessible()->set_name(name);
    part.set_tooltip_text(name);
}

}  // namespace ulk3d
