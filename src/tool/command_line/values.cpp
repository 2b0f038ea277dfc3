#include "tool/command_line/values.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "tool/command_line/command_line.h"

namespace ulktool {

namespace {

/// The number that the whole of a text is.
template <class Number>
std::optional<Number> number_in(std::string_view text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

std::optional<double> finite_number_in(std::string_view text) {
    const std::optional<double> number = number_in<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

[[noreturn]] void refuse(std::string_view option, std::string_view text, const std::string& wanted) {
    throw usage_error_t(std::string(option) + " " + std::string(text) + ": " + wanted);
}

}  // namespace

bool is_number(std::string_view text) {
    return finite_number_in(text).has_value();
}

double read_number(std::string_view option, std::string_view text) {
    const std::optional<double> number = finite_number_in(text);
    if (!number)
        refuse(option, text, "this is not a number");
    return *number;
}

std::array<double, 3> read_triple(std::string_view option, std::string_view text) {
    const std::size_t first = text.find(',');
    const std::size_t second = first == std::string_view::npos ? first : text.find(',', first + 1);
    if (second != std::string_view::npos) {
        const auto x = finite_number_in(text.substr(0, first));
        const auto y = finite_number_in(text.substr(first + 1, second - first - 1));
        const auto z = finite_number_in(text.substr(second + 1));
        if (x && y && z)
            return {*x, *y, *z};
    }
    refuse(option, text, "this is not three numbers with commas between them");
}

std::uint32_t read_index(std::string_view option, std::string_view text) {
    const std::optional<std::uint32_t> index = number_in<std::uint32_t>(text);
    if (!index)
        refuse(option, text, "this is not a whole number that counts from 0");
    return *index;
}

int read_integer(std::string_view option, std::string_view text, int lowest, int highest) {
    const std::optional<int> number = number_in<int>(text);
    if (!number || *number < lowest || *number > highest)
        refuse(
            option, text,
            "this is not a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest));
    return *number;
}

picture_size_t read_size(std::string_view option, std::string_view text) {
    constexpr int largest = 16384;
    const std::size_t cross = text.find('x');
    if (cross != std::string_view::npos) {
        const std::optional<int> width = number_in<int>(text.substr(0, cross));
        const std::optional<int> height = number_in<int>(text.substr(cross + 1));
        if (width && height && *width > 0 && *height > 0 && *width <= largest && *height <= largest)
            return {*width, *height};
    }
    refuse(option, text, "this is not a size as 800x600, up to 16384x16384");
}

}  // namespace ulktool
