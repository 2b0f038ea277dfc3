#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "utils/memory/shared_holder.h"

namespace libgr {

/// Entries that are found by name and kept by handle.
///
/// A handle is 32 bits: the entry's slot in the low 16, and in the high 16 those of a generation that goes 1,
/// 2, up to 0x10000 and round. 0 is the handle of nothing. An entry lives, at the same address, until
/// `clear` or `remove`. The counts of holders are plain integers: the thread of the GL context only.
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
    /// handle; 0, with nothing changed, when all slots are taken. Nothing changes, either, when memory runs
    /// out.
    std::uint32_t insert(const std::string& name, const Entry& entry) {
        if (free.empty() && slots.size() >= slot_limit)
            return 0;
        auto held = libutils::shared_holder<Entry>::make();
        *held = entry;
        make_room();
        std::uint32_t& handle = names[name];
        const std::size_t slot = take_slot();
        generation = generation % generation_limit + 1;
        generations[slot] = static_cast<std::uint16_t>(generation);
        slots[slot] = std::move(held);
        handle = static_cast<std::uint32_t>(slot) | std::uint32_t{generations[slot]} << 16U;
        return handle;
    }

    /// Takes back an insertion whose entry could not be filled, so that the next one of that name tries
    /// again.
    void remove(const std::string& name) {
        const auto found = names.find(name);
        if (found == names.end())
            return;
        const std::size_t slot = found->second & 0xFFFFU;
        names.erase(found);
        slots[slot].reset();
        free.push_back(static_cast<std::uint16_t>(slot));
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
    /// Makes sure that one more slot can be taken, and given back, without memory.
    void make_room() {
        if (slots.size() < slots.capacity() && slots.size() < generations.capacity() &&
            slots.size() < free.capacity())
            return;
        const std::size_t room = slots.size() * 2 + 8;
        slots.reserve(room);
        generations.reserve(room);
        free.reserve(room);
    }

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
