#include "utils/pictures/image_files.h"

#include <array>
#include <iostream>

#include "utils/codecs/image_codecs.h"
#include "utils/pictures/image_transforms.h"
#include "utils/text/strings.h"

namespace libutils {
namespace {

constexpr int jpeg_quality = 95;

bool load_jpeg(image2d& image, const char* path) {
    jpeg_t jpeg;
    return load(jpeg, path) && decompress(image, jpeg);
}

bool save_jpeg(const image2d& image, const char* path) {
    jpeg_t jpeg;
    jpeg.filename = path;
    return compress(jpeg, image, jpeg_quality, true) && save(jpeg, path);
}

bool load_bmp(image2d& image, const char* path) {
    bmp_file_t bmp;
    return load(bmp, path) && convert(image, bmp);
}

/// Grey images too could be stored, but only what has its channels exchanged gets so far.
bool save_bmp(const image2d& image, const char* path) {
    image2d bgr;
    bmp_save_t bmp;
    return rgb2bgr(bgr, image) && convert(bmp, bgr) && save(bmp, path);
}

bool load_png(image2d& image, const char* path) {
    return read_png_image(image, path) == 0;
}

bool save_png(const image2d& image, const char* path) {
    return write_png_image(path, image, nullptr) == 0;
}

bool load_tga(image2d& image, const char* path) {
    tga_t tga;
    return load(tga, path) && convert(image, tga);
}

bool save_tga(const image2d& image, const char* path) {
    tga_t tga;
    return convert(tga, image) && save(tga, path);
}

struct file_form_t {
    const char* extension;
    bool (*load)(image2d& image, const char* path);
    bool (*save)(const image2d& image, const char* path);
};

constexpr std::array<file_form_t, 4> file_forms{{
    {".jpg", load_jpeg, save_jpeg},
    {".bmp", load_bmp, save_bmp},
    {".png", load_png, save_png},
    {".tga", load_tga, save_tga},
}};

const file_form_t* find_form(const char* path) {
    for (const file_form_t& form : file_forms)
        if (has_extension(path, form.extension) == 0)
            return &form;
    return nullptr;
}

}  // namespace

bool is_picture_path(const char* path) {
    return find_form(path) != nullptr;
}

bool autoloadformat(image2d& image, const char* path) {
    const file_form_t* const form = find_form(path);
    if (form == nullptr) {
        std::cerr << "autoloadformat load fail, fname=" << path << '\n';
        return false;
    }
    if (!form->load(image, path))
        return false;
    if (image.format != image_format::index)
        return true;
    image2d colours;
    if (!index2rgb(colours, image))
        return false;
    image = colours;
    return true;
}

bool autosaveformat(const image2d& image, const char* path) {
    const file_form_t* const form = find_form(path);
    if (form == nullptr) {
        // The saving side prints "load", too.
        std::cerr << "autosaveformat load fail, fname=" << path << '\n';
        return false;
    }
    return form->save(image, path);
}

}  // namespace libutils
