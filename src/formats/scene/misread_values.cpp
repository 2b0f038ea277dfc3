#include "formats/scene/misread_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "formats/scene/key_value.h"
#include "formats/scene/text_lines.h"
#include "formats/scene/usual_sum.h"
#include "utils/text/evalnumber.h"
#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

/// How one value is read; empty when it is read as it is written.
using reading_t = std::optional<std::string>;

std::string text_of(double number) {
    std::string text;
    libutils::append_number(text, number);
    return text;
}

/// Each step of a sum is rounded to single precision.
bool is_close(double value, const usual_sum_t& usual) {
    constexpr double rounding = 1e-5;
    if (!std::isfinite(usual.value))
        return !std::isfinite(value);
    return std::fabs(value - usual.value) <= rounding * usual.magnitude;
}

reading_t misread_sum(const std::string& text) {
    const auto value = static_cast<double>(libutils::evalquietly(text.c_str()));
    const std::optional<usual_sum_t> usual = usual_sum(text);
    if (!usual)
        return text_of(value);
    return is_close(value, *usual) ? std::nullopt
                                   : reading_t(text_of(value) + ", not as " + text_of(usual->value));
}

bool has_only_blanks(const char* text) {
    return std::string_view(text).find_first_not_of(" \t") == std::string_view::npos;
}

reading_t misread_number(const std::string& text) {
    const char* end = text.c_str();
    const double value = libutils::parse_double(text.c_str(), &end);
    return end != text.c_str() && has_only_blanks(end) ? std::nullopt : reading_t(text_of(value));
}

reading_t misread_whole(const std::string& text) {
    const char* end = text.c_str();
    const std::uint32_t value = libutils::parse_uint(text.c_str(), &end);
    return end != text.c_str() && has_only_blanks(end) ? std::nullopt : reading_t(std::to_string(value));
}

/// A key whose value is a list of `count` values divided by commas.
struct list_key_t {
    std::string_view name;
    reading_t (*misread)(const std::string& value);
    std::size_t count;
};

constexpr std::array<list_key_t, 18> list_keys{{
    {"position", misread_sum, 3},
    {"circle", misread_sum, 3},
    {"sphere", misread_sum, 3},
    {"fcolor", misread_sum, 4},
    {"texcoord", misread_sum, 2},
    {"aniso", misread_sum, 1},
    {"refractfactor", misread_sum, 1},
    {"reflectalpha", misread_sum, 1},
    {"refractalpha", misread_sum, 1},
    {"tangent", misread_number, 3},
    {"binormal", misread_number, 3},
    {"normal", misread_number, 3},
    {"knot1", misread_number, 1},
    {"knot2", misread_number, 1},
    {"weight", misread_number, 1},
    {"color", misread_whole, 4},
    {"element", misread_whole, 1},
    {"resolution", misread_whole, 2},
}};

/// What is wrong with a list, first value first.
reading_t fault_of(std::string_view list, const list_key_t& key) {
    std::size_t count = 0;
    for (bool more = true; more; ++count) {
        const std::size_t comma = list.find(',');
        more = comma != std::string_view::npos;
        const std::string value(list.substr(0, comma));
        list.remove_prefix(more ? comma + 1 : list.size());
        if (count >= key.count)
            continue;
        if (const reading_t reading = key.misread(value))
            return (value.empty() ? "an empty value" : value) + " is read as " + *reading;
    }
    if (count != key.count)
        return std::to_string(count) + " values where the key takes " + std::to_string(key.count) +
               (count > key.count ? "; the rest is not read" : "; the rest is 0");
    return std::nullopt;
}

reading_t fault_of(const text_line_t& line) {
    const auto key = std::ranges::find_if(
        list_keys, [&line](const list_key_t& row) { return line.starts_with(row.name); });
    if (key == list_keys.end())
        return std::nullopt;
    // Values that lack as a whole are a message of the reader.
    const std::optional<std::string_view> value = value_of(line, key->name);
    const reading_t fault = value ? fault_of(path_value(*value), *key) : std::nullopt;
    return fault ? std::string(key->name) + ": " + *fault : fault;
}

}  // namespace

void find_misread_values(const char* path, const std::function<void(const misread_value_t&)>& found) {
    text_lines lines = text_lines::open(path);
    bool in_block = false;
    for (std::uint64_t number = 1; lines.is_open() && !lines.failed(); ++number) {
        const text_line_t line = lines.next();
        if (!in_block)
            in_block = line.starts_with("begin ");
        else if (line.starts_with("end"))
            in_block = false;
        else if (const reading_t fault = fault_of(line))
            found({number, *fault});
    }
}

}  // namespace ulk3d
