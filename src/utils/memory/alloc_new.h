#pragma once

#include <cstdint>

namespace libutils {

/// Allocator policy of the shared vectors: blocks on the heap. A file is read into its block.
class alloc_new {
  public:
    /// Makes a block of `size` zeroed bytes. With a file name, the bytes of the file from `offset` on are
    /// read into it, as far as there are any; a `size` of 0 then becomes the size of the file. A file that
    /// can not be opened leaves the block as it is. `mode` is ignored. Null when the size of the file is
    /// needed and can not be determined.
    void* allocate(std::uint64_t& size, const char* filename, int mode, std::uint64_t offset);

    /// A new block with the first bytes of the old one, which is freed.
    void* reallocate(void* block, std::uint64_t new_size, std::uint64_t offset);

    /// Frees a block; null does nothing.
    void deallocate(void* block);

    bool writable() const { return true; }

  private:
    std::uint64_t size = 0;
};

}  // namespace libutils
