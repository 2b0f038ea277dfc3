#pragma once

#include <arpa/inet.h>

#include <cstdint>

/// Byte order of values in files. The machine is little-endian. A swap is its own inverse, so that the same
/// calls serve for reading and for writing.
namespace libutils {

/// Values of little-endian files.
inline std::uint16_t intel_to_host16(std::uint16_t value) {
    return value;
}
inline std::uint32_t intel_to_host32(std::uint32_t value) {
    return value;
}
inline std::uint64_t intel_to_host64(std::uint64_t value) {
    return value;
}

/// Values of big-endian files.
inline std::uint16_t motorola_to_host16(std::uint16_t value) {
    return ntohs(value);
}
inline std::uint32_t motorola_to_host32(std::uint32_t value) {
    return ntohl(value);
}
inline std::uint64_t motorola_to_host64(std::uint64_t value) {
    return __builtin_bswap64(value);
}

/// The order of a file that is known only when it is read.
class byteorder {
  public:
    virtual std::uint16_t to_host16(std::uint16_t value) const = 0;
    virtual std::uint32_t to_host32(std::uint32_t value) const = 0;
    virtual std::uint64_t to_host64(std::uint64_t value) const = 0;
    virtual ~byteorder() = default;
};

class intel_byteorder : public byteorder {
  public:
    std::uint16_t to_host16(std::uint16_t value) const override { return intel_to_host16(value); }
    std::uint32_t to_host32(std::uint32_t value) const override { return intel_to_host32(value); }
    std::uint64_t to_host64(std::uint64_t value) const override { return intel_to_host64(value); }
};

class motorola_byteorder : public byteorder {
  public:
    std::uint16_t to_host16(std::uint16_t value) const override { return motorola_to_host16(value); }
    std::uint32_t to_host32(std::uint32_t value) const override { return motorola_to_host32(value); }
    std::uint64_t to_host64(std::uint64_t value) const override { return motorola_to_host64(value); }
};

}  // namespace libutils
