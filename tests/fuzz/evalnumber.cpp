#include "utils/text/evalnumber.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "support/captured_stream.h"
#include "unit/utils/text/evalnumber_reference.h"

namespace {

/// The plain evaluator calls itself, so that its stack bounds the length of a text.
constexpr std::size_t longest_compared = 2000;

bool same(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

}  // namespace

/// Walks a line field by field, as the readers do; every field has the value, the end and the messages of the
/// plain evaluator.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    const char* field = line.c_str();
    for (;;) {
        const ulk_test::captured_stream errors(std::cerr);
        const char* end = nullptr;
        const float value = libutils::evalnumber(field, &end);
        if (size <= longest_compared) {
            evalnumber_reference::evaluator reference;
            const char* expected_end = nullptr;
            const float expected = reference.evalnumber(field, &expected_end);
            if (!same(value, expected) || end != expected_end || errors.text() != reference.messages.str())
                std::abort();
        }
        if (*end != ',')
            return 0;
        field = end + 1;
    }
}
