#include "tool/scenes/progress_line.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <system_error>
#include <utility>

namespace ulktool {

progress_line_t::progress_line_t(std::string work_name) : name(std::move(work_name)) {
    if (::isatty(STDERR_FILENO) != 1)
        return;
    try {
        printer = std::thread(&progress_line_t::print_until_finished, this);
    } catch (const std::system_error&) {
        // The work goes on without a line.
    }
}

progress_line_t::~progress_line_t() {
    {
        const std::lock_guard lock(mutex);
        finished = true;
    }
    wakes.notify_one();
    if (printer.joinable())
        printer.join();
}

void progress_line_t::print_until_finished() {
    using namespace std::chrono_literals;
    const auto start = std::chrono::steady_clock::now();
    bool is_shown = false;
    std::unique_lock lock(mutex);
    while (!wakes.wait_for(lock, is_shown ? 200ms : 1000ms, [this] { return finished; })) {
        const auto seconds =
            std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start)
                .count();
        const double fraction = done;
        const std::string far = fraction < 0
                                    ? std::to_string(seconds) + " s"
                                    : std::to_string(static_cast<int>(std::min(fraction, 1.0) * 100)) + " %";
        std::cerr << "\r" + name + ": " + far + "\033[K" << std::flush;
        is_shown = true;
    }
    if (is_shown)
        std::cerr << "\r\033[K" << std::flush;
}

}  // namespace ulktool
