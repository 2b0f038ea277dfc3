#include "utils/memory/memory_budget.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <optional>

#include "utils/memory/free_memory.h"

namespace libutils {

namespace {

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

/// Looking at the system takes as long as filling a small array.
constexpr std::uint64_t small_claims = std::uint64_t{16} << 20;
constexpr std::uint64_t small_claim = std::uint64_t{1} << 20;

struct running_load_t {
    std::uint64_t left;        ///< of the load's budget
    std::uint64_t unseen = 0;  ///< claimed since the system was last looked at
};

thread_local std::optional<running_load_t> running_load;

std::atomic<std::uint64_t> all_promised = 0;

std::uint64_t unpromised_memory() {
    const std::uint64_t free = free_memory();
    return free - std::min<std::uint64_t>(free, all_promised);
}

bool is_granted_unseen(std::uint64_t bytes) {
    if (!running_load)
        return bytes <= small_claim;
    return bytes <= running_load->left && size_sum(running_load->unseen, bytes) <= small_claims;
}

bool open_load(std::uint64_t bytes) {
    if (running_load)
        return false;
    running_load = running_load_t{.left = bytes};
    return true;
}

}  // namespace

std::uint64_t memory_budget() {
    return std::min(unpromised_memory() / 2, running_load ? running_load->left : most);
}

bool fits_into_memory(std::uint64_t bytes) {
    return bytes <= memory_budget();
}

bool claim_memory(std::uint64_t bytes) {
    const bool unseen = is_granted_unseen(bytes);
    if (!unseen && !fits_into_memory(bytes))
        return false;
    if (running_load) {
        running_load->left -= bytes;
        running_load->unseen = unseen ? running_load->unseen + bytes : 0;
    }
    return true;
}

bool can_promise_memory(std::uint64_t bytes) {
    return bytes <= small_claim || bytes <= unpromised_memory();
}

void promised_memory_t::hold(std::uint64_t bytes) {
    all_promised += bytes - held;  // wraps around for fewer
    held = bytes;
}

load_budget_t::load_budget_t() : is_outer(!running_load && open_load(memory_budget())) {}

load_budget_t::load_budget_t(std::uint64_t bytes) : is_outer(open_load(bytes)) {}

load_budget_t::~load_budget_t() {
    if (is_outer)
        running_load.reset();
}

trial_claims_t::trial_claims_t() : left_before(running_load ? running_load->left : 0) {}

trial_claims_t::~trial_claims_t() {
    if (running_load && !is_kept)
        running_load->left = left_before;
}

}  // namespace libutils
