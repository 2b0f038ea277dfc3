#include "utils/files/former_file.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <string_view>
#include <vector>

#include "utils/files/file_descriptor.h"

namespace libutils {
namespace {

/// Whether an error means that files of this folder, or this file, are not for us to rename. Any other error
/// is a failure of the system, after which the file at the path is better left alone.
bool is_refusal(int error) {
    constexpr std::array refusals = {EACCES, EPERM, EROFS, ENAMETOOLONG, EBUSY, EXDEV};
    return std::find(refusals.begin(), refusals.end(), error) != refusals.end();
}

/// Takes a name that no file has, for a rename onto it. The error of the system when there is none.
int take_free_name(const std::string& path, std::string& name) {
    for (unsigned int number = 0;; ++number) {
        name = path + '~' + (number == 0 ? std::string() : std::to_string(number));
        const file_descriptor taken(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR));
        if (taken.is_open())
            return 0;
        if (errno != EEXIST && errno != EINTR)
            return errno;
    }
}

/// Copies the access list and the attributes that users and programs give to files.
void copy_attributes(const char* from, int to) {
    const ssize_t size = ::listxattr(from, nullptr, 0);
    if (size <= 0)
        return;
    std::vector<char> names(static_cast<std::size_t>(size));
    const ssize_t listed = ::listxattr(from, names.data(), names.size());
    for (ssize_t at = 0; at < listed;) {
        const char* const name = names.data() + at;
        at += static_cast<ssize_t>(std::strlen(name)) + 1;
        if (!std::string_view(name).starts_with("user.") &&
            std::string_view(name) != "system.posix_acl_access")
            continue;
        const ssize_t length = ::getxattr(from, name, nullptr, 0);
        std::vector<char> value(length > 0 ? static_cast<std::size_t>(length) : 0);
        if (length >= 0 && ::getxattr(from, name, value.data(), value.size()) == length)
            static_cast<void>(::fsetxattr(to, name, value.data(), value.size(), 0));
    }
}

}  // namespace

former_file::~former_file() {
    if (is_aside())
        std::cerr << place << ": not saved; the former file is " << other_path << std::endl;
}

bool former_file::put_aside(const std::string& path) {
    if (::lstat(path.c_str(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR || is_refusal(errno);
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1 ||
        ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
        return true;
    std::string name;
    if (const int error = take_free_name(path, name); error != 0)
        return is_refusal(error);
    place = path;
    if (::rename(path.c_str(), name.c_str()) == 0) {
        other_path = std::move(name);
        return true;
    }
    const int error = errno;
    ::unlink(name.c_str());
    return is_refusal(error);
}

void former_file::give_rights_to(int descriptor) const {
    constexpr auto same_user = static_cast<uid_t>(-1);
    const mode_t mode = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    if (::fchown(descriptor, status.st_uid, status.st_gid) == 0 ||
        ::fchown(descriptor, same_user, status.st_gid) == 0) {
        static_cast<void>(::fchmod(descriptor, mode));
        copy_attributes(other_path.c_str(), descriptor);
    } else {
        // The new file belongs to another group, which gets no more than everybody.
        const mode_t for_all = (mode & S_IRWXO) << 3;
        static_cast<void>(::fchmod(descriptor, (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & for_all)));
    }
}

void former_file::put_back() {
    struct stat taken {};
    if (is_aside() && ::lstat(place.c_str(), &taken) != 0 && ::rename(other_path.c_str(), place.c_str()) == 0)
        other_path.clear();
}

void former_file::remove() {
    if (is_aside())
        ::unlink(other_path.c_str());
    other_path.clear();
}

}  // namespace libutils
