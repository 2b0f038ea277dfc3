#pragma once

#include "utils/pictures/image2d.h"

/// Images in files, by the extension of the path, in any case of letters: the forms of
/// utils/codecs/file_forms.h.
namespace libutils {

/// Reads a picture. An image of palette indices is expanded to RGB; all else comes as its codec makes it:
/// grey, grey with alpha, RGB, RGBA, BGR or BGRA.
///
/// The pixels, those of an expanded image as well, are claimed (utils/memory/memory_budget.h) before they are
/// allocated.
///
/// False when the codec fails, with its message, and for another extension, with the line "autoloadformat
/// load fail, fname=<path>" on the standard error stream. The image then keeps what has been set so far.
[[nodiscard]] bool autoloadformat(image2d& image, const char* path);

/// Writes a picture; each codec documents what its form can store. No command reaches this: pictures are only
/// read. A PNG file of a format that has no place in one is not written, and the result is true.
///
/// False when the codec fails or refuses, or runs out of memory, and for an extension that is not written,
/// with the line "autosaveformat load fail, fname=<path>" on the standard error stream.
[[nodiscard]] bool autosaveformat(const image2d& image, const char* path);

}  // namespace libutils
