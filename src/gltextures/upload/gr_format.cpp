#include "gltextures/upload/gr_format.h"

#include <iostream>

namespace libgr {

namespace {

const format_row_t* find_row(std::uint32_t format) {
    for (const format_row_t& row : format_rows())
        if (row.format == format)
            return &row;
    return nullptr;
}

const format_cell_t* find_cell(const format_row_t* row, std::uint32_t type, std::uint32_t bits) {
    if (row == nullptr)
        return nullptr;
    for (const format_cell_t& cell : row->cells)
        if (cell.type == type && cell.bits == bits)
            return &cell;
    return nullptr;
}

}  // namespace

bool grFormatSelect(gl_triple_t& out, std::uint32_t format, std::uint32_t type, std::uint32_t bits,
                    bool compress) {
    const format_row_t* const row = find_row(format);
    const format_cell_t* const cell = find_cell(row, type, bits);
    if (cell == nullptr) {
        std::cerr << "Not supported image format!\n"
                  << "imgformat: " << format << "\nimgtype: " << type << "\nimgbits: " << bits << std::endl;
        return false;
    }
    out = {cell->internal_format, row->gl_format, cell->gl_type};
    if (compress && has_texture_compression() && out.internal_format == GL_ALPHA)
        out.internal_format = GL_COMPRESSED_ALPHA;
    return true;
}

bool has_texture_compression() {
    return GLEW_VERSION_1_3 != 0 || GLEW_ARB_texture_compression != 0;
}

}  // namespace libgr
