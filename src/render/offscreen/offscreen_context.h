#pragma once

#include <string>

namespace ulk3d {

/// A GL 3.3 core context that needs no display. Its own framebuffer is a single pixel, so that passes which
/// draw no picture (transform feedback) have a complete one; pictures are drawn into an offscreen_target_t.
///
/// The connection to EGL stays open until the process ends: closing it would unload the driver while objects
/// still refer to it.
class offscreen_context_t {
  public:
    offscreen_context_t() = default;
    /// If the context is current, none is afterwards.
    ~offscreen_context_t();
    offscreen_context_t(const offscreen_context_t&) = delete;
    offscreen_context_t& operator=(const offscreen_context_t&) = delete;

    /// Creates the context, makes it current and loads the GL entry points. False, without printing, when
    /// that fails; `error()` then has the reason. An existing context is only made current.
    [[nodiscard]] bool create();

    const std::string& error() const { return message; }

    /// Make the context current, or none. False when there is no context or EGL refuses.
    [[nodiscard]] bool make_current() const;
    static void make_none_current();

  private:
    void destroy();

    void* display = nullptr;
    void* surface = nullptr;
    void* context = nullptr;
    std::string message;
};

}  // namespace ulk3d
