#pragma once

#include <cstdint>

#include "gltextures/upload/gr_pixel_source.h"

namespace libgr {

/// Where the rows of a source lie in its bytes, all in bytes.
struct pixel_rows_t {
    explicit pixel_rows_t(const pixel_source_t& source);

    std::uint64_t line;   ///< from a row to the next
    std::uint64_t image;  ///< from an image of a volume to the next
    std::uint64_t first;  ///< from the beginning to the first row that is not skipped
};

/// True when the source's bytes reach to the end of its last pixel, skips counted in. What would fill up the
/// last row needs not be there: GL does not read it.
[[nodiscard]] bool holds_rows(const pixel_source_t& source);

}  // namespace libgr
