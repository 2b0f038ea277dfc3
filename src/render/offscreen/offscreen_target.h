#pragma once

#include <GL/glew.h>

#include <array>

#include "utils/pictures/rgba_picture.h"

namespace ulk3d {

using libutils::rgba_picture_t;

/// A framebuffer to draw into without a window: 8-bit RGBA colour and 24-bit depth. All operations need a
/// current GL context.
class offscreen_target_t {
  public:
    /// Takes sizes in pixels; check `is_complete` afterwards.
    offscreen_target_t(int width, int height);
    ~offscreen_target_t();
    offscreen_target_t(const offscreen_target_t&) = delete;
    offscreen_target_t& operator=(const offscreen_target_t&) = delete;

    /// False when GL can not draw into a target of this size. Nothing is printed.
    [[nodiscard]] bool is_complete() const { return complete; }

    /// Directs drawing to this target, with a viewport that covers all of it.
    void bind() const;
    /// Reads back the colours, top row first; leaves bindings and pixel storage as they were.
    rgba_picture_t read_pixels() const;

    int pixel_width() const { return width; }
    int pixel_height() const { return height; }
    GLuint framebuffer_id() const { return framebuffer; }

  private:
    int width;
    int height;
    bool complete = false;
    GLuint framebuffer = 0;
    std::array<GLuint, 2> renderbuffers{};
};

}  // namespace ulk3d
