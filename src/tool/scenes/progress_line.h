#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace ulktool {

/// Shows that a work goes on, in one line of the terminal that the standard error stream is: how far it has
/// come, or else how many seconds it has taken. Does nothing in the first second, nor where that stream is no
/// terminal. Another thread prints the line, so that the work need not come back to this.
class progress_line_t {
  public:
    explicit progress_line_t(std::string work_name);
    /// Removes the line.
    ~progress_line_t();
    progress_line_t(const progress_line_t&) = delete;
    progress_line_t& operator=(const progress_line_t&) = delete;

    /// `fraction` runs from 0 to 1.
    void show(double fraction) { done = fraction; }

  private:
    void print_until_finished();

    std::string name;
    std::atomic<double> done{-1.0};  ///< negative where nobody tells
    std::mutex mutex;
    std::condition_variable wakes;
    bool finished = false;  ///< guarded by `mutex`
    std::thread printer;
};

}  // namespace ulktool
