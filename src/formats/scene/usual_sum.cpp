#include "formats/scene/usual_sum.h"

#include <cmath>
#include <string>

#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

/// Reads by recursive descent: a sum of products of signed terms.
class sum_reader_t {
  public:
    explicit sum_reader_t(const std::string& text) : cursor(text.c_str()) {}

    std::optional<usual_sum_t> whole() {
        const std::optional<usual_sum_t> result = sum();
        return *cursor == '\0' ? result : std::nullopt;
    }

  private:
    using result_t = std::optional<usual_sum_t>;

    /// The next character that is no blank.
    char peek() {
        while (*cursor == ' ' || *cursor == '\t')
            ++cursor;
        return *cursor;
    }

    result_t sum() {
        result_t total = product();
        while (total && (peek() == '+' || peek() == '-')) {
            const double sign = *cursor++ == '+' ? 1 : -1;
            const result_t term = product();
            if (!term)
                return term;
            total = usual_sum_t{total->value + sign * term->value, total->magnitude + term->magnitude};
        }
        return total;
    }

    result_t product() {
        result_t total = signed_term();
        while (total && (peek() == '*' || peek() == '/')) {
            const bool times = *cursor++ == '*';
            const result_t term = signed_term();
            if (!term)
                return term;
            total = times ? usual_sum_t{total->value * term->value, total->magnitude * term->magnitude}
                          : usual_sum_t{total->value / term->value,
                                        total->magnitude * term->magnitude / (term->value * term->value)};
        }
        return total;
    }

    result_t signed_term() {
        double sign = 1;
        for (; peek() == '+' || peek() == '-'; ++cursor)
            sign = *cursor == '-' ? -sign : sign;
        const result_t plain = term();
        if (!plain)
            return plain;
        return usual_sum_t{sign * plain->value, plain->magnitude};
    }

    result_t term() {
        constexpr int deepest = 100;
        if (peek() != '(')
            return number();
        if (++depth > deepest)
            return std::nullopt;
        ++cursor;
        const result_t inner = sum();
        if (!inner || peek() != ')')
            return std::nullopt;
        ++cursor;
        --depth;
        return inner;
    }

    result_t number() {
        const char first = peek();
        if (first != '.' && (first < '0' || first > '9'))
            return std::nullopt;
        const char* end = cursor;
        const double value = libutils::parse_double(cursor, &end);
        if (end == cursor)
            return std::nullopt;
        cursor = end;
        peek();
        return usual_sum_t{value, std::fabs(value)};
    }

    const char* cursor;
    int depth = 0;
};

}  // namespace

std::optional<usual_sum_t> usual_sum(std::string_view text) {
    return sum_reader_t(std::string(text)).whole();
}

}  // namespace ulk3d
