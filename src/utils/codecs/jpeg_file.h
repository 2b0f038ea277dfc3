#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "utils/pictures/image2d.h"
#include "utils/pictures/image_window.h"

/// JPEG files, through libjpeg. Its own warnings go to the standard error stream; an error of it gives the
/// line "<file name>: error detected." there.
namespace libutils {

/// The encoded bytes, and the comments and application data that are kept beside the picture.
struct jpeg_t : image_window_t {
    struct marker_t {
        /// 254 is a comment, 224 to 239 are the kinds of application data.
        int code = 0;
        image_window_t bytes;
    };
    /// For messages.
    std::string filename;
    std::list<marker_t> markers;
};

/// Maps the file. False with a line on the standard error stream as map_picture gives it.
[[nodiscard]] bool load(jpeg_t& jpeg, const char* path);

/// Decodes a grey or a colour picture, the latter to RGB, and takes the markers, 4096 at most, into the
/// record. `pad_x` and `pad_y` add zeroed columns to the right and zeroed rows on top, up to a multiple of
/// their value; 0 adds none; nothing but tests sets them.
///
/// An error before the pixels gives "<file name>: jpeg decompress fail, stop." and false. One among them, as
/// the end of a file that was cut, gives "<file name>: jpeg decompress fail, but continue." and true: the
/// picture shows what was decoded, and is black from there on; a progressive one that was cut is as coarse as
/// the scans that are there, and so is one with more scans, for its size and that of the file, than pictures
/// have. A picture of other components, as CMYK, is refused with libjpeg's own message, and one of more than
/// 64 MiB that a file of this size can not hold without any.
[[nodiscard]] bool decompress(image2d& image, jpeg_t& jpeg, std::uint32_t pad_x = 0, std::uint32_t pad_y = 0);

/// Encodes an image of RGB, YCbCr or grey, unsigned, 8 bits a channel, with the markers of the record. False,
/// without a message, for other images and those that do not hold their pixels; with "error detected." when
/// the result does not fit into 8388608 bytes. The record has no bytes then.
[[nodiscard]] bool compress(jpeg_t& jpeg, const image2d& image, int quality, bool force_baseline);

/// Replaces the file at `path` with the encoded bytes. False when there are none or not all of them reached
/// the file.
[[nodiscard]] bool save(const jpeg_t& jpeg, const char* path);

/// The whole way from a path to an image, and back with quality 95 and a baseline file.
[[nodiscard]] bool load_jpeg(image2d& image, const char* path);
[[nodiscard]] bool save_jpeg(const image2d& image, const char* path);

}  // namespace libutils
