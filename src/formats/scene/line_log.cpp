#include "formats/scene/line_log.h"

#include <ostream>
#include <string>

#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

std::string decimal(std::uint64_t number) {
    std::string digits;
    libutils::append_number(digits, number);
    return digits;
}

}  // namespace

void put_line(std::ostream& log, std::string_view first, std::string_view second) {
    log.write(first.data(), static_cast<std::streamsize>(first.size()));
    log.write(second.data(), static_cast<std::streamsize>(second.size()));
    log.put('\n');
}

void line_log::message(std::string_view text) {
    put_line(log, decimal(counter), text);
}

void line_log::message(std::string_view text, const text_line_t& line) {
    put_line(log, decimal(counter).append(text), line.view());
}

void line_log::over_run(std::string_view what, std::uint64_t count) {
    const std::string n = decimal(count);
    message(std::string(": ").append(what) + "(" + n + ") >= " + n + " over.");
}

void line_log::shortage(std::string_view what, std::uint64_t read, std::uint64_t capacity,
                        std::string_view complaint) {
    message(std::string(": ").append(what) + "(" + decimal(read) + ") < " + decimal(capacity) + ": " +
            std::string(complaint));
}

}  // namespace ulk3d
