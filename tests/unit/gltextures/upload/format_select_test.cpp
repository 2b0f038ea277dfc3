#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <sstream>

#include "gltextures/upload/gr_format.h"
#include "support/captured_stream.h"
#include "support/format_cases.h"

namespace libgr {
namespace {

using ulk_test::captured_stream;
using ulk_test::format_case_t;
using ulk_test::format_cases;

class FormatSelectCell : public testing::TestWithParam<format_case_t> {};

TEST_P(FormatSelectCell, HasItsTripleAndNoWords) {
    const format_case_t& row = GetParam();
    const captured_stream errors(std::cerr);
    gl_triple_t triple;
    ASSERT_TRUE(grFormatSelect(triple, row.format, row.type, row.bits, false));
    EXPECT_EQ(triple.internal_format, row.triple.internal_format);
    EXPECT_EQ(triple.format, row.triple.format);
    EXPECT_EQ(triple.type, row.triple.type);
    EXPECT_EQ(errors.text(), "");
}

std::string cell_name(const testing::TestParamInfo<format_case_t>& info) {
    const format_case_t& row = info.param;
    return "F" + std::to_string(row.format) + "T" + std::to_string(row.type) + "B" + std::to_string(row.bits);
}

INSTANTIATE_TEST_SUITE_P(All, FormatSelectCell, testing::ValuesIn(format_cases), cell_name);

bool has_cell(std::uint32_t format, std::uint32_t type, std::uint32_t bits) {
    return std::any_of(std::begin(format_cases), std::end(format_cases), [&](const format_case_t& row) {
        return row.format == format && row.type == type && row.bits == bits;
    });
}

TEST(FormatSelect, AnyOtherCombinationIsUnsupportedWithFourLines) {
    for (std::uint32_t format = 0; format < 20; ++format) {
        for (std::uint32_t type = 0; type < 4; ++type) {
            for (std::uint32_t bits = 0; bits < 18; ++bits) {
                if (has_cell(format, type, bits))
                    continue;
                const captured_stream errors(std::cerr);
                gl_triple_t triple;
                EXPECT_FALSE(grFormatSelect(triple, format, type, bits, false));
                std::ostringstream words;
                words << "Not supported image format!\nimgformat: " << format << "\nimgtype: " << type
                      << "\nimgbits: " << bits << "\n";
                EXPECT_EQ(errors.text(), words.str());
            }
        }
    }
}

TEST(FormatSelect, CodesFarBeyondTheTablesAreUnsupported) {
    const captured_stream errors(std::cerr);
    gl_triple_t triple;
    EXPECT_FALSE(grFormatSelect(triple, 0xFFFFFFFF, 1, 3, false));
    EXPECT_EQ(errors.text(), "Not supported image format!\nimgformat: 4294967295\nimgtype: 1\nimgbits: 3\n");
}

TEST(FormatSelect, NeverHasTwoCellsForOneCombination) {
    for (const format_row_t& row : format_rows())
        for (const format_cell_t& cell : row.cells)
            EXPECT_EQ(std::count_if(row.cells.begin(), row.cells.end(),
                                    [&](const format_cell_t& other) {
                                        return other.type == cell.type && other.bits == cell.bits;
                                    }),
                      1)
                << "format " << row.format << ", type " << cell.type << ", bits " << cell.bits;
}

/// While it lives, GL has compressed textures or has not, as far as the loader tells.
class compression_flags_t {
  public:
    compression_flags_t(bool of_version, bool of_extension) {
        __GLEW_VERSION_1_3 = of_version;
        __GLEW_ARB_texture_compression = of_extension;
    }
    ~compression_flags_t() {
        __GLEW_VERSION_1_3 = version;
        __GLEW_ARB_texture_compression = extension;
    }
    compression_flags_t(const compression_flags_t&) = delete;
    compression_flags_t& operator=(const compression_flags_t&) = delete;

  private:
    GLboolean version = __GLEW_VERSION_1_3;
    GLboolean extension = __GLEW_ARB_texture_compression;
};

TEST(FormatSelect, CompressionTurnsAlphaAloneIntoItsCompressedForm) {
    for (const auto& [version, extension] : {std::pair{true, false}, {false, true}}) {
        const compression_flags_t flags(version, extension);
        for (const format_case_t& row : format_cases) {
            gl_triple_t triple;
            ASSERT_TRUE(grFormatSelect(triple, row.format, row.type, row.bits, true));
            const GLenum told = row.triple.internal_format;
            EXPECT_EQ(triple.internal_format, told == GL_ALPHA ? GL_COMPRESSED_ALPHA : told);
            EXPECT_EQ(triple.format, row.triple.format);
            EXPECT_EQ(triple.type, row.triple.type);
        }
    }
}

TEST(FormatSelect, WithoutCompressedTexturesAlphaStays) {
    const compression_flags_t flags(false, false);
    gl_triple_t triple;
    ASSERT_TRUE(grFormatSelect(triple, 6, 1, 3, true));
    EXPECT_EQ(triple.internal_format, static_cast<GLenum>(GL_ALPHA));
}

}  // namespace
}  // namespace libgr
