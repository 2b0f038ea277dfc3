#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "utils/files/file_descriptor.h"
#include "utils/files/former_file.h"
#include "utils/files/ignored_signal.h"

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
/// The new file grows at the path. A plain file that stands there is not lost before all bytes of the new one
/// are on the disk: it is put aside (former_file.h), and removed by `complete`. After a failure nothing more
/// is written and `failed` stays true; what was written until then stays at the path and the former file
/// aside, which is the only thing that is printed. A limit on the size of files, and a reader that goes away,
/// are failures like any other.
class output_file {
  public:
    /// Opens the path, or what a symbolic link there leads to. A new file gets the usual permissions, one
    /// that takes the place of another the permissions of that. What can not be put aside is truncated and
    /// written in place. When the path can not be opened, `failed` is true from the start and all is as it
    /// was.
    output_file(const char* path, fifo_t fifo);
    /// Goes on writing what is open already, such as the standard output stream; there is no path to look at.
    explicit output_file(file_descriptor&& open_file);
    /// Closes a file that was not completed, and ignores errors.
    ~output_file();
    output_file(const output_file&) = delete;
    output_file& operator=(const output_file&) = delete;

    bool is_open() const { return file.is_open() || lent != nullptr; }

    /// Passes any number of bytes to the system.
    void write(const void* data, std::size_t size);

    /// A stream for a library that writes through one. From then on it replaces `write`, and `complete`
    /// closes it. Null after a failure.
    [[nodiscard]] std::FILE* stream();

    /// Flushes the file and its folder to the disk and closes. True when all bytes have reached it and the
    /// path still leads there; false also after any earlier failure.
    [[nodiscard]] bool complete();

    /// Takes back what was written, and gives the former file its place back. Leaves anything but a plain
    /// file, such as a device or a FIFO, in place.
    void discard();

    /// Marks the output as failed because its content is not available.
    void fail() { broken = true; }
    bool failed() const { return broken; }

  private:
    bool close();

    ignored_signal size_limit{SIGXFSZ};
    ignored_signal reader_gone{SIGPIPE};
    std::string target;  ///< the path behind the links
    former_file former;
    file_descriptor file;
    std::FILE* lent = nullptr;  ///< the stream of `stream()`, which then owns the descriptor
    bool opened = false;
    bool broken = true;
};

}  // namespace libutils
