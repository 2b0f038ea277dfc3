#pragma once

#include <cstdint>

namespace ulk3d {

/// a times b, and a plus b; the largest value where the result does not fit in 64 bits. For sizes computed
/// from counts that come from a file or a dialog.
std::uint64_t saturating_product(std::uint64_t a, std::uint64_t b);
std::uint64_t saturating_sum(std::uint64_t a, std::uint64_t b);

/// The number of bytes that one model may take up now: half of what the system can give without swapping and
/// the process may still take under its address space limit. The other half is for what comes with the model:
/// the driver's copies, its pictures, the scene that is open.
std::uint64_t memory_budget();

/// True when `bytes` are within `memory_budget`. Ask before an allocation whose size comes from outside: the
/// system grants more than it has, so an absurd count in a file would end in swapping or in a killed process
/// instead of an error message.
[[nodiscard]] bool fits_into_memory(std::uint64_t bytes);

}  // namespace ulk3d
