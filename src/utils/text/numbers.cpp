#include "utils/text/numbers.h"

#include <locale.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <system_error>

namespace libutils {
namespace {

/// The C locale, made once and kept to the end of the process.
locale_t c_locale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

double parse_double_in_library(const char* text, const char** end) {
    char* stop = nullptr;
    const double value = strtod_l(text, &stop, c_locale());
    if (end != nullptr)
        *end = stop;
    return value;
}

unsigned long parse_ulong_in_library(const char* text, const char** end) {
    char* stop = nullptr;
    const unsigned long value = strtoul_l(text, &stop, 0, c_locale());
    if (end != nullptr)
        *end = stop;
    return value;
}

/// The parts of a plain decimal number. `mantissa` is exact as long as `digits` (the significant ones,
/// without leading zeros) does not exceed `max_digits`.
struct decimal_t {
    static constexpr int max_digits = 19;

    std::uint64_t mantissa = 0;
    int digits = 0;
    std::int64_t exponent = 0;
    const char* end = nullptr;

    void add(char c) {
        if (digits >= max_digits) {
            digits = max_digits + 1;
            return;
        }
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(c - '0');
        digits += mantissa != 0 ? 1 : 0;
    }
};

/// The end of the exponent part that begins at `p`, whose value is added to `exponent`; `p` when there is
/// none.
const char* scan_exponent(const char* p, std::int64_t& exponent) {
    if (*p != 'e' && *p != 'E')
        return p;
    const char* digit = p + 1;
    const bool negative = *digit == '-';
    if (*digit == '-' || *digit == '+')
        ++digit;
    if (!is_digit(*digit))
        return p;
    // No fraction is long enough to bring an exponent that stops growing here back into the exact range.
    constexpr std::int64_t out_of_reach = 100'000'000'000'000'000;
    std::int64_t value = 0;
    for (; is_digit(*digit); ++digit) {
        if (value < out_of_reach)
            value = value * 10 + (*digit - '0');
    }
    exponent += negative ? -value : value;
    return digit;
}

/// Scans digits, an optional fraction and an optional exponent; `end` stays null when there is no digit.
decimal_t scan_decimal(const char* p) {
    decimal_t number;
    const char* const first = p;
    for (; is_digit(*p); ++p)
        number.add(*p);
    bool any = p != first;
    if (*p == '.') {
        const char* const fraction = ++p;
        for (; is_digit(*p); ++p)
            number.add(*p);
        any = any || p != fraction;
        // A fraction longer than the mantissa holds is for the library, where this exponent does not count.
        if (number.digits <= decimal_t::max_digits)
            number.exponent = fraction - p;
    }
    if (any)
        number.end = scan_exponent(p, number.exponent);
    return number;
}

constexpr std::array<double, 23> exact_powers_of_ten = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// True when mantissa and power of ten are both exact in double precision: one operation, one rounding, which
/// makes the result correctly rounded (W. D. Clinger, How to Read Floating Point Numbers Accurately, 1990).
bool is_exact(const decimal_t& number) {
    return number.digits <= decimal_t::max_digits && number.mantissa <= (std::uint64_t{1} << 53) &&
           number.exponent >= -22 && number.exponent <= 22;
}

double exact_value(const decimal_t& number) {
    const auto mantissa = static_cast<double>(number.mantissa);
    return number.exponent < 0 ? mantissa / exact_powers_of_ten[static_cast<std::size_t>(-number.exponent)]
                               : mantissa * exact_powers_of_ten[static_cast<std::size_t>(number.exponent)];
}

/// The most decimal digits with which every number is exact in double precision.
constexpr std::ptrdiff_t short_digits = 15;

/// Most numbers of a file: few digits, no exponent. The mantissa is exact then and so is the power of ten, as
/// above. The end of the number; null when it is anything else.
const char* parse_short_decimal(const char* p, double& value) {
    const char* const first = p;
    std::uint64_t mantissa = 0;
    for (; is_digit(*p); ++p)
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
    std::ptrdiff_t digits = p - first;
    std::ptrdiff_t decimals = 0;
    if (*p == '.') {
        const char* const fraction = ++p;
        for (; is_digit(*p); ++p)
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
        decimals = p - fraction;
        digits += decimals;
    }
    // An "x" may follow the zero of a hexadecimal number.
    const char follows = static_cast<char>(*p | 0x20);
    if (digits == 0 || digits > short_digits || follows == 'e' || follows == 'x')
        return nullptr;
    value = static_cast<double>(mantissa);
    if (decimals != 0)
        value /= exact_powers_of_ten[static_cast<std::size_t>(decimals)];
    return p;
}

}  // namespace

double parse_double(const char* text, const char** end) {
    const char* p = text;
    while (is_space(*p))
        ++p;
    const bool negative = *p == '-';
    if (*p == '-' || *p == '+')
        ++p;
    double short_value = 0;
    if (const char* const stop = parse_short_decimal(p, short_value)) {
        if (end != nullptr)
            *end = stop;
        return negative ? -short_value : short_value;
    }
    if (*p == '0' && (p[1] == 'x' || p[1] == 'X'))
        return parse_double_in_library(text, end);
    const decimal_t number = scan_decimal(p);
    if (number.end == nullptr)
        return parse_double_in_library(text, end);

    double value = 0;
    if (is_exact(number)) {
        value = exact_value(number);
    } else {
        const auto [stop, error] = std::from_chars(p, number.end, value);
        if (error != std::errc() || stop != number.end)
            return parse_double_in_library(text, end);
    }
    if (end != nullptr)
        *end = number.end;
    return negative ? -value : value;
}

std::uint32_t parse_uint(const char* text, const char** end) {
    const char* p = text;
    while (is_space(*p))
        ++p;
    const bool negative = *p == '-';
    if (*p == '-' || *p == '+')
        ++p;
    const char* const first = p;
    std::uint64_t value = 0;
    constexpr std::ptrdiff_t digits_that_fit = 19;
    for (; is_digit(*p) && p - first < digits_that_fit; ++p)
        value = value * 10 + static_cast<std::uint64_t>(*p - '0');
    const bool octal_or_hexadecimal = *first == '0' && (p - first > 1 || *p == 'x' || *p == 'X');
    if (p == first || is_digit(*p) || octal_or_hexadecimal)
        return static_cast<std::uint32_t>(parse_ulong_in_library(text, end));
    if (end != nullptr)
        *end = p;
    return static_cast<std::uint32_t>(negative ? 0 - value : value);
}

bool parse_bool(const char* text) {
    return std::strncmp(text, "true", 4) == 0 || parse_ulong_in_library(text, nullptr) != 0;
}

namespace {

constexpr std::array<std::uint64_t, 11> powers_of_ten = {
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000, 10000000000};

/// `mantissa` times 10 to the `decimals` over 2 to the `shift` (above 0), rounded to an integer, ties to
/// even; exact.
std::uint64_t scaled(std::uint64_t mantissa, int decimals, int shift) {
    const std::uint64_t product = mantissa * powers_of_ten[static_cast<std::size_t>(decimals)];
    const std::uint64_t floor = product >> shift;
    const std::uint64_t rest = product & ((std::uint64_t{1} << shift) - 1);
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    return floor + (rest > half || (rest == half && (floor & 1) != 0) ? 1 : 0);
}

/// Appends a value in [1e-4, 999999.5), where "%g" has no exponent, by integer arithmetic alone. The 24 bits
/// of a single-precision mantissa times 10 to the 9th fit into 64 bits, so that nothing is lost before the
/// rounding.
void append_plain(std::string& out, float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const std::uint64_t mantissa = (bits & 0x7fffffU) | 0x800000U;
    const int shift = 150 - static_cast<int>(bits >> 23);

    // Six digits: the decimals follow from the place of the first digit, found against the exact whole parts.
    int decimals = 5;
    for (float bound = 10; decimals > 0 && value >= bound; bound *= 10)
        --decimals;
    if (value < 1)
        decimals = value < 0.001F ? 9 : value < 0.01F ? 8 : value < 0.1F ? 7 : 6;
    std::uint64_t digits = scaled(mantissa, decimals, shift);
    // 0.001F and its like are not the decimal bounds themselves: a digit short or too many is set right here.
    if (digits < 100000 && decimals < 9)
        digits = scaled(mantissa, ++decimals, shift);
    else if (digits >= 1000000 && decimals > 0)
        digits = scaled(mantissa, --decimals, shift);

    char text[24];
    char* const text_end = text + sizeof text;
    char* p = text_end;
    while (decimals > 0 && digits % 10 == 0) {
        digits /= 10;
        --decimals;
    }
    if (decimals > 0) {
        for (; decimals > 0; --decimals, digits /= 10)
            *--p = static_cast<char>('0' + digits % 10);
        *--p = '.';
    }
    do {
        *--p = static_cast<char>('0' + digits % 10);
        digits /= 10;
    } while (digits != 0);
    out.append(p, text_end);
}

}  // namespace

void append_number(std::string& out, float value) {
    const float magnitude = std::fabs(value);
    if (magnitude >= 1.001e-4F && magnitude < 999999.0F) {
        if (value < 0)
            out += '-';
        append_plain(out, magnitude);
    } else if (magnitude == 0) {
        out.append(std::signbit(value) ? "-0" : "0");
    } else {
        char buffer[32];
        const auto [stop, error] = std::to_chars(buffer, buffer + sizeof buffer, static_cast<double>(value),
                                                 std::chars_format::general, 6);
        out.append(buffer, stop);
    }
}

void append_scientific(std::string& out, float value) {
    char buffer[32];
    const auto [stop, error] = std::to_chars(buffer, buffer + sizeof buffer, static_cast<double>(value),
                                             std::chars_format::scientific, 6);
    out.append(buffer, stop);
}

void append_number(std::string& out, double value) {
    const auto single = static_cast<float>(value);
    if (static_cast<double>(single) == value) {
        append_number(out, single);
        return;
    }
    char buffer[32];
    const auto [stop, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6);
    out.append(buffer, stop);
}

}  // namespace libutils
