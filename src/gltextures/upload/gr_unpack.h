#pragma once

#include <GL/glew.h>

#include <array>
#include <cstdint>

#include "gltextures/upload/gr_pixel_source.h"

namespace libgr {

/// Tells GL how the bytes of a source lie: swapping and alignment, then the row length and the skips that an
/// image of so many dimensions has. Nothing restores them. Without a packing record rows are aligned to 4
/// bytes and not swapped, whatever the upload before has set.
void set_unpack_state(const pixel_source_t& source);

/// For its scope GL reads rows without gaps, swaps and skips.
class tight_unpack_t {
  public:
    tight_unpack_t();
    ~tight_unpack_t();
    tight_unpack_t(const tight_unpack_t&) = delete;
    tight_unpack_t& operator=(const tight_unpack_t&) = delete;

  private:
    std::array<GLint, 8> saved;
};

/// Bytes that GL reads, from the pixel pointer on, for an image of this size under the unpack state that is
/// set; all ones when the number does not fit. 0 for a type that is none: GL refuses it and reads nothing.
std::uint64_t bytes_read_by_gl(GLenum format, GLenum type, const image_extent_t& extent);

}  // namespace libgr
