#include "utils/files/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace libutils {
namespace {

/// The path of the file behind a symbolic link; other paths, and links to nowhere, as they are.
std::string behind_links(const char* path) {
    std::array<char, PATH_MAX> resolved{};
    struct stat status {};
    const bool is_link = ::lstat(path, &status) == 0 && S_ISLNK(status.st_mode);
    return is_link && ::realpath(path, resolved.data()) != nullptr ? resolved.data() : path;
}

bool is_fifo(const char* path) {
    std::error_code error;
    return std::filesystem::is_fifo(path, error);
}

file_descriptor create_file(const char* path, fifo_t fifo, mode_t rights) {
    const int wait = fifo == fifo_t::waits_for_reader ? 0 : O_NONBLOCK;
    file_descriptor file;
    do
        file = file_descriptor(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | wait, rights));
    while (!file.is_open() && errno == EINTR);
    // Once it is open, writes to a FIFO wait for the reader to take the bytes.
    if (file.is_open())
        ::fcntl(file.get(), F_SETFL, ::fcntl(file.get(), F_GETFL) & ~O_NONBLOCK);
    return file;
}

/// False when bytes did not reach the disk; devices and FIFOs have none to reach.
bool flush_to_disk(int descriptor) {
    while (::fsync(descriptor) != 0) {
        if (errno != EINTR)
            return errno == EINVAL || errno == EROFS || errno == ENOTSUP;
    }
    return true;
}

/// Makes the names in the folder of a file last. A folder that may not be read can not be flushed.
bool flush_folder_of(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const file_descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !opened.is_open() || flush_to_disk(opened.get());
}

bool is_plain(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

bool exists(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0;
}

}  // namespace

output_file::output_file(const char* path, fifo_t fifo) : target(behind_links(path)) {
    if ((fifo == fifo_t::refuse && is_fifo(path)) || !former.put_aside(target))
        return;
    constexpr mode_t usual = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    constexpr mode_t own = S_IRUSR | S_IWUSR;
    file = create_file(target.c_str(), fifo, former.is_aside() ? own : usual);
    opened = file.is_open();
    broken = !opened;
    if (!opened)
        former.put_back();
    else if (former.is_aside())
        former.give_rights_to(file.get());
}

output_file::output_file(file_descriptor&& open_file)
    : file(std::move(open_file)), opened(file.is_open()), broken(!opened) {}

output_file::~output_file() {
    if (lent != nullptr)
        std::fclose(lent);
}

void output_file::write(const void* data, std::size_t size) {
    const char* next = static_cast<const char*>(data);
    while (!broken && size > 0) {
        const ssize_t taken = ::write(file.get(), next, size);
        if (taken > 0) {
            next += taken;
            size -= static_cast<std::size_t>(taken);
        } else {
            broken = taken == 0 || errno != EINTR;
        }
    }
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

/// Closes the file, after flushing it to the disk when nothing has failed. False when bytes were lost.
bool output_file::close() {
    bool whole = !broken;
    if (lent != nullptr) {
        whole = std::fflush(lent) == 0 && std::ferror(lent) == 0 && whole && flush_to_disk(fileno(lent));
        return std::fclose(std::exchange(lent, nullptr)) == 0 && whole;
    }
    whole = whole && flush_to_disk(file.get());
    return file.close() && whole;
}

bool output_file::complete() {
    const bool has_path =
        is_open() && !target.empty() && is_plain(lent != nullptr ? fileno(lent) : file.get());
    // The path may lead nowhere any more: the folder can be renamed or removed while the file is written.
    broken = !close() || (has_path && (!flush_folder_of(target) || !exists(target)));
    if (!broken)
        former.remove();
    return !broken;
}

void output_file::discard() {
    broken = true;
    static_cast<void>(close());
    std::error_code error;
    if (opened && std::filesystem::is_regular_file(target, error))
        ::unlink(target.c_str());
    former.put_back();
}

}  // namespace libutils
