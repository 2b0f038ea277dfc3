#pragma once

#include <cstdlib>
#include <list>
#include <sstream>
#include <string>

/// The evaluator as it is told in words: a circular list of tokens with a sentinel, one call per group. Plain
/// and slow; what the fast one is compared with.
namespace evalnumber_reference {

struct token {
    int kind = 0;  // 0 value, 1 (, 2 ), 3 *, 4 /, 5 +, 6 -
    float value = 0;
};

class evaluator {
  public:
    float evalnumber(const char* text, const char** end) {
        tokens.clear();
        const char* p = text;
        *end = text;
        if (at_end(*p))
            return 0;
        for (;;) {
            const std::string operators = "()*/+-";
            if (*p >= '0' && *p <= '9') {
                char* stop = nullptr;
                tokens.push_back({0, static_cast<float>(std::strtod(p, &stop))});
                p = stop;
            } else if (*p == ' ' || *p == '\t') {
                ++p;
            } else if (operators.find(*p) != std::string::npos) {
                tokens.push_back({static_cast<int>(operators.find(*p)) + 1, 0});
                ++p;
            } else {
                messages << static_cast<int>(static_cast<signed char>(*p)) << " \n"
                         << *p << ": warning: invalid char detect.\n";
                break;
            }
            if (at_end(*p))
                break;
        }
        *end = p;
        auto cursor = tokens.begin();
        return evalgroup(cursor);
    }

    std::ostringstream messages;

  private:
    using position = std::list<token>::iterator;

    static bool at_end(char c) { return c == '\0' || c == '\r' || c == ','; }

    float evalgroup(position& cursor) {
        const auto sentinel = tokens.end();
        std::list<token> terms;
        while (cursor != sentinel) {
            const int kind = cursor->kind;
            if (kind == 2)
                break;
            if (kind == 0) {
                terms.push_back(*cursor);
            } else if (kind == 1) {
                ++cursor;
                terms.push_back({0, evalgroup(cursor)});
            } else if (kind == 5 || kind == 6) {
                terms.push_back({kind, 0});
            } else {
                const char* const name = kind == 3 ? "*" : "/";
                if (terms.empty()) {
                    messages << "beginning '" << name << "' detect.\n";
                    break;
                }
                ++cursor;
                if (cursor == sentinel) {
                    messages << "last '" << name << "' detect.\n";
                    break;
                }
                float right = 0;
                if (cursor->kind == 0) {
                    right = cursor->value;
                } else if (cursor->kind == 6) {
                    ++cursor;
                    if (cursor == sentinel) {
                        messages << "last '-' detect.\n";
                        break;
                    }
                    if (cursor->kind == 0) {
                        right = -cursor->value;
                    } else if (cursor->kind == 1) {
                        ++cursor;
                        right = -evalgroup(cursor);
                    } else {
                        messages << "-: right operand is not a value.\n";
                        break;
                    }
                } else if (cursor->kind == 1) {
                    right = evalgroup(cursor);
                } else {
                    messages << "*: right operand is not a value.\n";
                    break;
                }
                if (kind == 3)
                    terms.back().value *= right;
                else
                    terms.back().value /= right;
            }
            // The guard: the inner value has been used, and there is no step from the sentinel to the first
            // token.
            if (cursor != sentinel)
                ++cursor;
        }
        return evalsum(terms);
    }

    float evalsum(const std::list<token>& terms) {
        float sum = 0;
        for (auto term = terms.begin(); term != terms.end(); ++term) {
            if (term->kind == 0) {
                sum += term->value;
                continue;
            }
            const char* const name = term->kind == 5 ? "+" : "-";
            const bool add = term->kind == 5;
            if (++term == terms.end()) {
                messages << "last '" << name << "' detect.\n";
                return sum;
            }
            sum = add ? sum + term->value : sum - term->value;
        }
        return sum;
    }

    std::list<token> tokens;
};

}  // namespace evalnumber_reference
