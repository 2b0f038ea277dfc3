#pragma once

#include <cstdint>
#include <utility>

namespace libutils {

/// Owner of an open file of the system. Not open after a failed open or after `close`.
class file_descriptor {
  public:
    file_descriptor() = default;
    explicit file_descriptor(int open_descriptor) : descriptor(open_descriptor) {}
    /// Loses what a close would tell.
    ~file_descriptor() { static_cast<void>(close()); }
    file_descriptor(file_descriptor&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}
    file_descriptor& operator=(file_descriptor&& other) noexcept {
        std::swap(descriptor, other.descriptor);
        return *this;
    }

    bool is_open() const { return descriptor >= 0; }
    int get() const { return descriptor; }
    /// Leaves the open file to someone else.
    void release() { descriptor = -1; }

    /// False when the system reports that bytes written before were lost. True when nothing is open.
    [[nodiscard]] bool close();

  private:
    int descriptor = -1;
};

/// Opens a plain file for reading and tells its size in bytes. Not open for a path that does not exist, can
/// not be read or is no plain file (a directory, a FIFO, a device). Never waits.
[[nodiscard]] file_descriptor open_plain_file(const char* path, std::uint64_t& size);

/// Reads up to `size` bytes. 0 at the end of the file and after an error.
[[nodiscard]] std::size_t read_some(const file_descriptor& file, char* target, std::size_t size);

}  // namespace libutils
