#pragma once

#include <cstdint>
#include <utility>

namespace ulk3d {

/// Admits one change of the models at a time.
///
/// A long change, such as a cut, runs the event loop to keep the window responsive. What the user asks for
/// meanwhile would change the models while they are in use: it comes to this gate, finds it closed, and does
/// nothing. Every change to the list of models, to their kinds and to their contents goes through it.
class scene_gate_t {
  public:
    bool is_open() const { return !busy; }
    /// How many changes have found the gate closed.
    std::uint64_t refusals() const { return refused; }

    /// Runs `change` with the gate closed behind it and returns its result. Where the gate is already closed
    /// nothing runs, and the result is an empty `Result`, such as false.
    template <class Change>
    auto pass(Change&& change) {
        using result_t = decltype(change());
        if (busy) {
            ++refused;
            return result_t();
        }
        const closed_t closed(busy);
        return std::forward<Change>(change)();
    }

  private:
    struct closed_t {
        explicit closed_t(bool& gate) : busy(gate) { busy = true; }
        ~closed_t() { busy = false; }
        closed_t(const closed_t&) = delete;
        closed_t& operator=(const closed_t&) = delete;
        bool& busy;
    };

    bool busy = false;
    std::uint64_t refused = 0;
};

}  // namespace ulk3d
