#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <optional>

#include "render/gl/buffer.h"

namespace ulk3d {

/// `count` times `unit` bytes, or nothing when the count is negative or the product does not fit 64 bits.
std::optional<std::int64_t> checked_byte_size(std::int64_t count, std::int64_t unit);

/// Gives the buffer bound to `target` a new store of `byte_size` bytes with undefined content.
///
/// False when there is no memory for it. The GL error stays pending for the caller's next mark: the store's
/// own size tells of the failure.
[[nodiscard]] bool specify_store(GLenum target, std::int64_t byte_size, GLenum usage);

/// Grows the store of `buffer`, of binding target `target`, from `old_size` to `new_size` bytes and keeps its
/// content, by a copy through a temporary buffer that never leaves the GPU.
///
/// False when there is no memory; the old store and its content are then in place again.
[[nodiscard]] bool grow_store(buffer_t& buffer, GLenum target, std::int64_t old_size, std::int64_t new_size);

}  // namespace ulk3d
