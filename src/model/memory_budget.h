#pragma once

#include <cstdint>

namespace ulk3d {

/// a times b and a plus b; the largest value where that does not fit 64 bits. For sizes made of counts that a
/// file or a dialog gave.
std::uint64_t saturating_product(std::uint64_t a, std::uint64_t b);
std::uint64_t saturating_sum(std::uint64_t a, std::uint64_t b);

/// Bytes that one model may take up now: half of the memory that the system can give without swapping, and
/// that the process may take under its limit of address space. The other half is for what comes with it: the
/// driver's copies, the model's pictures, the scene that is open.
std::uint64_t memory_budget();

/// True when `bytes` are within `memory_budget`. Asked before an allocation whose size comes from outside:
/// the system grants more than it has, and a file with an absurd count would end in swapping or in a killed
/// process instead of an error message.
[[nodiscard]] bool fits_into_memory(std::uint64_t bytes);

}  // namespace ulk3d
