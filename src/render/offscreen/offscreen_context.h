#pragma once

#include <string>

namespace ulk3d {

/// A GL 3.3 core context that needs no display. Its own framebuffer is a single pixel, so that passes which
/// draw no picture (transform feedback) find a complete one; pictures are drawn into an offscreen_target_t.
///
/// The connection to EGL stays open until the process ends, because closing it unloads the driver under the
/// objects that still refer to it.
class offscreen_context_t {
  public:
    offscreen_context_t() = default;
    /// Leaves no context current.
    ~offscreen_context_t();
    offscreen_context_t(const offscreen_context_t&) = delete;
    offscreen_context_t& operator=(const offscreen_context_t&) = delete;

    /// Makes the context, makes it current and loads the GL entry points. False when no driver here gives
    /// such a context; `error()` then has the reason.
    [[nodiscard]] bool create();

    const std::string& error() const { return message; }

    /// Makes the context current, or none.
    bool make_current() const;
    static void make_none_current();

  private:
    void destroy();

    void* display = nullptr;
    void* surface = nullptr;
    void* context = nullptr;
    std::string message;
};

}  // namespace ulk3d
