#pragma once

#include <cstdint>
#include <utility>

#include "utils/memory/sizes.h"

namespace libutils {

/// The number of bytes that may be taken up now: half of what the system can give
/// (utils/memory/free_memory.h) beyond what is promised already, and during a load no more than is left of
/// its budget. The other half is for what comes with a model: the driver's copies, and what is needed only
/// for a while.
std::uint64_t memory_budget();

/// True when `bytes` are within `memory_budget`. Ask before an allocation whose size comes from outside: the
/// system grants more than it has, so an absurd count in a file would end in swapping or in a killed process
/// instead of an error message.
[[nodiscard]] bool fits_into_memory(std::uint64_t bytes);

/// The same, and during a load what is granted is subtracted from its budget: for all that a load leaves
/// behind. Small claims are granted without a look at the system, up to 16 MiB of them between two looks.
[[nodiscard]] bool claim_memory(std::uint64_t bytes);

/// True when `bytes` are free and not promised to anyone. Does not ask the system about less than 1 MiB.
[[nodiscard]] bool can_promise_memory(std::uint64_t bytes);

/// Memory that has been granted and is taken later, at its first use, if ever. As long as one of these holds
/// bytes, `memory_budget` counts them as taken, so that all promises can be kept.
class promised_memory_t {
  public:
    promised_memory_t() = default;
    ~promised_memory_t() { hold(0); }
    promised_memory_t(promised_memory_t&& other) noexcept : held(std::exchange(other.held, 0)) {}
    promised_memory_t& operator=(promised_memory_t&& other) noexcept {
        std::swap(held, other.held);
        return *this;
    }

    /// Holds `bytes` instead of what it has held.
    void hold(std::uint64_t bytes);

  private:
    std::uint64_t held = 0;
};

/// While one lives a load is running on this thread, and all claims of memory are held against one sum: a
/// file may have any number of blocks, each of which would fit by itself. One that is made within another
/// shares the sum of the outer one, and changes nothing.
class load_budget_t {
  public:
    /// The sum is `memory_budget` of now.
    load_budget_t();
    /// The sum is `bytes`.
    explicit load_budget_t(std::uint64_t bytes);
    ~load_budget_t();
    load_budget_t(const load_budget_t&) = delete;
    load_budget_t& operator=(const load_budget_t&) = delete;

  private:
    bool is_outer;
};

/// Gives back what is claimed while it lives, unless `keep` is called: for something that takes several
/// claims, and is dropped when one of them fails.
class trial_claims_t {
  public:
    trial_claims_t();
    ~trial_claims_t();
    trial_claims_t(const trial_claims_t&) = delete;
    trial_claims_t& operator=(const trial_claims_t&) = delete;

    void keep() { is_kept = true; }

  private:
    std::uint64_t left_before;
    bool is_kept = false;
};

}  // namespace libutils
