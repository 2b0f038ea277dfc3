#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <string>

/// Numbers in text, the same in every locale. Everything that reads or writes text files goes through these:
/// the toolkit sets the user's locale, under which the C library's strtod and printf would take a decimal
/// comma.
namespace libutils {

/// The number at the start of a NUL-terminated text: strtod of the "C" locale.
///
/// Leading white space of all kinds, a sign, decimal and hexadecimal numbers, "nan", "nan(...)", "inf" and
/// "infinity" in any case of letters are understood; the result is correctly rounded. Too large a number
/// gives HUGE_VAL with its sign. `end`, when not null, receives the position behind the number, or `text`
/// when nothing converts; the result is 0 then. errno is meaningless afterwards.
double parse_double(const char* text, const char** end);

/// The unsigned integer at the start of a NUL-terminated text: strtoul with base 0 ("0x" hexadecimal, leading
/// zero octal, leading white space, a sign), cut to its low 32 bits. So "-1" gives 4294967295; a value beyond
/// 64 bits saturates there first and gives 4294967295 too. `end` as for parse_double.
std::uint32_t parse_uint(const char* text, const char** end);

/// True when the text begins with "true", or else when strtoul with base 0 finds a number that is not zero
/// (in its full 64 bits).
bool parse_bool(const char* text);

/// Appends the default stream form of a number: "%g" with six significant digits ("0.333333", "1e+06", "-0",
/// "inf", "nan", "-nan").
void append_number(std::string& out, double value);
void append_number(std::string& out, float value);

/// Appends a number in scientific notation with six digits behind the point: "%e" ("3.333333e-01",
/// "-0.000000e+00", "inf", "nan", "-nan").
void append_scientific(std::string& out, float value);

/// Appends an integer in decimal.
template <std::integral T>
void append_number(std::string& out, T value) {
    char buffer[24];
    out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

}  // namespace libutils
