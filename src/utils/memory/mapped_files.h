#pragma once

#include <cstdint>

namespace libutils {

/// A file that is mapped can be cut by another program: what lies behind its new end is gone, and to touch it
/// ends the process with the signal SIGBUS. A mapping that is watched has zeros there instead. Any other
/// signal of that kind does what it would have done before the first mapping was watched.
///
/// `protection` is that of the mapping's pages. Mappings are made and released on one thread only.
void watch_mapping(char* mapping, std::uint64_t size, int protection);

/// Call it before the mapping is released. One that is not watched is left alone.
void unwatch_mapping(const char* mapping);

}  // namespace libutils
