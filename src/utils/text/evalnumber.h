#pragma once

#include <cstdint>
#include <optional>
#include <span>

/// Small sums in text: "2*(1+3)" wherever a user may write a number.
namespace libutils {

/// A token of a field; a term of a group is one too.
struct token_t {
    enum class kind_t : std::int32_t { value, open, close, times, over, plus, minus };

    kind_t kind = kind_t::value;
    /// The number of a value. 0 for an operator, but a "+" or "-" followed by "*" or "/" takes the product.
    float value = 0;
};

/// The value of the field at the start of a NUL-terminated text, which a comma, a CR or the NUL ends.
///
/// `*` and `/` bind to the term before them, from left to right, before anything is added up. Terms without
/// an operator between them are added: "1 2" is 3, "2(3)" is 5. Operators have one operand: in "1+-2" the "+"
/// takes the "-", which counts 0, and the 2 is added: 3. A parenthesis right behind `*` or `/` takes the rest
/// of its group along: "2*(3)+4" is 2*(3+4) = 14. The step from a group that is not closed ends the field:
/// "(1" is 1.
///
/// `end`, when not null, receives the position of the end of the field, or of a character that can not be
/// part of a sum; what stands before it is evaluated. A number begins with a digit. All arithmetic is in
/// single precision and nothing is an error: a fault prints a line on the standard error stream and ends its
/// group there, with the value gathered so far:
///   "<code> " and "<c>: warning: invalid char detect." (two lines, the code that of a signed char),
///   "beginning '*' detect.", "beginning '/' detect.", "last '*' detect.", "last '/' detect.",
///   "last '+' detect.", "last '-' detect.", "*: right operand is not a value." (for "/" too),
///   "-: right operand is not a value.".
float evalnumber(const char* text, const char** end);

/// The value of the field at the start of a NUL-terminated text, as above but without a message.
float evalquietly(const char* text);

/// The value of a text that is one field from its beginning to its end and has no fault; empty for any other.
/// Faults are printed as above.
std::optional<float> evalwhole(const char* text);

/// The value of the group that begins at `cursor`: up to its closing parenthesis, where `cursor` stays, or up
/// to `sentinel`, the end of the tokens. Groups may be nested to any depth.
float evalgroup(const token_t*& cursor, const token_t* sentinel);

/// The sum of a list of values, "+" and "-". Any other kind ends it with the message "<kind>: op detect.".
float evalsum(std::span<const token_t> terms);

}  // namespace libutils
