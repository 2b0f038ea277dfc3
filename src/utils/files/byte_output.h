#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "utils/files/output_file.h"

namespace libutils {

/// Writes the bytes of a binary file through one buffer.
///
/// After a failure nothing more is written and `failed` stays true.
class byte_output {
  public:
    /// The most bytes that one call of `append` takes.
    static constexpr std::size_t capacity = std::size_t{128} * 1024;

    /// Opens as output_file does.
    byte_output(const char* path, fifo_t fifo) : file(path, fifo) {}

    bool is_open() const { return file.is_open(); }

    /// Room for `size` bytes behind those written so far, which the caller fills before the next call.
    [[nodiscard]] char* append(std::size_t size) {
        if (size > capacity - used)
            flush();
        char* const room = buffer.get() + used;
        used += size;
        return room;
    }

    /// Writes bytes, any number of them.
    void write(const void* data, std::size_t size);

    /// Writes over bytes that were appended before. A file in which one can not go back fails.
    void overwrite(std::uint64_t offset, const void* data, std::size_t size);

    /// Hands the rest to the system and closes. True when all bytes have reached the file.
    [[nodiscard]] bool complete();

    /// Marks the output as failed: what was to be written is not at hand.
    void fail() { file.fail(); }
    bool failed() const { return file.failed(); }

  private:
    void flush();

    output_file file;
    std::unique_ptr<char[]> buffer = std::make_unique_for_overwrite<char[]>(capacity);
    std::size_t used = 0;
};

}  // namespace libutils
