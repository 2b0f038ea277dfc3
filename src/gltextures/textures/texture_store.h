#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "utils/memory/shared_holder.h"

namespace libgr {

/// Entries that are found by name and kept by handle.
///
/// A handle is 32 bits: the entry's slot in the low 16, and in the high 16 those of a generation that goes 1,
/// 2, up to 0x10000 and round. 0 is the handle of nothing. An entry lives, at the same address, until
/// `clear`. The counts of holders are plain integers: the thread of the GL context only.
template <class Entry>
struct texture_store_t {
    static constexpr std::size_t slot_limit = 0x10000;
    static constexpr std::uint32_t generation_limit = 0x10000;

    std::vector<libutils::shared_holder<Entry>> slots;
    std::vector<std::uint16_t> generations;  ///< of the entry in each slot
    std::vector<std::uint16_t> free;         ///< slots to be taken again, the last one first
    std::map<std::string, std::uint32_t, std::less<>> names;

    /// The handle of the entry of this name, or 0.
    std::uint32_t find(std::string_view name) const {
        const auto found = names.find(name);
        return found != names.end() ? found->second : 0;
    }

    /// Puts a copy of `entry` into a slot, and the name over any other entry of that name. Returns the
    /// handle; 0, with nothing changed, when all slots are taken.
    std::uint32_t insert(const std::string& name, const Entry& entry) {
        if (free.empty() && slots.size() >= slot_limit)
            return 0;
        const std::size_t slot = take_slot();
        generation = generation % generation_limit + 1;
        generations[slot] = static_cast<std::uint16_t>(generation);
        slots[slot] = libutils::shared_holder<Entry>::make();
        *slots[slot] = entry;
        const std::uint32_t handle = static_cast<std::uint32_t>(slot) | std::uint32_t{generations[slot]}
                                                                            << 16U;
        names[name] = handle;
        return handle;
    }

    /// The entry in the slot of a handle, whatever its generation; null for a slot without one.
    Entry* get(std::uint32_t handle) const {
        const std::size_t slot = handle & 0xFFFFU;
        return slot < slots.size() ? slots[slot].get() : nullptr;
    }

    /// Drops all entries. Their GL names are deleted where a context is current, otherwise dropped. The
    /// generation goes on.
    void clear() {
        names.clear();
        slots.clear();
        generations.clear();
        free.clear();
    }

  private:
    std::size_t take_slot() {
        if (free.empty()) {
            slots.emplace_back();
            generations.push_back(0);
            return slots.size() - 1;
        }
        const std::size_t slot = free.back();
        free.pop_back();
        return slot;
    }

    std::uint32_t generation = 0;  ///< of the last insertion, 1 to generation_limit
};

}  // namespace libgr
