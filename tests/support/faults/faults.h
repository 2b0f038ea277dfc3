#pragma once

#include <cstdint>
#include <vector>

/// Makes operations of the program fail on request. A test program that links ulk_test_faults has its
/// references to the functions below replaced, and so has every object of ours in it; other programs never
/// notice. What the system's libraries do for themselves is left alone: a driver of GL that runs out of
/// memory is another matter.
namespace ulk_test {

/// What can fail. Operations are counted by kind, on the thread that has the scope of faults_t.
enum class fallible_t {
    allocation,      ///< malloc, calloc, realloc and operator new
    buffer_store,    ///< glBufferData: the store is gone, and GL has no memory
    buffer_mapping,  ///< glMapBufferRange: null
    open,            ///< open, fopen, fdopen
    read,            ///< read, pread, fread
    write,           ///< write, pwrite
    rename,          ///< rename, renameat, renameat2, link, linkat
    unlink,          ///< unlink, unlinkat
    sync,            ///< fsync, fdatasync
    close,           ///< close, fclose: the file is closed all the same
    status,          ///< stat, fstat, lstat
    mapping,         ///< mmap
};

/// How an operation fails.
struct fault_t {
    fallible_t operation;
    int error = 0;            ///< errno of an operation of the system
    bool is_short = false;    ///< a read or write takes half of the bytes instead
    bool is_lasting = false;  ///< all later operations of the kind fail as well
};

/// During its lifetime the operation numbered `failing`, counted from 1, fails; with 0 none does, and they
/// are counted. One at a time; a test must not have it watch GoogleTest's own macros.
class faults_t {
  public:
    faults_t(const fault_t& fault, std::uint64_t failing);
    ~faults_t();
    faults_t(const faults_t&) = delete;
    faults_t& operator=(const faults_t&) = delete;

    /// Operations so far.
    std::uint64_t count() const { return operations; }
    /// Whether one has failed.
    bool has_struck() const { return struck; }

    /// Counts an operation; whether it is to fail. For the replaced functions.
    bool next_fails(fallible_t operation);
    const fault_t& what() const { return fault; }

  private:
    fault_t fault;
    std::uint64_t failing;
    std::uint64_t operations = 0;
    bool struck = false;
};

/// The numbers at which to fail in a run of `count` operations: every one up to `dense`, then, as the long
/// loops of a load repeat the same few operations, `sparse` evenly spaced ones, and the last.
std::vector<std::uint64_t> failing_numbers(std::uint64_t count, std::uint64_t dense = 300,
                                           std::uint64_t sparse = 60);

}  // namespace ulk_test
