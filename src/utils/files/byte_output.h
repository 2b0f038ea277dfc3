#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "utils/files/file_descriptor.h"

namespace ulk3d {

/// Writes the bytes of a binary file through one buffer.
///
/// After a failure nothing more is written and `failed` stays true.
class byte_output {
  public:
    /// The most bytes that one call of `append` takes.
    static constexpr std::size_t capacity = std::size_t{128} * 1024;

    /// Opens the path and truncates what is there; fails at once when that can not be done.
    explicit byte_output(const char* path);

    bool is_open() const { return file.is_open(); }

    /// Room for `size` bytes behind those written so far, which the caller fills before the next call.
    [[nodiscard]] char* append(std::size_t size) {
        if (size > capacity - used)
            flush();
        char* const room = buffer.get() + used;
        used += size;
        return room;
    }

    /// Writes over bytes that were appended before. A file in which one can not go back fails.
    void overwrite(std::uint64_t offset, const void* data, std::size_t size);

    /// Hands the rest to the system and closes. True when all bytes have reached the file.
    [[nodiscard]] bool close();

    /// Marks the output as failed: what was to be written is not at hand.
    void fail() { broken = true; }
    bool failed() const { return broken; }

  private:
    void flush();

    file_descriptor file;
    std::unique_ptr<char[]> buffer = std::make_unique_for_overwrite<char[]>(capacity);
    std::size_t used = 0;
    bool broken;
};

}  // namespace ulk3d
