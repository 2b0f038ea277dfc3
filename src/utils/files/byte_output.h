#pragma once

#include <cstddef>
#include <memory>

#include "utils/files/output_file.h"

namespace libutils {

/// Writes the bytes of a binary file through one buffer.
///
/// After a failure nothing more is written and `failed` stays true.
class byte_output {
  public:
    /// The most bytes that one call of `append` can take.
    static constexpr std::size_t capacity = std::size_t{128} * 1024;

    /// Opens the path as output_file does.
    byte_output(const char* path, fifo_t fifo) : file(path, fifo) {}

    bool is_open() const { return file.is_open(); }

    /// Reserves `size` bytes, at most `capacity`, after those written so far; the caller must fill them
    /// before the next call. Never null.
    [[nodiscard]] char* append(std::size_t size) {
        if (size > capacity - used)
            flush();
        char* const room = buffer.get() + used;
        used += size;
        return room;
    }

    /// Writes any number of bytes.
    void write(const void* data, std::size_t size);

    /// Writes out the buffer and closes. True when all bytes have reached the file; false also after any
    /// earlier failure.
    [[nodiscard]] bool complete();

    /// Marks the output as failed because its content is not available.
    void fail() { file.fail(); }
    bool failed() const { return file.failed(); }

  private:
    void flush();

    output_file file;
    std::unique_ptr<char[]> buffer = std::make_unique_for_overwrite<char[]>(capacity);
    std::size_t used = 0;
};

}  // namespace libutils
