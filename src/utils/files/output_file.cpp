#include "utils/files/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

namespace libutils {
namespace {

bool is_fifo(const char* path) {
    std::error_code error;
    return std::filesystem::is_fifo(path, error);
}

file_descriptor create_file(const char* path, fifo_t fifo) {
    if (fifo == fifo_t::refuse && is_fifo(path))
        return {};
    constexpr mode_t rights = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    const int wait = fifo == fifo_t::waits_for_reader ? 0 : O_NONBLOCK;
    file_descriptor file(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | wait, rights));
    // Once it is open, writes to a FIFO wait for the reader to take the bytes.
    if (file.is_open())
        ::fcntl(file.get(), F_SETFL, ::fcntl(file.get(), F_GETFL) & ~O_NONBLOCK);
    return file;
}

/// Writes all bytes by repeated calls of `write_part(data, size)`, which may take only some of them and
/// returns what ::write does. False when the system does not take them all.
template <typename WritePart>
bool write_parts(const char* data, std::size_t size, WritePart&& write_part) {
    while (size > 0) {
        const ssize_t taken = write_part(data, size);
        if (taken < 0 && errno == EINTR)
            continue;
        if (taken <= 0)
            return false;
        data += taken;
        size -= static_cast<std::size_t>(taken);
    }
    return true;
}

}  // namespace

output_file::output_file(const char* path, fifo_t fifo)
    : file(create_file(path, fifo)), broken(!file.is_open()) {}

output_file::~output_file() {
    if (lent != nullptr)
        std::fclose(lent);
}

void output_file::write(const void* data, std::size_t size) {
    if (broken)
        return;
    broken = !write_parts(static_cast<const char*>(data), size, [&](const char* part, std::size_t part_size) {
        return ::write(file.get(), part, part_size);
    });
}

void output_file::overwrite(std::uint64_t offset, const void* data, std::size_t size) {
    if (broken)
        return;
    const char* const first = static_cast<const char*>(data);
    broken = !write_parts(first, size, [&](const char* part, std::size_t part_size) {
        return ::pwrite(file.get(), part, part_size, static_cast<off_t>(offset) + (part - first));
    });
}

std::FILE* output_file::stream() {
    if (broken || lent != nullptr)
        return lent;
    lent = ::fdopen(file.get(), "wb");
    if (lent != nullptr)
        file.release();
    else
        broken = true;
    return lent;
}

bool output_file::complete() {
    if (lent != nullptr) {
        // The close reports only the loss of the last bytes; ferror reports earlier ones.
        const bool lost = std::ferror(lent) != 0;
        const bool closed = std::fclose(std::exchange(lent, nullptr)) == 0;
        broken = broken || lost || !closed;
    }
    const bool closed = file.close();
    broken = broken || !closed;
    return !broken;
}

void remove_file(const char* path) {
    std::error_code error;
    const auto type = std::filesystem::symlink_status(path, error).type();
    if (type == std::filesystem::file_type::regular || type == std::filesystem::file_type::symlink)
        ::unlink(path);
}

}  // namespace libutils
