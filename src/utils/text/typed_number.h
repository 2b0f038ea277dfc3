#pragma once

#include <optional>
#include <string>

namespace libutils {

/// The number that a user has typed, in every locale with a point as the decimal sign: a plain number in any
/// form of parse_double, in double precision, or else a sum (evalnumber.h), in single precision and with its
/// messages. Blanks around it are left out. Empty for what is neither, such as "", "abc", "-" and "1,5", and
/// for results that are not finite.
std::optional<double> parse_typed_number(const std::string& text);

}  // namespace libutils
