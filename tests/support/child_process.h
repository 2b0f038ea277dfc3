#pragma once

#include <functional>
#include <string>

/// Work in a child process, for what would change the process of the tests itself.
namespace ulk_test {

enum class child_result_t { yes, no, not_possible, died };

/// What `work` returns in a child process; `died` when a signal or an exception ended that.
child_result_t result_of_child(const std::function<child_result_t()>& work);

/// The same for work that is done or not.
child_result_t in_child(const std::function<bool()>& work);

/// Mounts an empty disk of 64 KiB at a folder; only the calling process and its children see it. False when
/// the user may not.
bool mount_small_disk(const std::string& folder);

}  // namespace ulk_test
