#include "fsync_time.h"

#include <chrono>

namespace {

double seconds = 0;

}  // namespace

// The linker leads every call of fsync here.
extern "C" {
int __real_fsync(int file);
int __wrap_fsync(int file);

int __wrap_fsync(int file) {
    const auto start = std::chrono::steady_clock::now();
    const int result = __real_fsync(file);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    seconds += took.count();
    return result;
}
}

double seconds_in_fsync() {
    return seconds;
}
