#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/captured_stream.h"
#include "support/format_cases.h"

namespace libgr {
namespace {

using libutils::image2d;
using ulk_test::captured_stream;
using ulk_test::format_case_t;
using ulk_test::format_cases;
using ulk_test::rgba_float_t;

constexpr std::size_t side = 4;
constexpr std::size_t pixel_count = side * side;

// --- what the bytes of a pixel mean -----------------------------------------------------------------------

struct channels_t {
    std::vector<double> values;  ///< in the order in which they lie in memory
};

template <class T>
T read_number(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

/// Channels of an integer of so many bits each, the first one lowest.
std::vector<double> unpacked(std::uint32_t word, std::initializer_list<int> widths) {
    std::vector<double> values;
    for (const int width : widths) {
        const std::uint32_t most = (1U << static_cast<unsigned>(width)) - 1U;
        values.push_back(static_cast<double>(word & most) / most);
        word >>= static_cast<unsigned>(width);
    }
    return values;
}

double half_value(std::uint16_t half) {
    const int exponent = (half >> 10) & 31;
    const double mantissa = (half & 1023) / 1024.0;
    const double size = exponent == 0 ? std::ldexp(mantissa, -14) : std::ldexp(1 + mantissa, exponent - 15);
    return (half & 0x8000) != 0 ? -size : size;
}

/// Value and bytes of one channel.
std::pair<double, std::size_t> channel(GLenum type, const std::uint8_t* bytes) {
    switch (type) {
        case GL_BYTE:
            return {std::max(read_number<std::int8_t>(bytes) / 127.0, -1.0), 1};
        case GL_UNSIGNED_BYTE:
            return {*bytes / 255.0, 1};
        case GL_SHORT:
            return {std::max(read_number<std::int16_t>(bytes) / 32767.0, -1.0), 2};
        case GL_UNSIGNED_SHORT:
            return {read_number<std::uint16_t>(bytes) / 65535.0, 2};
        case GL_INT:
            return {std::max(read_number<std::int32_t>(bytes) / 2147483647.0, -1.0), 4};
        case GL_UNSIGNED_INT:
            return {read_number<std::uint32_t>(bytes) / 4294967295.0, 4};
        case GL_HALF_FLOAT:
            return {half_value(read_number<std::uint16_t>(bytes)), 2};
        case GL_FLOAT:
            return {static_cast<double>(read_number<float>(bytes)), 4};
        default:
            ADD_FAILURE() << "type " << type;
            return {0, 1};
    }
}

std::vector<double> pixel_channels(GLenum type, const std::uint8_t* bytes, std::size_t count) {
    switch (type) {
        case GL_UNSIGNED_BYTE_2_3_3_REV:
            return unpacked(*bytes, {3, 3, 2});
        case GL_UNSIGNED_SHORT_5_6_5_REV:
            return unpacked(read_number<std::uint16_t>(bytes), {5, 6, 5});
        case GL_UNSIGNED_SHORT_4_4_4_4_REV:
            return unpacked(read_number<std::uint16_t>(bytes), {4, 4, 4, 4});
        case GL_UNSIGNED_SHORT_1_5_5_5_REV:
            return unpacked(read_number<std::uint16_t>(bytes), {5, 5, 5, 1});
        case GL_UNSIGNED_INT_2_10_10_10_REV:
            return unpacked(read_number<std::uint32_t>(bytes), {10, 10, 10, 2});
        default:
            break;
    }
    std::vector<double> values;
    for (std::size_t i = 0; i < count; ++i) {
        const auto [value, size] = channel(type, bytes);
        values.push_back(value);
        bytes += size;
    }
    return values;
}

std::size_t channel_count(GLenum format) {
    switch (format) {
        case GL_LUMINANCE_ALPHA:
            return 2;
        case GL_RGB:
        case GL_BGR:
            return 3;
        case GL_RGBA:
        case GL_BGRA:
            return 4;
        default:
            return 1;
    }
}

/// What a shader should see of channels in a format.
rgba_float_t meaning(GLenum format, const std::vector<double>& c) {
    const auto rgba = [](double r, double g, double b, double a) {
        return rgba_float_t{static_cast<float>(r), static_cast<float>(g), static_cast<float>(b),
                            static_cast<float>(a)};
    };
    switch (format) {
        case GL_LUMINANCE:
            return rgba(c[0], c[0], c[0], 1);
        case GL_LUMINANCE_ALPHA:
            return rgba(c[0], c[0], c[0], c[1]);
        case GL_INTENSITY:
            return rgba(c[0], c[0], c[0], c[0]);
        case GL_RED:
            return rgba(c[0], 0, 0, 1);
        case GL_ALPHA:
            return rgba(0, 0, 0, c[0]);
        case GL_RGB:
            return rgba(c[0], c[1], c[2], 1);
        case GL_BGR:
            return rgba(c[2], c[1], c[0], 1);
        case GL_RGBA:
            return rgba(c[0], c[1], c[2], c[3]);
        case GL_BGRA:
            return rgba(c[2], c[1], c[0], c[3]);
        default:
            ADD_FAILURE() << "format " << format;
            return {};
    }
}

// --- the cells --------------------------------------------------------------------------------------------

/// Cells with which no GL makes a texture.
bool is_refused(const format_case_t& row) {
    const gl_triple_t& triple = row.triple;
    const bool is_integer_storage = row.format == 3 && row.type < 2 && row.bits != 0;
    const bool is_no_storage = row.format == 4 || row.format == 5;
    const bool is_no_type = row.format == 12;
    const bool is_bitmap = triple.type == GL_BITMAP && row.format != 0 && row.format != 17;
    const bool is_packed_bgr = row.format == 10 && (row.bits == 9 || row.bits == 10);
    return is_integer_storage || is_no_storage || is_no_type || is_bitmap || is_packed_bgr;
}

bool is_float(const format_case_t& row) {
    return row.type == 2;
}

/// Signed colours are normals, and keep their signs.
bool keeps_sign(const format_case_t& row) {
    const bool is_color = channel_count(row.triple.format) >= 3;
    return is_float(row) || (is_color && row.type == 0 && (row.bits == 3 || row.bits == 5));
}

/// Half a step of the coarsest channel that the storage may have.
float tolerance(const format_case_t& row) {
    switch (row.triple.internal_format) {
        case GL_R3_G3_B2:
            return 0.51F / 3;
        case GL_RGB4:
        case GL_RGBA4:
        case GL_LUMINANCE4:
        case GL_LUMINANCE4_ALPHA4:
        case GL_INTENSITY4:
        case GL_ALPHA4:
            return 0.51F / 15;
        case GL_RGB5:
        case GL_RGB5_A1:
            return 0.51F / 31;
        default:
            return is_float(row) ? 1e-6F : 1.01F / 255;
    }
}

/// Bytes of a 4 by 4 image, none a not-a-number in any type; more than any type needs.
ulk_test::bytes_t test_bytes(const format_case_t& row) {
    ulk_test::bytes_t bytes(pixel_count * 16);
    if (row.triple.type == GL_FLOAT) {
        for (std::size_t i = 0; i < bytes.size() / 4; ++i) {
            const float value = static_cast<float>(i) * 0.37F - 5;
            std::memcpy(bytes.data() + i * 4, &value, 4);
        }
    } else {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>(i * 37 + i / 16 * 11 + 5);
        if (row.triple.type == GL_HALF_FLOAT)
            for (std::size_t i = 1; i < bytes.size(); i += 2)
                bytes[i] &= 0xBFU;  // no infinite exponent
    }
    return bytes;
}

image2d test_image(const format_case_t& row, const ulk_test::bytes_t& bytes) {
    image2d image;
    image.format = row.format;
    image.type = row.type;
    image.bits = row.bits;
    image.width = side;
    image.height = side;
    EXPECT_TRUE(image.allocate(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), image.begin());
    return image;
}

class FormatUpload : public ulk_test::texture_test, public testing::WithParamInterface<format_case_t> {};

void expect_texels(const format_case_t& row, const ulk_test::bytes_t& bytes,
                   const std::vector<rgba_float_t>& texels) {
    ASSERT_EQ(texels.size(), pixel_count);
    const std::size_t count = channel_count(row.triple.format);
    std::size_t pixel_bytes = 0;
    switch (row.triple.type) {
        case GL_UNSIGNED_BYTE_2_3_3_REV:
            pixel_bytes = 1;
            break;
        case GL_UNSIGNED_SHORT_5_6_5_REV:
        case GL_UNSIGNED_SHORT_4_4_4_4_REV:
        case GL_UNSIGNED_SHORT_1_5_5_5_REV:
            pixel_bytes = 2;
            break;
        case GL_UNSIGNED_INT_2_10_10_10_REV:
            pixel_bytes = 4;
            break;
        default:
            pixel_bytes = count * channel(row.triple.type, bytes.data()).second;
    }
    const bool drops_alpha = row.triple.internal_format == GL_RGB4 && count == 4;
    for (std::size_t i = 0; i < pixel_count; ++i) {
        rgba_float_t expected = meaning(
            row.triple.format, pixel_channels(row.triple.type, bytes.data() + i * pixel_bytes, count));
        if (drops_alpha)
            expected[3] = 1;
        for (std::size_t c = 0; c < 4; ++c) {
            const float clamped = keeps_sign(row) ? expected[c] : std::clamp(expected[c], 0.0F, 1.0F);
            EXPECT_NEAR(texels[i][c], clamped, tolerance(row)) << "pixel " << i << ", channel " << c;
        }
    }
}

TEST_P(FormatUpload, ShowsWhatTheBytesMeanOrIsRefusedByGL) {
    const format_case_t& row = GetParam();
    bind_fresh(GL_TEXTURE_2D);
    const ulk_test::bytes_t bytes = test_bytes(row);
    grTexture2D texture;
    texture.set_level(test_image(row, bytes), 0, 0);
    const captured_stream errors(std::cerr);
    texture.Load();
    if (is_refused(row)) {
        EXPECT_EQ(errors.text().rfind("after-teximage2d(not-mipmap): Error 128", 0), 0U) << errors.text();
        return;
    }
    EXPECT_EQ(errors.text(), "");
    expect_texels(row, bytes, ulk_test::shown_texels());
}

std::string cell_name(const testing::TestParamInfo<format_case_t>& info) {
    const format_case_t& row = info.param;
    return "F" + std::to_string(row.format) + "T" + std::to_string(row.type) + "B" + std::to_string(row.bits);
}

/// All but those of pixels that share a byte and of palettes, which have tests of their own.
std::vector<format_case_t> plain_cases() {
    std::vector<format_case_t> cases;
    for (const format_case_t& row : format_cases)
        if (row.format != 17 && !(row.format == 0 && row.type == 1 && (row.bits == 0 || row.bits == 2)))
            cases.push_back(row);
    return cases;
}

INSTANTIATE_TEST_SUITE_P(All, FormatUpload, testing::ValuesIn(plain_cases()), cell_name);

}  // namespace
}  // namespace libgr
