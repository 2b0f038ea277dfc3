#pragma once

#include <optional>
#include <string_view>

namespace ulk3d {

/// What usual arithmetic makes of a sum, as everyone writes it by hand.
struct usual_sum_t {
    double value = 0;
    double magnitude = 0;  ///< what the value would be had every term the same sign: rounding is a part of it
};

/// The value of a whole text of numbers, `+ - * / ( )` and blanks, in double precision: `*` and `/` bind
/// stronger, operators of one kind go from left to right, and a sign may stand before any term. Empty for
/// what is no such sum, and for one that is nested deeper than anyone nests by hand.
std::optional<usual_sum_t> usual_sum(std::string_view text);

}  // namespace ulk3d
