#pragma once

#include <cstdint>

namespace libutils {

/// Allocator policy of the shared vectors: anonymous memory, or a file mapped into memory.
///
/// The object is the state of one block: a mapping, and a view into it that can be moved. What is written
/// into a block stays in this process and never reaches a file, so that one file can be mapped any number of
/// times. A file that another program truncates meanwhile shows zeros behind its new end.
///
/// A file that `allocate` can not open or map, and memory that it can not have, end the process: a line
/// "<file name>: file open failed." or "<file name>: create file mapping failed." goes to the standard error
/// stream, the message "alloc_mmap_win::allocate() failed with error <number>: <text>" follows and is shown
/// (show_before_the_end), and the process exits with the system's error number as its status. Where there is
/// another way to go on, use `try_allocate`.
class alloc_mmap_win {
  public:
    enum class access_t : std::uint32_t { read, write };

    /// Makes the mapping and its first view, and returns the view; null for a view that does not fit into the
    /// mapping. `mode` is 0 for reading, 1 for reading and writing; any other value gives null.
    ///
    /// Without a file name: `wanted` zeroed bytes, whatever the offset; 0 bytes are a view that shows
    /// nothing. 4 GiB and more are null. With one: `wanted` bytes of the file from `offset` on, any offset; a
    /// `wanted` of 0 becomes the size of the file. A mapping that is larger than its file goes on with zeros.
    void* allocate(std::uint64_t& wanted, const char* filename, int mode, std::uint64_t offset);

    /// The same, but null where `allocate` would end the process. Prints nothing.
    void* try_allocate(std::uint64_t& wanted, const char* filename, int mode, std::uint64_t offset);

    /// Moves the view and returns its new place, or null when it does not fit into the mapping, which stays.
    /// A block of a file shows what the file holds at `offset`, without what was written into the block;
    /// anonymous memory keeps its bytes and knows no offset.
    void* reallocate(void* view, std::uint64_t new_size, std::uint64_t offset);

    /// Releases the view and the mapping.
    void deallocate(void* view);

    bool writable() const { return access == access_t::write; }

  private:
    struct failure_t;

    bool map_memory(std::uint64_t byte_count);
    bool map_file(std::uint64_t byte_count, const char* filename, failure_t& failure);
    void* make_view(std::uint64_t& wanted, const char* filename, int mode, std::uint64_t offset,
                    failure_t& failure);
    void* view_at(std::uint64_t view_size, std::uint64_t offset);
    int protection() const;

    std::uint64_t size = 0;
    access_t access = access_t::read;
    bool anonymous = true;
    char* mapping = nullptr;
    std::uint64_t mapping_size = 0;
};

/// What shows a user the message with which the process is about to end.
using last_message_t = void (*)(const char* message);

/// From now on `show` is called before `alloc_mmap_win` ends the process; null for the console alone. Returns
/// what was called until now.
last_message_t show_before_the_end(last_message_t show);

}  // namespace libutils
