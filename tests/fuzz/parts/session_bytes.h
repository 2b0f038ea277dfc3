#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace ulk_test {

/// The bytes of a session as numbers. The digit '0' counts as 0, '1' as 1 and so on, so that sessions can be
/// written by hand; behind the end all are 0.
class session_bytes_t {
  public:
    explicit session_bytes_t(std::span<const std::uint8_t> bytes) : left(bytes) {}

    bool at_end() const { return left.empty(); }

    /// The next byte as it is.
    std::uint8_t letter() {
        if (left.empty())
            return '0';
        const std::uint8_t first = left.front();
        left = left.subspan(1);
        return first;
    }

    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint8_t>(letter() - std::uint8_t{'0'}) % limit;
    }

    /// '0' is -1, '4' is 0, '8' is 1, in quarters. Some bytes far from the digits are odd floats.
    float number();

  private:
    std::span<const std::uint8_t> left;
};

}  // namespace ulk_test
