#include <gtkmm/main.h>
#include <gtkmm/window.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "dialogs/tables/ArrayDialog.h"
#include "dialogs/tables/OptionArrayDialog.h"

/// Prints what it costs to open and to close the tables of a net: seconds of CPU time, and MiB of memory that
/// the open table takes, its values included. Needs a display. Usage: `table_report [points in a row]...`
namespace {

using namespace ulk3d;

double cpu_seconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

double resident_mib() {
    std::uint64_t all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// Handles events until none has come for a while.
void settle() {
    using clock = std::chrono::steady_clock;
    const auto quiet = std::chrono::milliseconds(300);
    for (auto last = clock::now(); clock::now() - last < quiet;) {
        if (!Gtk::Main::events_pending()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            continue;
        }
        Gtk::Main::iteration(false);
        last = clock::now();
    }
}

net_table_t net(std::uint64_t size) {
    net_table_t table{size, size, std::vector<number_row_t>(size * size)};
    for (std::uint64_t i = 0; i < table.points.size(); ++i)
        table.points[i] = {
            i, false, {static_cast<double>(i % size) / 64, static_cast<double>(i / size) / 64, 0.5, 1}};
    return table;
}

option_table_t option(std::uint64_t rows, std::uint64_t columns) {
    option_table_t table{{}, 4, columns - 4};
    table.values.resize(rows, columns);
    for (std::uint64_t i = 0; i < table.values.data.size(); ++i)
        table.values.data[i] = static_cast<float>(i % columns) / 64;
    return table;
}

using open_t = std::unique_ptr<Gtk::Dialog> (*)(Gtk::Window& parent, std::uint64_t size);

std::unique_ptr<Gtk::Dialog> open_points(Gtk::Window& parent, std::uint64_t size) {
    return std::make_unique<ArrayDialogPoint>(
        net(size), [](auto) {}, "points", parent);
}

std::unique_ptr<Gtk::Dialog> open_colours(Gtk::Window& parent, std::uint64_t size) {
    return std::make_unique<ArrayDialogColor>(
        net(size), [](auto) {}, "colours", parent);
}

std::unique_ptr<Gtk::Dialog> open_weights(Gtk::Window& parent, std::uint64_t size) {
    return std::make_unique<OptionArrayDialog>(
        parent, OptionArrayDialog::form_t{2, false, false}, option(size, size), [](auto&) {}, "weights", "");
}

std::unique_ptr<Gtk::Dialog> open_row_knots(Gtk::Window& parent, std::uint64_t size) {
    return std::make_unique<OptionArrayDialog>(
        parent, OptionArrayDialog::form_t{0, true, false}, option(size, size + 4), [](auto&) {}, "row knots",
        "");
}

std::unique_ptr<Gtk::Dialog> open_column_knots(Gtk::Window& parent, std::uint64_t size) {
    return std::make_unique<OptionArrayDialog>(
        parent, OptionArrayDialog::form_t{1, true, true}, option(size, size + 4), [](auto&) {},
        "column knots", "");
}

void measure(const char* name, open_t open, std::uint64_t size) {
    Gtk::Main toolkit;
    Gtk::Window parent;
    parent.show();
    settle();
    const double memory = resident_mib(), before = cpu_seconds();
    std::unique_ptr<Gtk::Dialog> dialog = open(parent, size);
    dialog->show();
    settle();
    const double opened = cpu_seconds(), taken = resident_mib() - memory;
    dialog.reset();
    settle();
    std::printf("%-12s %4llu by %-4llu   %8.2f s to open   %8.2f s to close   %8.1f MiB\n", name,
                static_cast<unsigned long long>(size), static_cast<unsigned long long>(size), opened - before,
                cpu_seconds() - opened, taken);
    std::fflush(stdout);
}

/// In a process of its own, so that no table finds the memory of another.
void measure_alone(const char* name, open_t open, std::uint64_t size) {
    const pid_t child = fork();
    if (child == 0) {
        measure(name, open, size);
        std::_Exit(0);
    }
    waitpid(child, nullptr, 0);
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::uint64_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::strtoull(argv[i], nullptr, 10));
    if (sizes.empty())
        sizes = {64, 300, 1025};
    for (const std::uint64_t size : sizes) {
        measure_alone("points", open_points, size);
        measure_alone("colours", open_colours, size);
        measure_alone("weights", open_weights, size);
        measure_alone("row knots", open_row_knots, size);
        measure_alone("column knots", open_column_knots, size);
    }
}
