#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "utils/files/file_descriptor.h"

namespace libutils {

/// What an open for writing does about a FIFO.
enum class fifo_t {
    refuse,        ///< fails, with or without a reader
    needs_reader,  ///< fails without a reader; with one, waits for it to take the bytes
    waits_for_reader
};

/// A file that is being written whole: scenes, STL files and pictures all go through it. The constructor is
/// the only place where a file is opened for writing, `complete` the only one where a written file is done
/// with.
///
/// After a failure nothing more is written and `failed` stays true. What was written until then is left at
/// the path.
class output_file {
  public:
    /// Opens the path and truncates what is there; a new file gets the usual rights. Fails at once when that
    /// can not be done.
    output_file(const char* path, fifo_t fifo);
    /// Closes what was not completed.
    ~output_file();
    output_file(const output_file&) = delete;
    output_file& operator=(const output_file&) = delete;

    bool is_open() const { return file.is_open() || lent != nullptr; }

    /// Hands bytes to the system, any number of them.
    void write(const void* data, std::size_t size);

    /// Writes over bytes at `offset`; the next `write` goes on where the last one ended. Fails where there is
    /// no going back, as in a FIFO.
    void overwrite(std::uint64_t offset, const void* data, std::size_t size);

    /// For a library that writes to a stream of its own, from then on instead of `write`; `complete` closes
    /// it. Null after a failure.
    std::FILE* stream();

    /// Closes. True when all bytes have reached the file.
    [[nodiscard]] bool complete();

    /// Marks the output as failed: what was to be written is not at hand.
    void fail() { broken = true; }
    bool failed() const { return broken; }

  private:
    file_descriptor file;
    std::FILE* lent = nullptr;  ///< which owns the descriptor from then on
    bool broken;
};

/// Removes a file or a link by its name. What is neither, as a device or a FIFO, keeps its name.
void remove_file(const char* path);

}  // namespace libutils
