#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <limits>

#include "utils/codecs/jpeg_file.h"
#include "utils/codecs/jpeg_library.h"
#include "utils/files/picture_files.h"

// Behind the library's main header, whose structs it needs.
#include <jerror.h>

namespace libutils {
namespace {

constexpr int first_application_marker = JPEG_APP0;
constexpr int last_application_marker = JPEG_APP0 + 15;
constexpr unsigned int longest_marker = 65535;

/// The longest profile takes 255 markers. A file could have millions of empty ones, each of which would take
/// up a page of memory.
constexpr std::size_t most_markers = 4096;

/// Hundreds of scans over a large picture, in a file of some kilobytes, are made to keep a program busy;
/// progressive pictures have about ten.
constexpr int most_scans = 500;

/// What a picture may take, and so may the coefficients that the library keeps of a progressive one. No byte
/// of a file makes 2048 bytes, since a block of 64 pixels takes up one bit at least; up to half a GiB a
/// picture may be a part of a longer file that was cut.
constexpr std::uint64_t least_memory = std::uint64_t{512} << 20;
constexpr std::uint64_t memory_per_byte = 2048;

std::uint64_t memory_for(const jpeg_t& jpeg) {
    return std::max(least_memory, size_product(jpeg.elements().size(), memory_per_byte));
}

const pack_t rows_of_four{false, 4};

struct source_t {
    /// The library hands back a pointer to it.
    jpeg_source_mgr base;
    const unsigned char* bytes;
    std::size_t size;
    bool handed_over;
    /// All scans are read before the first row comes out.
    bool has_many_scans;
    /// The file of many scans was cut.
    bool ended;
};

void do_nothing(j_decompress_ptr /*library*/) {}

void say_nothing(j_common_ptr /*library*/, int /*level*/) {}

/// An error here would leave a picture of many scans without a row. There the library is asked to wait, so
/// that it drops a table that was begun, and what it has by then becomes the picture.
boolean meet_end(j_decompress_ptr library, source_t& source) {
    if (!source.has_many_scans)
        ERREXIT(library, JERR_INPUT_EOF);
    source.ended = true;
    // The end has a message of its own; the library would tell of what is missing.
    library->err->emit_message = say_nothing;
    if (!library->arith_code)
        return FALSE;
    // The arithmetic decoder can not wait.
    static constexpr std::array<JOCTET, 2> end_mark{0xFF, JPEG_EOI};
    source.base.next_input_byte = end_mark.data();
    source.base.bytes_in_buffer = end_mark.size();
    return TRUE;
}

/// The first time there is the whole file; whoever comes again has met its end.
boolean hand_over(j_decompress_ptr library) {
    auto* const source = reinterpret_cast<source_t*>(library->src);
    if (source->handed_over || source->size == 0)
        return meet_end(library, *source);
    source->handed_over = true;
    source->base.next_input_byte = source->bytes;
    source->base.bytes_in_buffer = source->size;
    return TRUE;
}

void skip(j_decompress_ptr library, long count) {
    jpeg_source_mgr* const source = library->src;
    if (count <= 0)
        return;
    const std::size_t step = std::min(static_cast<std::size_t>(count), source->bytes_in_buffer);
    source->next_input_byte += step;
    source->bytes_in_buffer -= step;
}

void count_scans(j_common_ptr library) {
    if (reinterpret_cast<j_decompress_ptr>(library)->input_scan_number > most_scans)
        ERREXIT(library, JERR_BAD_PROGRESSION);
}

/// A decompressor over the bytes of a file. It is destroyed also when it was never created, all zero.
class decompressor_t {
  public:
    explicit decompressor_t(const jpeg_t& jpeg) : memory(static_cast<long>(memory_for(jpeg))) {
        const auto bytes = jpeg.elements();
        source.bytes = bytes.data();
        source.size = bytes.size();
        source.base.init_source = do_nothing;
        source.base.fill_input_buffer = hand_over;
        source.base.skip_input_data = skip;
        source.base.resync_to_restart = jpeg_resync_to_restart;
        source.base.term_source = do_nothing;
        progress.progress_monitor = count_scans;
        library.err = errors.prepare(jpeg.filename.c_str());
    }
    ~decompressor_t() { jpeg_destroy_decompress(&library); }
    decompressor_t(const decompressor_t&) = delete;
    decompressor_t& operator=(const decompressor_t&) = delete;

    jpeg_decompress_struct library{};
    jpeg_errors_t errors{};
    source_t source{};
    jpeg_progress_mgr progress{};
    long memory;
};

/// First stage: up to the size and the components. False after an error.
bool read_header(decompressor_t& decompressor) {
    jpeg_decompress_struct* const library = &decompressor.library;
    if (setjmp(decompressor.errors.way_out) != 0)
        return false;
    jpeg_create_decompress(library);
    library->src = &decompressor.source.base;
    library->progress = &decompressor.progress;
    library->mem->max_memory_to_use = decompressor.memory;
    jpeg_save_markers(library, JPEG_COM, longest_marker);
    for (int marker = first_application_marker; marker <= last_application_marker; ++marker)
        jpeg_save_markers(library, marker, longest_marker);
    jpeg_read_header(library, TRUE);
    decompressor.source.has_many_scans = jpeg_has_multiple_scans(library) != FALSE;
    return true;
}

/// Second stage: the pixels, the top row to `top_row` and each next one `line` bytes below it. False after an
/// error; what was decoded is in its place then.
bool read_rows(decompressor_t& decompressor, unsigned char* top_row, std::uint64_t line) {
    jpeg_decompress_struct* const library = &decompressor.library;
    if (setjmp(decompressor.errors.way_out) != 0)
        return false;
    if (jpeg_start_decompress(library) == FALSE) {
        library->unread_marker = JPEG_EOI;
        jpeg_start_decompress(library);
    }
    while (library->output_scanline < library->output_height) {
        JSAMPROW row = top_row - library->output_scanline * line;
        jpeg_read_scanlines(library, &row, 1);
    }
    if (decompressor.source.ended)
        ERREXIT(library, JERR_INPUT_EOF);
    jpeg_finish_decompress(library);
    return true;
}

bool copy_markers(jpeg_t& jpeg, const jpeg_decompress_struct& library) {
    jpeg.markers.clear();
    for (const jpeg_marker_struct* saved = library.marker_list;
         saved != nullptr && jpeg.markers.size() < most_markers; saved = saved->next) {
        jpeg_t::marker_t marker{saved->marker, {}};
        if (!fit_window(marker.bytes, saved->data_length))
            return false;
        if (saved->data_length != 0)
            std::memcpy(marker.bytes.begin(), saved->data, saved->data_length);
        jpeg.markers.push_back(marker);
    }
    return true;
}

/// The next multiple of `step`; 0 steps by nothing. All ones where there is none in 32 bits.
std::uint32_t round_up(std::uint32_t size, std::uint32_t step) {
    const std::uint64_t rounded =
        step == 0 ? size : (std::uint64_t{size} + step - 1) / step * std::uint64_t{step};
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(rounded, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace

bool load(jpeg_t& jpeg, const char* path) {
    jpeg.filename = path;
    return map_picture(path, jpeg);
}

bool decompress(image2d& image, jpeg_t& jpeg, std::uint32_t pad_x, std::uint32_t pad_y) {
    decompressor_t decompressor(jpeg);
    if (!read_header(decompressor)) {
        std::cerr << jpeg.filename << ": jpeg decompress fail, stop.\n";
        return false;
    }
    jpeg_decompress_struct& library = decompressor.library;
    image = {};
    image.width = round_up(library.image_width, pad_x);
    image.height = round_up(library.image_height, pad_y);
    image.pack = &rows_of_four;
    const jpeg_layout_t* const layout = find_jpeg_layout(library.out_color_space, library.num_components);
    if (layout == nullptr) {
        library.err->msg_code = JERR_CONVERSION_NOTIMPL;
        library.err->output_message(reinterpret_cast<j_common_ptr>(&library));
        return false;
    }
    image.format = layout->format;
    image.type = layout->type;
    image.bits = layout->bits;
    if (size_product(image.linesize(), image.height) > memory_for(jpeg) || !image.allocate() ||
        !copy_markers(jpeg, library))
        return false;
    if (!read_rows(decompressor, image.pixel(0, library.image_height - 1), image.linesize()))
        std::cerr << jpeg.filename << ": jpeg decompress fail, but continue.\n";
    return true;
}

bool load_jpeg(image2d& image, const char* path) {
    jpeg_t jpeg;
    return load(jpeg, path) && decompress(image, jpeg);
}

}  // namespace libutils
