// The system's operations on files, where our objects call them.

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include "support/faults/active_faults.h"

namespace {

using ulk_test::fallible_t;
using ulk_test::is_to_fail;

/// Sets errno as the fault wants it; the result of an operation that has failed.
int failed() {
    errno = ulk_test::active_faults()->what().error;
    return -1;
}

bool is_short() {
    return ulk_test::active_faults()->what().is_short;
}

/// Half of a size, so that there is something left and something done where the size allows it.
std::size_t half(std::size_t size) {
    return size > 1 ? size / 2 : size;
}

/// A transfer of `size` bytes by `transfer(size)`, whole, half or not at all.
template <class Transfer>
ssize_t moved(fallible_t operation, std::size_t size, Transfer&& transfer) {
    if (!is_to_fail(operation))
        return transfer(size);
    return is_short() ? transfer(half(size)) : failed();
}

}  // namespace

extern "C" {

int __real_open(const char* path, int flags, ...);
std::FILE* __real_fopen(const char* path, const char* mode);
std::FILE* __real_fdopen(int file, const char* mode);
ssize_t __real_read(int file, void* bytes, std::size_t size);
ssize_t __real_pread(int file, void* bytes, std::size_t size, off_t offset);
std::size_t __real_fread(void* bytes, std::size_t size, std::size_t count, std::FILE* file);
ssize_t __real_write(int file, const void* bytes, std::size_t size);
ssize_t __real_pwrite(int file, const void* bytes, std::size_t size, off_t offset);
int __real_rename(const char* from, const char* to);
int __real_renameat(int from_folder, const char* from, int to_folder, const char* to);
int __real_renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags);
int __real_link(const char* from, const char* to);
int __real_linkat(int from_folder, const char* from, int to_folder, const char* to, int flags);
int __real_unlink(const char* path);
int __real_unlinkat(int folder, const char* path, int flags);
int __real_fsync(int file);
int __real_fdatasync(int file);
int __real_close(int file);
int __real_fclose(std::FILE* file);
int __real_stat(const char* path, struct stat* status);
int __real_lstat(const char* path, struct stat* status);
int __real_fstat(int file, struct stat* status);
void* __real_mmap(void* place, std::size_t size, int protection, int flags, int file, off_t offset);

int __wrap_open(const char* path, int flags, ...) {
    mode_t rights = 0;
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) {
        va_list rest;
        va_start(rest, flags);
        rights = va_arg(rest, mode_t);
        va_end(rest);
    }
    return is_to_fail(fallible_t::open) ? failed() : __real_open(path, flags, rights);
}

std::FILE* __wrap_fopen(const char* path, const char* mode) {
    if (!is_to_fail(fallible_t::open))
        return __real_fopen(path, mode);
    failed();
    return nullptr;
}

std::FILE* __wrap_fdopen(int file, const char* mode) {
    if (!is_to_fail(fallible_t::open))
        return __real_fdopen(file, mode);
    failed();
    return nullptr;
}

ssize_t __wrap_read(int file, void* bytes, std::size_t size) {
    return moved(fallible_t::read, size, [&](std::size_t part) { return __real_read(file, bytes, part); });
}

ssize_t __wrap_pread(int file, void* bytes, std::size_t size, off_t offset) {
    return moved(fallible_t::read, size,
                 [&](std::size_t part) { return __real_pread(file, bytes, part, offset); });
}

std::size_t __wrap_fread(void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    if (!is_to_fail(fallible_t::read))
        return __real_fread(bytes, size, count, file);
    failed();
    return 0;
}

ssize_t __wrap_write(int file, const void* bytes, std::size_t size) {
    return moved(fallible_t::write, size, [&](std::size_t part) { return __real_write(file, bytes, part); });
}

ssize_t __wrap_pwrite(int file, const void* bytes, std::size_t size, off_t offset) {
    return moved(fallible_t::write, size,
                 [&](std::size_t part) { return __real_pwrite(file, bytes, part, offset); });
}

int __wrap_rename(const char* from, const char* to) {
    return is_to_fail(fallible_t::rename) ? failed() : __real_rename(from, to);
}

int __wrap_renameat(int from_folder, const char* from, int to_folder, const char* to) {
    return is_to_fail(fallible_t::rename) ? failed() : __real_renameat(from_folder, from, to_folder, to);
}

int __wrap_renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) {
    return is_to_fail(fallible_t::rename) ? failed()
                                          : __real_renameat2(from_folder, from, to_folder, to, flags);
}

int __wrap_link(const char* from, const char* to) {
    return is_to_fail(fallible_t::rename) ? failed() : __real_link(from, to);
}

int __wrap_linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) {
    return is_to_fail(fallible_t::rename) ? failed() : __real_linkat(from_folder, from, to_folder, to, flags);
}

int __wrap_unlink(const char* path) {
    return is_to_fail(fallible_t::unlink) ? failed() : __real_unlink(path);
}

int __wrap_unlinkat(int folder, const char* path, int flags) {
    return is_to_fail(fallible_t::unlink) ? failed() : __real_unlinkat(folder, path, flags);
}

int __wrap_fsync(int file) {
    return is_to_fail(fallible_t::sync) ? failed() : __real_fsync(file);
}

int __wrap_fdatasync(int file) {
    return is_to_fail(fallible_t::sync) ? failed() : __real_fdatasync(file);
}

int __wrap_close(int file) {
    if (!is_to_fail(fallible_t::close))
        return __real_close(file);
    __real_close(file);
    return failed();
}

int __wrap_fclose(std::FILE* file) {
    if (!is_to_fail(fallible_t::close))
        return __real_fclose(file);
    __real_fclose(file);
    failed();
    return EOF;
}

int __wrap_stat(const char* path, struct stat* status) {
    return is_to_fail(fallible_t::status) ? failed() : __real_stat(path, status);
}

int __wrap_lstat(const char* path, struct stat* status) {
    return is_to_fail(fallible_t::status) ? failed() : __real_lstat(path, status);
}

int __wrap_fstat(int file, struct stat* status) {
    return is_to_fail(fallible_t::status) ? failed() : __real_fstat(file, status);
}

void* __wrap_mmap(void* place, std::size_t size, int protection, int flags, int file, off_t offset) {
    if (!is_to_fail(fallible_t::mapping))
        return __real_mmap(place, size, protection, flags, file, offset);
    failed();
    return MAP_FAILED;
}
}
