#pragma once

#include <cstdint>
#include <string>

namespace libutils {

/// The number of bytes that this process can still take without swapping: the least of what the system can
/// give, of what the limits of the process's control groups leave, and of the address space that the process
/// may still map (`ulimit -v`), which drivers are not prepared to run out of.
std::uint64_t free_memory();

/// What the memory limits of the process's control groups (cgroups) leave, which a container has where the
/// machine has more: of each group, and of all groups around it, its limit less what it uses, where cached
/// files that the kernel can drop do not count. Both versions of control groups are known. The largest value
/// where there is no limit.
///
/// `proc` is the folder in which `self/cgroup` names the groups, "/proc"; `groups` the one in which the
/// groups are mounted, "/sys/fs/cgroup".
std::uint64_t control_group_memory(const std::string& proc, const std::string& groups);

}  // namespace libutils
