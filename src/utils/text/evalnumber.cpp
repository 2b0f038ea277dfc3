#include "utils/text/evalnumber.h"

#include <array>
#include <cstddef>
#include <iostream>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "utils/text/numbers.h"

namespace libutils {
namespace {

using kind_t = token_t::kind_t;

/// Prints the faults of a text unless it is quiet, and remembers whether there were any.
class faults_t {
  public:
    explicit faults_t(bool is_quiet = false) : quiet(is_quiet) {}

    void report(std::string_view message) {
        found = true;
        if (!quiet)
            std::cerr << std::string(message).append("\n");
    }
    void report_bad_character(char c) {
        std::string message;
        append_number(message, static_cast<int>(static_cast<signed char>(c)));
        message += " \n";
        message += c;
        message += ": warning: invalid char detect.";
        report(message);
    }
    bool any() const { return found; }

  private:
    bool quiet;
    bool found = false;
};

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}
bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool ends_field(char c) {
    return c == '\0' || c == '\r' || c == ',';
}

const char* skip_blanks(const char* p) {
    while (is_blank(*p))
        ++p;
    return p;
}

float parse_value(const char* text, const char** end) {
    return static_cast<float>(parse_double(text, end));
}

/// The common field, one number with or without a sign: false when it is anything else. The sign is a term of
/// its own and the sum begins at 0, so "-0" is 0 - 0, which is positive.
bool eval_single(const char* text, const char** end, float& result) {
    const char* p = skip_blanks(text);
    const bool negative = *p == '-';
    if (negative || *p == '+')
        p = skip_blanks(p + 1);
    if (!is_digit(*p))
        return false;
    const float value = parse_value(p, &p);
    p = skip_blanks(p);
    if (!ends_field(*p))
        return false;
    if (end != nullptr)
        *end = p;
    result = negative ? 0.0F - value : 0.0F + value;
    return true;
}

/// Kind of an operator; `value` for any other character.
kind_t operator_kind(char c) {
    constexpr std::string_view operators = "()*/+-";
    const std::size_t place = operators.find(c);
    return place == std::string_view::npos ? kind_t::value : static_cast<kind_t>(place + 1);
}

using token_list = std::pmr::vector<token_t>;

/// Appends the tokens of the field and returns where it ends.
const char* tokenise(const char* p, token_list& tokens, faults_t& faults) {
    for (; !ends_field(*p);) {
        if (is_digit(*p)) {
            const float value = parse_value(p, &p);
            tokens.push_back({kind_t::value, value});
        } else if (const kind_t kind = operator_kind(*p); kind != kind_t::value) {
            tokens.push_back({kind, 0});
            ++p;
        } else if (is_blank(*p)) {
            ++p;
        } else {
            faults.report_bad_character(*p);
            return p;
        }
    }
    return p;
}

float sum_of(std::span<const token_t> terms, faults_t& faults) {
    float sum = 0;
    for (std::size_t i = 0; i < terms.size(); ++i) {
        const kind_t kind = terms[i].kind;
        if (kind == kind_t::value) {
            sum += terms[i].value;
        } else if (kind == kind_t::plus || kind == kind_t::minus) {
            if (++i == terms.size()) {
                faults.report(kind == kind_t::plus ? "last '+' detect." : "last '-' detect.");
                return sum;
            }
            sum = kind == kind_t::plus ? sum + terms[i].value : sum - terms[i].value;
        } else {
            std::string message;
            append_number(message, static_cast<std::int32_t>(kind));
            faults.report(message + ": op detect.");
            return sum;
        }
    }
    return sum;
}

/// Walks the tokens once, with a stack of its own in place of calls: a line may hold megabytes of
/// parentheses.
class group_walk {
  public:
    group_walk(const token_t* first, const token_t* end_of_tokens, faults_t& found_faults)
        : cursor(first), sentinel(end_of_tokens), faults(found_faults) {}

    float run() {
        open_group(use_t::result);
        for (;;) {
            if (handle_token())
                continue;
            const group_t group = groups.back();
            const float sum = sum_of(std::span(terms).subspan(group.first_term), faults);
            groups.pop_back();
            terms.resize(group.first_term);
            if (groups.empty())
                return sum;
            use(group.use, sum);
            step();
        }
    }

    const token_t* position() const { return cursor; }

  private:
    /// What the group around does with the value of a group.
    enum class use_t { result, append, multiply, divide, multiply_negated, divide_negated };

    struct group_t {
        std::size_t first_term;
        use_t use;
    };

    void open_group(use_t use) { groups.push_back({terms.size(), use}); }

    /// The next token. There is none behind the sentinel: a group that was never closed ends all groups
    /// around.
    void step() {
        if (cursor != sentinel)
            ++cursor;
    }

    /// Handles the token at the cursor and steps behind it. False when the group is over.
    bool handle_token() {
        if (cursor == sentinel)
            return false;
        switch (cursor->kind) {
            case kind_t::close:
                return false;
            case kind_t::times:
            case kind_t::over:
                return handle_factor();
            case kind_t::open:
                open_group(use_t::append);
                break;
            case kind_t::value:
            case kind_t::plus:
            case kind_t::minus:
                terms.push_back(*cursor);
                break;
        }
        step();
        return true;
    }

    bool handle_factor() {
        const bool times = cursor->kind == kind_t::times;
        if (terms.size() == groups.back().first_term) {
            faults.report(times ? "beginning '*' detect." : "beginning '/' detect.");
            return false;
        }
        step();
        if (cursor == sentinel) {
            faults.report(times ? "last '*' detect." : "last '/' detect.");
            return false;
        }
        switch (cursor->kind) {
            case kind_t::value:
                use(times ? use_t::multiply : use_t::divide, cursor->value);
                step();
                return true;
            case kind_t::minus:
                return handle_negated_factor(times ? use_t::multiply_negated : use_t::divide_negated);
            case kind_t::open:
                // The group begins on the parenthesis, not behind it, so it goes on with what follows the
                // closing one: "2*(3)+4" is 2*(3+4). Files may rely on it.
                open_group(times ? use_t::multiply : use_t::divide);
                return true;
            default:
                faults.report("*: right operand is not a value.");
                return false;
        }
    }

    bool handle_negated_factor(use_t negated) {
        step();
        if (cursor == sentinel) {
            faults.report("last '-' detect.");
            return false;
        }
        if (cursor->kind == kind_t::value) {
            use(negated, cursor->value);
        } else if (cursor->kind == kind_t::open) {
            open_group(negated);
        } else {
            faults.report("-: right operand is not a value.");
            return false;
        }
        step();
        return true;
    }

    void use(use_t how, float value) {
        switch (how) {
            case use_t::result:
                break;
            case use_t::append:
                terms.push_back({kind_t::value, value});
                break;
            case use_t::multiply:
                terms.back().value *= value;
                break;
            case use_t::divide:
                terms.back().value /= value;
                break;
            case use_t::multiply_negated:
                terms.back().value *= -value;
                break;
            case use_t::divide_negated:
                terms.back().value /= -value;
                break;
        }
    }

    const token_t* cursor;
    const token_t* sentinel;
    faults_t& faults;
    /// The terms of all open groups, one group behind the other.
    std::vector<token_t> terms;
    std::vector<group_t> groups;
};

}  // namespace

float evalsum(std::span<const token_t> terms) {
    faults_t faults;
    return sum_of(terms, faults);
}

float evalgroup(const token_t*& cursor, const token_t* sentinel) {
    faults_t faults;
    group_walk walk(cursor, sentinel, faults);
    const float value = walk.run();
    cursor = walk.position();
    return value;
}

namespace {

float evaluate(const char* text, const char** end, faults_t& faults) {
    float value = 0;
    if (eval_single(text, end, value))
        return value;
    std::array<std::byte, 1024> buffer;
    std::pmr::monotonic_buffer_resource memory(buffer.data(), buffer.size());
    token_list tokens(&memory);
    const char* const stop = tokenise(text, tokens, faults);
    if (end != nullptr)
        *end = stop;
    return group_walk(tokens.data(), tokens.data() + tokens.size(), faults).run();
}

}  // namespace

float evalnumber(const char* text, const char** end) {
    faults_t faults;
    return evaluate(text, end, faults);
}

float evalquietly(const char* text) {
    faults_t faults(true);
    return evaluate(text, nullptr, faults);
}

std::optional<float> evalwhole(const char* text) {
    faults_t faults;
    const char* end = nullptr;
    const float value = evaluate(text, &end, faults);
    if (faults.any() || *end != '\0')
        return std::nullopt;
    return value;
}

}  // namespace libutils
