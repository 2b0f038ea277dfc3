#include <sys/stat.h>
#include <unistd.h>

#include "utils/codecs/jpeg_file.h"
#include "utils/codecs/jpeg_library.h"
#include "utils/files/output_file.h"
#include "utils/memory/try_allocate.h"

// Behind the library's main header, whose structs it needs.
#include <jerror.h>

namespace libutils {
namespace {

/// The bytes that the record gets at the start, and more of whenever they are full.
constexpr std::uint64_t buffer_step = 8388608;

struct destination_t {
    /// The library hands back a pointer to it.
    jpeg_destination_mgr base;
    jpeg_t* jpeg;
};

destination_t& destination_of(j_compress_ptr library) {
    return *reinterpret_cast<destination_t*>(library->dest);
}

/// Lets the library write from byte `start` of the record on.
void offer(destination_t& destination, std::uint64_t start) {
    destination.base.next_output_byte = destination.jpeg->begin() + start;
    destination.base.free_in_buffer = destination.jpeg->size() - start;
}

void begin_buffer(j_compress_ptr library) {
    destination_t& destination = destination_of(library);
    if (!try_allocate([&] { return fit_window(*destination.jpeg, buffer_step); }))
        ERREXIT1(library, JERR_OUT_OF_MEMORY, 0);
    offer(destination, 0);
}

boolean grow_buffer(j_compress_ptr library) {
    destination_t& destination = destination_of(library);
    const std::uint64_t full = destination.jpeg->size();
    if (!try_allocate([&] { return destination.jpeg->reallocate(full + buffer_step); }))
        ERREXIT1(library, JERR_OUT_OF_MEMORY, 1);
    offer(destination, full);
    return TRUE;
}

void cut_buffer(j_compress_ptr library) {
    destination_t& destination = destination_of(library);
    destination.jpeg->reallocate(destination.jpeg->size() - destination.base.free_in_buffer);
}

/// A compressor into a record. It is destroyed also when it was never created, all zero.
class compressor_t {
  public:
    explicit compressor_t(jpeg_t& jpeg) {
        destination.base.init_destination = begin_buffer;
        destination.base.empty_output_buffer = grow_buffer;
        destination.base.term_destination = cut_buffer;
        destination.jpeg = &jpeg;
        library.err = errors.prepare(jpeg.filename.c_str());
    }
    ~compressor_t() { jpeg_destroy_compress(&library); }
    compressor_t(const compressor_t&) = delete;
    compressor_t& operator=(const compressor_t&) = delete;

    jpeg_compress_struct library{};
    jpeg_errors_t errors{};
    destination_t destination{};
};

void write_markers(j_compress_ptr library, const jpeg_t& jpeg) {
    for (const jpeg_t::marker_t& marker : jpeg.markers) {
        const auto bytes = marker.bytes.elements();
        jpeg_write_marker(library, marker.code, bytes.data(), static_cast<unsigned int>(bytes.size()));
    }
}

void write_rows(j_compress_ptr library, const image2d& image) {
    while (library->next_scanline < library->image_height) {
        // The library's type for rows has no const.
        auto* row = const_cast<JSAMPROW>(image.pixel(0, image.height - 1 - library->next_scanline));
        jpeg_write_scanlines(library, &row, 1);
    }
}

/// False after an error of the library.
bool encode(compressor_t& compressor, const image2d& image, const jpeg_layout_t& layout, int quality,
            bool force_baseline) {
    jpeg_compress_struct* const library = &compressor.library;
    if (setjmp(compressor.errors.way_out) != 0)
        return false;
    jpeg_create_compress(library);
    library->dest = &compressor.destination.base;
    library->image_width = image.width;
    library->image_height = image.height;
    library->input_components = layout.components;
    library->in_color_space = layout.colour_space;
    jpeg_set_defaults(library);
    jpeg_set_quality(library, quality, force_baseline ? TRUE : FALSE);
    jpeg_start_compress(library, TRUE);
    write_markers(library, *compressor.destination.jpeg);
    write_rows(library, image);
    jpeg_finish_compress(library);
    return true;
}

/// A file with several names lives on under the others, for who has it mapped.
void leave_to_other_names(const char* path) {
    struct stat status {};
    if (::lstat(path, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink > 1)
        ::unlink(path);
}

}  // namespace

bool compress(jpeg_t& jpeg, const image2d& image, int quality, bool force_baseline) {
    const jpeg_layout_t* const layout = find_jpeg_layout(image);
    bool done = false;
    if (layout != nullptr && !image.compressed && image.holds_pixels()) {
        compressor_t compressor(jpeg);
        done = encode(compressor, image, *layout, quality, force_baseline);
    }
    if (!done)
        jpeg.deallocate();
    return done;
}

bool save(const jpeg_t& jpeg, const char* path) {
    const auto bytes = jpeg.elements();
    if (bytes.empty())
        return false;
    leave_to_other_names(path);
    output_file file(path, fifo_t::refuse);
    file.write(bytes.data(), bytes.size());
    return file.complete();
}

bool save_jpeg(const image2d& image, const char* path) {
    constexpr int quality = 95;
    jpeg_t jpeg;
    jpeg.filename = path;
    return compress(jpeg, image, quality, true) && save(jpeg, path);
}

}  // namespace libutils
