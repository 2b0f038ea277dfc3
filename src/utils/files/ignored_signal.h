#pragma once

#include <csignal>

namespace libutils {

/// Ignores a signal that would end the process, for its own lifetime. A handler that somebody has installed
/// is left alone.
class ignored_signal {
  public:
    explicit ignored_signal(int signal_number) : number(signal_number) {
        ::sigaction(number, nullptr, &former);
        if (!ends_the_process())
            return;
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        ::sigaction(number, &ignore, nullptr);
    }
    ~ignored_signal() {
        if (ends_the_process())
            ::sigaction(number, &former, nullptr);
    }
    ignored_signal(const ignored_signal&) = delete;
    ignored_signal& operator=(const ignored_signal&) = delete;

  private:
    bool ends_the_process() const {
        return (former.sa_flags & SA_SIGINFO) == 0 && former.sa_handler == SIG_DFL;
    }

    int number;
    struct sigaction former {};
};

}  // namespace libutils
