#include "utils/memory/mapped_files.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <vector>

namespace libutils {
namespace {

struct mapping_t {
    std::uintptr_t begin;
    std::uint64_t size;
    int protection;
};

/// Never destroyed: textures release their files at the very end of the process. A fault comes while the
/// bytes of a file are looked at, and so never while this is changed.
std::vector<mapping_t>& mappings() {
    static auto& watched = *new std::vector<mapping_t>;
    return watched;
}

std::uintptr_t page_size = 0;
struct sigaction former_action {};

/// Puts zeros from the page of `address` to the end of the mapping: the file ends before it.
bool put_zeros(const mapping_t& mapping, std::uintptr_t address) {
    const std::uintptr_t page = address / page_size * page_size;
    return mmap(reinterpret_cast<void*>(page), mapping.begin + mapping.size - page, mapping.protection,
                MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED;
}

bool mend(std::uintptr_t address) {
    for (const mapping_t& mapping : mappings())
        if (address - mapping.begin < mapping.size && put_zeros(mapping, address))
            return true;
    return false;
}

/// Does what would have been done without a watch, which goes on unless the process ends.
void pass_on(int signal, siginfo_t* info, void* context) {
    const bool sent = info->si_code <= 0;
    if ((former_action.sa_flags & SA_SIGINFO) != 0) {
        former_action.sa_sigaction(signal, info, context);
    } else if (former_action.sa_handler != SIG_DFL && former_action.sa_handler != SIG_IGN) {
        former_action.sa_handler(signal);
    } else if (!sent || former_action.sa_handler == SIG_DFL) {
        // A fault comes again at its place, and is never ignored. A signal that was sent does not.
        sigaction(signal, &former_action, nullptr);
        if (sent)
            raise(signal);
    }
}

void handle(int signal, siginfo_t* info, void* context) {
    const int former_errno = errno;
    // The signal of another process can come while the mappings are changed; only a fault may look at them.
    if (info->si_code != BUS_ADRERR || !mend(reinterpret_cast<std::uintptr_t>(info->si_addr)))
        pass_on(signal, info, context);
    errno = former_errno;
}

void start_watching() {
    mappings();
    page_size = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    struct sigaction action {};
    action.sa_sigaction = handle;
    action.sa_flags = SA_SIGINFO;
    sigemptyset(&action.sa_mask);
    sigaction(SIGBUS, &action, &former_action);
}

}  // namespace

void make_room_to_watch() {
    static const bool watching = (start_watching(), true);
    static_cast<void>(watching);
    std::vector<mapping_t>& watched = mappings();
    if (watched.size() == watched.capacity())
        watched.reserve(watched.size() * 2 + 16);
}

void watch_mapping(char* mapping, std::uint64_t size, int protection) {
    make_room_to_watch();
    mappings().push_back({reinterpret_cast<std::uintptr_t>(mapping), size, protection});
}

void unwatch_mapping(const char* mapping) {
    std::erase_if(mappings(), [begin = reinterpret_cast<std::uintptr_t>(mapping)](const mapping_t& watched) {
        return watched.begin == begin;
    });
}

}  // namespace libutils
