#pragma once

#include <cstdint>

namespace libutils {

/// Another program can truncate a mapped file: the pages behind the new end are gone, and touching them ends
/// the process with the signal SIGBUS. A watched mapping has zeros there instead. Any other SIGBUS does what
/// it would have done before the first mapping was watched.
///
/// `protection` is that of the mapping's pages. Mappings are made and released on one thread only.
///
/// Watching takes memory of its own. After `make_room_to_watch` the next call of `watch_mapping` needs none.
void make_room_to_watch();
void watch_mapping(char* mapping, std::uint64_t size, int protection);

/// Call it before the mapping is released. One that is not watched is left alone.
void unwatch_mapping(const char* mapping);

}  // namespace libutils
