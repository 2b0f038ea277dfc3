#include "utils/text/typed_number.h"

#include <cmath>

#include "utils/text/evalnumber.h"
#include "utils/text/numbers.h"

namespace libutils {

std::optional<double> parse_typed_number(const std::string& text) {
    constexpr const char* blanks = " \t\r\n";
    const std::size_t last = text.find_last_not_of(blanks);
    if (last == std::string::npos)
        return std::nullopt;
    const std::string trimmed = text.substr(0, last + 1);

    const char* end = nullptr;
    double value = parse_double(trimmed.c_str(), &end);
    if (*end != '\0') {
        // "(" and "()" are sums without a fault, but no number that anyone means.
        if (trimmed.find_first_of("0123456789") == std::string::npos)
            return std::nullopt;
        const std::optional<float> sum = evalwhole(trimmed.c_str());
        if (!sum)
            return std::nullopt;
        value = *sum;
    }
    if (!std::isfinite(value))
        return std::nullopt;
    return value;
}

}  // namespace libutils
