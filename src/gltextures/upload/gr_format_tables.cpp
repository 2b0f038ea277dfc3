#include "gltextures/upload/gr_format.h"

namespace libgr {

namespace {

constexpr std::uint32_t s = 0;  // signed
constexpr std::uint32_t u = 1;  // unsigned
constexpr std::uint32_t f = 2;  // floating point

constexpr format_cell_t luminance_cells[] = {
    {s, 2, GL_LUMINANCE4, GL_BYTE},
    {s, 3, GL_LUMINANCE8, GL_BYTE},
    {s, 4, GL_LUMINANCE12, GL_SHORT},
    {s, 5, GL_LUMINANCE16, GL_SHORT},
    {s, 7, GL_LUMINANCE, GL_INT},
    {u, 0, GL_LUMINANCE, GL_BITMAP},
    {u, 2, GL_LUMINANCE4, GL_UNSIGNED_BYTE},
    {u, 3, GL_LUMINANCE8, GL_UNSIGNED_BYTE},
    {u, 5, GL_LUMINANCE16, GL_UNSIGNED_SHORT},
    {u, 7, GL_LUMINANCE, GL_UNSIGNED_INT},
    {f, 5, GL_LUMINANCE16F_ARB, GL_HALF_FLOAT},
    {f, 7, GL_LUMINANCE32F_ARB, GL_FLOAT},
};

constexpr format_cell_t luminance_alpha_cells[] = {
    {s, 2, GL_LUMINANCE4_ALPHA4, GL_BYTE},
    {s, 13, GL_LUMINANCE6_ALPHA2, GL_BYTE},
    {s, 3, GL_LUMINANCE8_ALPHA8, GL_BYTE},
    {s, 14, GL_LUMINANCE12_ALPHA4, GL_SHORT},
    {s, 5, GL_LUMINANCE16_ALPHA16, GL_SHORT},
    {s, 7, GL_LUMINANCE_ALPHA, GL_INT},
    {u, 0, GL_LUMINANCE_ALPHA, GL_BITMAP},
    {u, 2, GL_LUMINANCE4_ALPHA4, GL_UNSIGNED_BYTE},
    {u, 13, GL_LUMINANCE6_ALPHA2, GL_UNSIGNED_BYTE},
    {u, 3, GL_LUMINANCE8_ALPHA8, GL_UNSIGNED_BYTE},
    {u, 14, GL_LUMINANCE12_ALPHA4, GL_BITMAP},
    {u, 4, GL_LUMINANCE12_ALPHA12, GL_UNSIGNED_SHORT},
    {u, 5, GL_LUMINANCE16_ALPHA16, GL_UNSIGNED_SHORT},
    {u, 6, GL_LUMINANCE_ALPHA, GL_UNSIGNED_INT},
    {u, 7, GL_LUMINANCE_ALPHA, GL_UNSIGNED_INT},
    {f, 5, GL_LUMINANCE_ALPHA16F_ARB, GL_HALF_FLOAT},
    {f, 7, GL_LUMINANCE_ALPHA32F_ARB, GL_FLOAT},
};

constexpr format_cell_t intensity_cells[] = {
    {s, 2, GL_INTENSITY4, GL_BYTE},
    {s, 3, GL_INTENSITY8, GL_BYTE},
    {s, 5, GL_INTENSITY16, GL_SHORT},
    {s, 7, GL_INTENSITY, GL_INT},
    {u, 0, GL_INTENSITY, GL_BITMAP},
    {u, 2, GL_INTENSITY4, GL_UNSIGNED_BYTE},
    {u, 3, GL_INTENSITY8, GL_UNSIGNED_BYTE},
    {u, 4, GL_INTENSITY12, GL_UNSIGNED_SHORT},
    {u, 5, GL_INTENSITY16, GL_UNSIGNED_SHORT},
    {u, 7, GL_INTENSITY, GL_UNSIGNED_INT},
    {f, 5, GL_INTENSITY16F_ARB, GL_HALF_FLOAT},
    {f, 7, GL_INTENSITY32F_ARB, GL_FLOAT},
};

constexpr format_cell_t red_cells[] = {
    {s, 3, GL_R8I, GL_BYTE},           {s, 5, GL_R16I, GL_SHORT},         {s, 7, GL_R32I, GL_INT},
    {u, 0, GL_RED, GL_BITMAP},         {u, 3, GL_R8UI, GL_UNSIGNED_BYTE}, {u, 5, GL_R16UI, GL_UNSIGNED_SHORT},
    {u, 7, GL_R32UI, GL_UNSIGNED_INT}, {f, 5, GL_R16F, GL_HALF_FLOAT},    {f, 7, GL_R32F, GL_FLOAT},
};

constexpr format_cell_t green_cells[] = {
    {s, 3, GL_GREEN, GL_BYTE},          {s, 5, GL_GREEN, GL_SHORT},
    {s, 7, GL_GREEN, GL_INT},           {u, 0, GL_GREEN, GL_BITMAP},
    {u, 3, GL_GREEN, GL_UNSIGNED_BYTE}, {u, 5, GL_GREEN, GL_UNSIGNED_SHORT},
    {u, 7, GL_GREEN, GL_UNSIGNED_INT},  {f, 5, GL_GREEN, GL_HALF_FLOAT},
    {f, 7, GL_GREEN, GL_FLOAT},
};

constexpr format_cell_t blue_cells[] = {
    {s, 3, GL_BLUE, GL_BYTE},         {s, 5, GL_BLUE, GL_SHORT},         {s, 7, GL_BLUE, GL_INT},
    {u, 0, GL_BLUE, GL_BITMAP},       {u, 3, GL_BLUE, GL_UNSIGNED_BYTE}, {u, 5, GL_BLUE, GL_UNSIGNED_SHORT},
    {u, 7, GL_BLUE, GL_UNSIGNED_INT}, {f, 5, GL_BLUE, GL_HALF_FLOAT},    {f, 7, GL_BLUE, GL_FLOAT},
};

constexpr format_cell_t alpha_cells[] = {
    {s, 2, GL_ALPHA4, GL_BYTE},
    {s, 3, GL_ALPHA, GL_BYTE},
    {s, 4, GL_ALPHA12, GL_SHORT},
    {s, 5, GL_ALPHA16, GL_SHORT},
    {s, 7, GL_ALPHA, GL_INT},
    {u, 0, GL_ALPHA, GL_BITMAP},
    {u, 2, GL_ALPHA4, GL_UNSIGNED_BYTE},
    {u, 3, GL_ALPHA, GL_UNSIGNED_BYTE},
    {u, 4, GL_ALPHA12, GL_UNSIGNED_SHORT},
    {u, 5, GL_ALPHA16, GL_UNSIGNED_SHORT},
    {u, 7, GL_ALPHA, GL_UNSIGNED_INT},
    {f, 5, GL_ALPHA16F_ARB, GL_HALF_FLOAT},
    {f, 7, GL_ALPHA32F_ARB, GL_FLOAT},
};

constexpr format_cell_t rgb_cells[] = {
    {s, 9, GL_R3_G3_B2, GL_UNSIGNED_BYTE_2_3_3_REV},
    {s, 2, GL_RGB4, GL_BYTE},
    {s, 10, GL_RGB5, GL_UNSIGNED_SHORT_5_6_5_REV},
    {s, 3, GL_RGB8, GL_BYTE},
    {s, 4, GL_RGB12, GL_SHORT},
    {s, 5, GL_RGB16, GL_SHORT},
    {s, 7, GL_RGB, GL_INT},
    {u, 0, GL_RGB, GL_BITMAP},
    {u, 9, GL_R3_G3_B2, GL_UNSIGNED_BYTE_2_3_3_REV},
    {u, 2, GL_RGB4, GL_UNSIGNED_BYTE},
    {u, 10, GL_RGB5, GL_UNSIGNED_SHORT_5_6_5_REV},
    {u, 3, GL_RGB8, GL_UNSIGNED_BYTE},
    {u, 4, GL_RGB12, GL_UNSIGNED_SHORT},
    {u, 5, GL_RGB16, GL_UNSIGNED_SHORT},
    {u, 7, GL_RGB, GL_UNSIGNED_INT},
    {f, 5, GL_RGB16F, GL_HALF_FLOAT},
    {f, 7, GL_RGB32F, GL_FLOAT},
};

constexpr format_cell_t rgba_cells[] = {
    {s, 2, GL_RGBA4, GL_UNSIGNED_SHORT_4_4_4_4_REV},
    {s, 11, GL_RGB5_A1, GL_UNSIGNED_SHORT_1_5_5_5_REV},
    {s, 12, GL_RGB10_A2, GL_UNSIGNED_INT_2_10_10_10_REV},
    {s, 3, GL_RGBA8, GL_BYTE},
    {s, 4, GL_RGBA12, GL_SHORT},
    {s, 5, GL_RGBA16, GL_SHORT},
    {s, 7, GL_RGBA, GL_INT},
    {u, 0, GL_RGBA, GL_BITMAP},
    {u, 2, GL_RGBA4, GL_UNSIGNED_SHORT_4_4_4_4_REV},
    {u, 11, GL_RGB5_A1, GL_UNSIGNED_SHORT_1_5_5_5_REV},
    {u, 12, GL_RGB10_A2, GL_UNSIGNED_INT_2_10_10_10_REV},
    {u, 3, GL_RGBA8, GL_UNSIGNED_BYTE},
    {u, 4, GL_RGBA12, GL_UNSIGNED_SHORT},
    {u, 5, GL_RGBA16, GL_UNSIGNED_SHORT},
    {u, 7, GL_RGBA, GL_UNSIGNED_INT},
    {f, 5, GL_RGBA16F, GL_HALF_FLOAT},
    {f, 7, GL_RGBA32F, GL_FLOAT},
};

constexpr format_cell_t bgr_cells[] = {
    {s, 3, GL_RGB, GL_BYTE},
    {s, 9, GL_R3_G3_B2, GL_UNSIGNED_BYTE_2_3_3_REV},
    {s, 10, GL_RGB5, GL_UNSIGNED_SHORT_5_6_5_REV},
    {u, 3, GL_RGB, GL_UNSIGNED_BYTE},
    {u, 9, GL_R3_G3_B2, GL_UNSIGNED_BYTE_2_3_3_REV},
    {u, 10, GL_RGB5, GL_UNSIGNED_SHORT_5_6_5_REV},
};

constexpr format_cell_t bgra_cells[] = {
    {s, 3, GL_RGBA, GL_BYTE},
    {s, 11, GL_RGB5_A1, GL_UNSIGNED_SHORT_1_5_5_5_REV},
    {s, 2, GL_RGB4, GL_UNSIGNED_SHORT_4_4_4_4_REV},
    {s, 12, GL_RGB10_A2, GL_UNSIGNED_INT_2_10_10_10_REV},
    {u, 3, GL_RGBA, GL_UNSIGNED_BYTE},
    {u, 11, GL_RGB5_A1, GL_UNSIGNED_SHORT_1_5_5_5_REV},
    {u, 2, GL_RGB4, GL_UNSIGNED_SHORT_4_4_4_4_REV},
    {u, 12, GL_RGB10_A2, GL_UNSIGNED_INT_2_10_10_10_REV},
};

// GL_DEPTH_COMPONENT is no type: GL refuses these three at the upload.
constexpr format_cell_t depth_cells[] = {
    {f, 5, GL_DEPTH_COMPONENT16, GL_DEPTH_COMPONENT},
    {f, 6, GL_DEPTH_COMPONENT24, GL_DEPTH_COMPONENT},
    {f, 7, GL_DEPTH_COMPONENT32, GL_DEPTH_COMPONENT},
};

constexpr format_cell_t index_cells[] = {
    {u, 0, GL_COLOR_INDEX, GL_BITMAP},
    {u, 3, GL_COLOR_INDEX, GL_UNSIGNED_BYTE},
};

constexpr format_row_t rows[] = {
    {0, GL_LUMINANCE, luminance_cells},
    {1, GL_LUMINANCE_ALPHA, luminance_alpha_cells},
    {2, GL_INTENSITY, intensity_cells},
    {3, GL_RED, red_cells},
    {4, GL_GREEN, green_cells},
    {5, GL_BLUE, blue_cells},
    {6, GL_ALPHA, alpha_cells},
    {8, GL_RGB, rgb_cells},
    {9, GL_RGBA, rgba_cells},
    {10, GL_BGR, bgr_cells},
    {11, GL_BGRA, bgra_cells},
    {12, GL_DEPTH_COMPONENT, depth_cells},
    {14, GL_RGB, rgb_cells},
    {15, GL_RGBA, rgba_cells},
    {16, GL_RGB, {}},
    {17, GL_COLOR_INDEX, index_cells},
};

}  // namespace

std::span<const format_row_t> format_rows() {
    return rows;
}

}  // namespace libgr
