#pragma once

#include <cstdint>

#include "utils/text/evalnumber.h"
#include "utils/text/numbers.h"

namespace ulk3d {

/// Reads the fields of a list value one after the other.
///
/// After each field the scanner skips exactly one character, whatever it is: "1+1,2" read as plain numbers
/// gives 1, 1, 2. It never moves past the terminator, so missing fields are 0.
class field_scanner {
  public:
    /// `text` must be NUL-terminated and outlive the scanner.
    explicit field_scanner(const char* text) : cursor(text) {}

    /// An arithmetic expression, in single precision.
    float expr() {
        const char* end = cursor;
        const float value = libutils::evalnumber(cursor, &end);
        step_behind(end);
        return value;
    }

    /// A plain number, "nan" and "inf" included.
    float dbl() {
        const char* end = cursor;
        const double value = libutils::parse_double(cursor, &end);
        step_behind(end);
        return static_cast<float>(value);
    }

    /// An unsigned integer of 32 bits, hexadecimal with "0x" and octal with a leading zero; -1 wraps.
    std::uint32_t uint() {
        const char* end = cursor;
        const std::uint32_t value = libutils::parse_uint(cursor, &end);
        step_behind(end);
        return value;
    }

  private:
    void step_behind(const char* end) { cursor = *end == '\0' ? end : end + 1; }

    const char* cursor;
};

}  // namespace ulk3d
