#include "tool/scenes/progress_line.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <utility>

namespace ulktool {

progress_line_t::progress_line_t(std::string work_name)
    : name(std::move(work_name)), has_terminal(::isatty(STDERR_FILENO) == 1) {}

progress_line_t::~progress_line_t() {
    if (shown_percent >= 0)
        std::cerr << "\r\033[K" << std::flush;
}

void progress_line_t::show(double fraction) {
    const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100.0);
    if (!has_terminal || percent == shown_percent ||
        std::chrono::steady_clock::now() - start < std::chrono::seconds(1))
        return;
    shown_percent = percent;
    std::cerr << '\r' << name << ": " << percent << " %\033[K" << std::flush;
}

}  // namespace ulktool
