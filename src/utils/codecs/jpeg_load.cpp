#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <limits>
#include <utility>

#include "utils/codecs/jpeg_file.h"
#include "utils/codecs/jpeg_library.h"
#include "utils/files/picture_files.h"
#include "utils/memory/memory_budget.h"

// Behind the library's main header, whose structs it needs.
#include <jerror.h>

namespace libutils {
namespace {

constexpr int first_application_marker = JPEG_APP0;
constexpr int last_application_marker = JPEG_APP0 + 15;
constexpr unsigned int longest_marker = 65535;

/// The longest profile takes 255 markers. A file could have millions of empty ones: each would take up a page
/// of memory, and the library walks over all that it has saved before it appends the next one.
constexpr std::size_t most_markers = 4096;

/// Hundreds of scans over a large picture, in a file of some kilobytes, are made to keep a program busy;
/// progressive pictures have about ten.
constexpr int most_scans = 500;

/// Each scan goes over all pixels, though no more than a few bytes of the file need to belong to it.
constexpr std::uint64_t least_scanned_pixels = std::uint64_t{1} << 30;
constexpr std::uint64_t scanned_pixels_per_byte = 4096;

std::uint64_t scanned_pixels_for(const jpeg_t& jpeg) {
    return std::max(least_scanned_pixels, size_product(jpeg.elements().size(), scanned_pixels_per_byte));
}

/// What a picture may take, and so may the coefficients that the library keeps of a progressive one. No byte
/// of a file makes 2048 bytes, since a block of 64 pixels takes up one bit at least; up to this floor a
/// picture may be a part of a longer file that was cut.
constexpr std::uint64_t least_memory = std::uint64_t{64} << 20;
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
    bool header_is_read;
    /// All scans are read before the first row comes out.
    bool has_many_scans;
    /// The file was cut behind its header.
    bool ended;
};

source_t& source_of(j_decompress_ptr library) {
    return *reinterpret_cast<source_t*>(library->src);
}

void do_nothing(j_decompress_ptr /*library*/) {}

void say_nothing(j_common_ptr /*library*/, int /*level*/) {}

/// Behind the end of a file with one scan: silent until pixels are missing, which is an error.
void miss_pixels(j_common_ptr library, int level) {
    if (level < 0 && library->err->msg_code == JWRN_HIT_MARKER)
        ERREXIT(library, JERR_INPUT_EOF);
}

void hand_over_end_mark(source_t& source) {
    static constexpr std::array<JOCTET, 2> end_mark{0xFF, JPEG_EOI};
    source.base.next_input_byte = end_mark.data();
    source.base.bytes_in_buffer = end_mark.size();
}

/// The decoder reads ahead: it comes here also when the bits of the last pixels are all there, as in a file
/// that lacks its end mark only. With the mark it goes on until bits are missing. The arithmetic decoder
/// never misses any, it makes them up.
boolean meet_end_of_one_scan(j_decompress_ptr library, source_t& source) {
    if (library->arith_code)
        ERREXIT(library, JERR_INPUT_EOF);
    library->err->emit_message = miss_pixels;
    hand_over_end_mark(source);
    return TRUE;
}

/// An error here would leave a picture of many scans without a row. What the library has by now becomes the
/// picture. Among markers it is asked to wait, so that it drops a table that was begun.
boolean meet_end_of_many_scans(j_decompress_ptr library, source_t& source) {
    // The end has a message of its own; the library would tell of what is missing.
    library->err->emit_message = say_nothing;
    const bool reads_marker = library->unread_marker != 0;
    if (reads_marker)
        return FALSE;
    hand_over_end_mark(source);
    return TRUE;
}

boolean meet_end(j_decompress_ptr library, source_t& source) {
    if (!source.header_is_read)
        ERREXIT(library, JERR_INPUT_EOF);
    source.ended = true;
    return source.has_many_scans ? meet_end_of_many_scans(library, source)
                                 : meet_end_of_one_scan(library, source);
}

/// The first time there is the whole file; whoever comes again has met its end.
boolean hand_over(j_decompress_ptr library) {
    source_t& source = source_of(library);
    if (source.handed_over || source.size == 0)
        return meet_end(library, source);
    source.handed_over = true;
    source.base.next_input_byte = source.bytes;
    source.base.bytes_in_buffer = source.size;
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

struct progress_t {
    /// The library hands back a pointer to it.
    jpeg_progress_mgr base;
    std::uint64_t most_scanned_pixels;
};

/// What comes behind the last scan that is looked at counts as missing.
void limit_scans(j_common_ptr common) {
    auto* const library = reinterpret_cast<j_decompress_ptr>(common);
    const auto* const progress = reinterpret_cast<const progress_t*>(library->progress);
    const std::uint64_t pixels = std::uint64_t{library->image_width} * library->image_height;
    const auto scans = static_cast<std::uint64_t>(library->input_scan_number);
    if (scans > most_scans || (scans > 1 && size_product(scans, pixels) > progress->most_scanned_pixels))
        library->src->bytes_in_buffer = 0;
}

/// Up to `length` bytes of each comment and of all application data; with 0 the library looks for its own
/// markers and keeps none.
void save_markers(j_decompress_ptr library, unsigned int length) {
    jpeg_save_markers(library, JPEG_COM, length);
    for (int marker = first_application_marker; marker <= last_application_marker; ++marker)
        jpeg_save_markers(library, marker, length);
}

struct errors_t {
    /// The library hands back a pointer to it.
    jpeg_errors_t base;
    void (*emit_message)(j_common_ptr library, int level);
    jpeg_marker_struct* const* next_marker;
    std::size_t markers;
};

/// The library has a message for each marker that it has saved, at a level that is not shown.
void limit_markers(j_common_ptr common, int level) {
    auto* const library = reinterpret_cast<j_decompress_ptr>(common);
    auto* const errors = reinterpret_cast<errors_t*>(library->err);
    for (; *errors->next_marker != nullptr; errors->next_marker = &(*errors->next_marker)->next)
        if (++errors->markers == most_markers)
            save_markers(library, 0);
    errors->emit_message(common, level);
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
        progress.base.progress_monitor = limit_scans;
        progress.most_scanned_pixels = scanned_pixels_for(jpeg);
        library.err = errors.base.prepare(jpeg.filename.c_str());
        errors.emit_message = std::exchange(library.err->emit_message, limit_markers);
        errors.next_marker = &library.marker_list;
    }
    ~decompressor_t() { jpeg_destroy_decompress(&library); }
    decompressor_t(const decompressor_t&) = delete;
    decompressor_t& operator=(const decompressor_t&) = delete;

    jpeg_decompress_struct library{};
    errors_t errors{};
    source_t source{};
    progress_t progress{};
    long memory;
};

/// First stage: up to the size and the components. False after an error.
bool read_header(decompressor_t& decompressor) {
    jpeg_decompress_struct* const library = &decompressor.library;
    if (setjmp(decompressor.errors.base.way_out) != 0)
        return false;
    jpeg_create_decompress(library);
    library->src = &decompressor.source.base;
    library->progress = &decompressor.progress.base;
    library->mem->max_memory_to_use = decompressor.memory;
    save_markers(library, longest_marker);
    jpeg_read_header(library, TRUE);
    // Markers among the pixels have no place in the record.
    save_markers(library, 0);
    decompressor.source.header_is_read = true;
    decompressor.source.has_many_scans = jpeg_has_multiple_scans(library) != FALSE;
    return true;
}

/// What the library keeps of a picture in many scans until its last row is out: a coefficient of two bytes
/// for each pixel of each component.
std::uint64_t coefficient_bytes(const decompressor_t& decompressor) {
    std::uint64_t sum = 0;
    if (!decompressor.source.has_many_scans)
        return sum;
    const jpeg_decompress_struct& library = decompressor.library;
    for (int i = 0; i < library.num_components; ++i) {
        const jpeg_component_info& component = library.comp_info[i];
        const std::uint64_t blocks = size_product(component.width_in_blocks, component.height_in_blocks);
        sum = size_sum(sum, size_product(blocks, sizeof(JBLOCK)));
    }
    return sum;
}

/// Second stage: the pixels, the top row to `top_row` and each next one `line` bytes below it. False after an
/// error; what was decoded is in its place then.
bool read_rows(decompressor_t& decompressor, unsigned char* top_row, std::uint64_t line) {
    jpeg_decompress_struct* const library = &decompressor.library;
    if (setjmp(decompressor.errors.base.way_out) != 0)
        return false;
    if (jpeg_start_decompress(library) == FALSE) {
        library->unread_marker = JPEG_EOI;
        jpeg_start_decompress(library);
    }
    while (library->output_scanline < library->output_height) {
        JSAMPROW row = top_row - library->output_scanline * line;
        jpeg_read_scanlines(library, &row, 1);
    }
    jpeg_finish_decompress(library);
    if (decompressor.source.ended)
        ERREXIT(library, JERR_INPUT_EOF);
    return true;
}

bool copy_markers(jpeg_t& jpeg, const jpeg_decompress_struct& library) {
    jpeg.markers.clear();
    for (const jpeg_marker_struct* saved = library.marker_list; saved != nullptr; saved = saved->next) {
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
    const std::uint64_t bytes = size_product(image.linesize(), image.height);
    if (bytes > memory_for(jpeg) || !fits_into_memory(size_sum(bytes, coefficient_bytes(decompressor))) ||
        !image.allocate() || !copy_markers(jpeg, library))
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
