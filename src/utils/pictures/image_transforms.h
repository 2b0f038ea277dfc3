#pragma once

#include <array>
#include <cstdint>

#include "utils/pictures/image2d.h"

/// Transforms of images: each makes `target` from `source`, which stays as it is; both may be one object.
///
/// A new target has bytes of its own; its rows are aligned to 4 bytes, it has no skips and no palette, unless
/// stated otherwise. Positions in the source respect its skips and its line size. A refused source, also one
/// whose window does not hold its pixels, gives false and a target that is a shallow copy of the source, so
/// that a caller who goes on by mistake sees the source. A message, where one is given, is a line on the
/// standard error stream.
///
/// No command reaches `scaledown`, `rotate`, `tight_copy`, `fill_colour`, `add_colour` and
/// `normalization_cube`.
namespace libutils {

/// RGB becomes BGR, RGBA becomes BGRA; integers of 8 bits only. No message.
[[nodiscard]] bool rgb2bgr(image2d& target, const image2d& source);
/// BGR becomes RGB, BGRA becomes RGBA; integers of 8 bits only. No message.
[[nodiscard]] bool bgr2rgb(image2d& target, const image2d& source);

/// An image of palette indices of 4 or 8 bits becomes RGB, unsigned, 8 bits; of the pixels of a byte the
/// first has the high half. An index beyond the palette is black. Indices of other sizes give false and a
/// black RGB image of the same size. An image that is not one of indices is copied, shallow, and the result
/// is true.
[[nodiscard]] bool index2rgb(image2d& target, const image2d& source);

/// RGB, unsigned, 8 bits, becomes grey of the same size. Refuses others with "<format>: image format is not
/// RGB.", "<type>: image type is not UINT." or "<bits>: image bits is not 8.". A compressed source gives a
/// grey image of its size without any bytes, and true.
[[nodiscard]] bool rgb2grey(image2d& target, const image2d& source);

/// Heights in grey, unsigned, 8 bits, become normals in RGB, signed, 8 bits, 127 being 1, with the source's
/// `pack`. The slopes are those to the right and to the upper neighbour, and wrap around at the edges. RGB of
/// 8 bits is taken to be normals already: a shallow copy and true.
///
/// Rows are `width` bytes rounded up to 4 apart on both sides, and begin with the window: skips play no part.
/// Refuses others with "normalmap(): compressed format not supported." or "normalmap(): image type not
/// supported."; without memory "normalmap allocate() fail.".
[[nodiscard]] bool heightmap2normalmap(image2d& target, const image2d& source);

/// Half the width and height, rounded down, each pixel the mean of four, for grey, RGB, RGBA, BGR and BGRA of
/// 8 bits, which is not tested. Grey keeps its horizontal scale: it shows the left half of the picture.
/// Refuses others with "scaledown(): <format>: unsupported format."; without memory "scaledown(): allocate()
/// fail.".
[[nodiscard]] bool scaledown(image2d& target, const image2d& source);

/// Turns the picture counterclockwise, row 0 being the bottom one. 0 quarter turns give a shallow copy; more
/// than 3 are refused, as are pixels that are not whole bytes. No message.
[[nodiscard]] bool rotate(std::uint32_t quarter_turns, image2d& target, const image2d& source);

/// Copies the picture without its skips: a source of any format, with its header and palette. The bytes
/// behind the pixels of a row, up to the line size, are zero. Refuses compressed images. No message.
[[nodiscard]] bool tight_copy(image2d& target, const image2d& source);

/// Red, green, blue and alpha, 1.0 being the full channel.
using image_colour_t = std::array<float, 4>;

/// A tight copy with all pixels in one colour, for RGB and RGBA, unsigned, 8 bits. A channel below 0 is 0;
/// one above 1 and not-a-number are 255. Refuses others with "not support image type.", "not support image
/// bits." or "not support format.".
[[nodiscard]] bool fill_colour(image2d& target, const image2d& source, const image_colour_t& colour);

/// A tight copy with the colour added to all pixels, limited to the range of a channel. Formats and messages
/// as for fill_colour.
[[nodiscard]] bool add_colour(image2d& target, const image2d& source, const image_colour_t& colour);

/// Six images of 256 by 256 pixels, RGB, signed, 8 bits, in the order of the faces of a cube map: +x, -x, +y,
/// -y, +z, -z. Each pixel holds the direction from the centre of the cube through it, -1 to 1 as 0 to 255.
/// False without memory.
[[nodiscard]] bool normalization_cube(std::array<image2d, 6>& faces);

}  // namespace libutils
