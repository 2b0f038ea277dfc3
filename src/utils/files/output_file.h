#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "utils/files/file_descriptor.h"

namespace libutils {

/// How opening for writing treats a FIFO.
enum class fifo_t {
    refuse,        ///< fails, with or without a reader
    needs_reader,  ///< fails without a reader; with one, waits for it to take the bytes
    waits_for_reader
};

/// A file that is written as a whole. Scenes, STL files and pictures all go through this class: its
/// constructor is the only place that opens a file for writing, `complete` the only one that finishes a
/// written file.
///
/// After a failure nothing more is written and `failed` stays true. What was written until then stays in the
/// file. Nothing is printed.
class output_file {
  public:
    /// Opens the path and truncates an existing file; a new one gets the usual permissions. When that is not
    /// possible, `failed` is true from the start.
    output_file(const char* path, fifo_t fifo);
    /// Closes a file that was not completed, and ignores errors.
    ~output_file();
    output_file(const output_file&) = delete;
    output_file& operator=(const output_file&) = delete;

    bool is_open() const { return file.is_open() || lent != nullptr; }

    /// Passes any number of bytes to the system.
    void write(const void* data, std::size_t size);

    /// Overwrites bytes at `offset`; the next `write` continues where the last one ended. Fails for a file
    /// without random access, such as a FIFO.
    void overwrite(std::uint64_t offset, const void* data, std::size_t size);

    /// A stream for a library that writes through one. From then on it replaces `write`, and `complete`
    /// closes it. Null after a failure.
    [[nodiscard]] std::FILE* stream();

    /// Closes the file. True when all bytes have reached it; false also after any earlier failure.
    [[nodiscard]] bool complete();

    /// Marks the output as failed because its content is not available.
    void fail() { broken = true; }
    bool failed() const { return broken; }

  private:
    file_descriptor file;
    std::FILE* lent = nullptr;  ///< the stream of `stream()`, which then owns the descriptor
    bool broken;
};

/// Removes a plain file or a symbolic link. Leaves anything else, such as a device or a FIFO, in place.
/// Errors are ignored.
void remove_file(const char* path);

}  // namespace libutils
