#include "support/child_process.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <fstream>

namespace ulk_test {

namespace {

/// Makes a user without rights the superuser of a space of its own.
bool become_superuser() {
    const std::string user = std::to_string(geteuid()), group = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER) != 0)
        return false;
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
    return geteuid() == 0;
}

}  // namespace

child_result_t result_of_child(const std::function<child_result_t()>& work) {
    const pid_t child = fork();
    if (child < 0)
        return child_result_t::not_possible;
    if (child == 0) {
        child_result_t result = child_result_t::died;
        try {
            result = work();
        } catch (const std::exception&) {
        }
        _exit(static_cast<int>(result));
    }
    int status = 0;
    const bool ended = waitpid(child, &status, 0) == child && WIFEXITED(status);
    return ended ? static_cast<child_result_t>(WEXITSTATUS(status)) : child_result_t::died;
}

child_result_t in_child(const std::function<bool()>& work) {
    return result_of_child([&] { return work() ? child_result_t::yes : child_result_t::no; });
}

bool mount_small_disk(const std::string& folder) {
    return (geteuid() == 0 || become_superuser()) && unshare(CLONE_NEWNS) == 0 &&
           mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

}  // namespace ulk_test
