#pragma once

#include <cstdint>
#include <utility>

namespace libutils {

/// Owner of a file descriptor. Not open after a failed open, and after `close`.
class file_descriptor {
  public:
    file_descriptor() = default;
    explicit file_descriptor(int open_descriptor) : descriptor(open_descriptor) {}
    /// Closes the file and ignores an error; `close` reports it.
    ~file_descriptor() { static_cast<void>(close()); }
    file_descriptor(file_descriptor&& other) noexcept
        : descriptor(std::exchange(other.descriptor, -1)), unreadable(other.unreadable) {}
    file_descriptor& operator=(file_descriptor&& other) noexcept {
        std::swap(descriptor, other.descriptor);
        std::swap(unreadable, other.unreadable);
        return *this;
    }

    bool is_open() const { return descriptor >= 0; }
    int get() const { return descriptor; }
    /// Gives up ownership without closing.
    void release() { descriptor = -1; }

    /// False when the system reports the loss of bytes written earlier. True when nothing is open.
    [[nodiscard]] bool close();

    /// Whether a read has failed, which is not the end of the file. Stays true when the file is closed.
    bool has_read_error() const { return unreadable; }
    void note_read_error() { unreadable = true; }

  private:
    int descriptor = -1;
    bool unreadable = false;
};

/// Opens a plain file for reading and sets `size` to its size in bytes. The result is not open, without a
/// message, when the path does not exist, can not be read or is not a plain file (but a directory, a FIFO or
/// a device). Never blocks.
[[nodiscard]] file_descriptor open_plain_file(const char* path, std::uint64_t& size);

/// Reads up to `size` bytes and returns how many were read: 0 at the end of the file and after an error,
/// which the file notes.
[[nodiscard]] std::size_t read_some(file_descriptor& file, char* target, std::size_t size);

}  // namespace libutils
