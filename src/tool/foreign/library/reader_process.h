#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "utils/files/file_descriptor.h"

namespace ulktool {

/// Bytes on their way to the process that has started this one.
class process_output_t {
  public:
    explicit process_output_t(int descriptor) : pipe(descriptor) {}

    /// Ends the process when nobody reads any more.
    void write(const void* data, std::size_t size);
    void flush();

  private:
    static constexpr std::size_t capacity = std::size_t{64} * 1024;
    int pipe;
    std::unique_ptr<char[]> buffer = std::make_unique_for_overwrite<char[]>(capacity);
    std::size_t used = 0;
};

/// A copy of this process, in which a library reads a file that nobody vouches for: when it crashes there,
/// nothing is lost here.
///
/// The copy prints nothing and leaves no core file. Its processor time is bounded by `allow_for`, and so is
/// the memory that it takes besides what this process has.
class reader_process_t {
  public:
    /// Runs `work` there and ends the copy.
    explicit reader_process_t(const std::function<void(process_output_t&)>& work);
    /// Ends the copy if it still runs.
    ~reader_process_t();
    reader_process_t(const reader_process_t&) = delete;
    reader_process_t& operator=(const reader_process_t&) = delete;

    /// Reads what `work` has written. False when it ends before.
    [[nodiscard]] bool read(void* data, std::size_t size);

    /// Whether the copy has used up its time. Waits for its end.
    [[nodiscard]] bool took_too_long();

    /// To be called by `work` for each file that it opens: grants it time and memory for so many bytes more.
    static void allow_for(std::uint64_t file_bytes);

  private:
    int wait();

    pid_t process = -1;
    libutils::file_descriptor pipe;
};

}  // namespace ulktool
