#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <optional>

#include "render/gl/buffer.h"

namespace ulk3d {

/// `count` times `unit` bytes, or nothing when the count is negative or the product does not fit into 64
/// bits.
[[nodiscard]] std::optional<std::int64_t> checked_byte_size(std::int64_t count, std::int64_t unit);

/// Gives the buffer that is bound to `target` a new store of `byte_size` bytes with undefined content.
///
/// False when there is no memory for it. That is recognised by the size of the store, so the GL error stays
/// pending for the caller's next grCheckError.
[[nodiscard]] bool specify_store(GLenum target, std::int64_t byte_size, GLenum usage);

/// Grows the store of `buffer`, which binds to `target`, from `old_size` to `new_size` bytes. The content is
/// kept by copying it through a temporary buffer, without leaving the GPU.
///
/// False when there is no memory; the buffer then has its old size and content.
[[nodiscard]] bool grow_store(buffer_t& buffer, GLenum target, std::int64_t old_size, std::int64_t new_size);

}  // namespace ulk3d
