#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace ulktool {

/// Values of options. Numbers are the same in every locale. Each reader takes the name of the option and the
/// text behind it, and throws usage_error_t, which names both, when the text is not what the reader is for.

/// A decimal number that is finite.
bool is_number(std::string_view text);
double read_number(std::string_view option, std::string_view text);

/// Three of them, divided by commas: "0,90,-7.5".
std::array<double, 3> read_triple(std::string_view option, std::string_view text);

/// A whole number from 0 to 4294967295, such as the place of a model in its scene.
std::uint32_t read_index(std::string_view option, std::string_view text);

/// Whole numbers from `lowest` to `highest`.
int read_integer(std::string_view option, std::string_view text, int lowest, int highest);

/// "800x600": both from 1 to 16384.
struct picture_size_t {
    int width = 0, height = 0;
};
picture_size_t read_size(std::string_view option, std::string_view text);

}  // namespace ulktool
