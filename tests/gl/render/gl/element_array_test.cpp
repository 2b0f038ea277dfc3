#include "render/gl/element_array.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include "render/gl/array.h"
#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/gl_state.h"
#include "support/gl_trace.h"

namespace {

using namespace ulk3d;
using testing::ElementsAre;
using ulk_test::captured_stream;
using ulk_test::gl_integer;
using ulk_test::gl_store_size;

using indices_t = std::vector<std::uint32_t>;

void fill(element_array_t& elements, const indices_t& values) {
    const index_span indices(elements);
    ASSERT_EQ(indices.size(), values.size());
    std::copy(values.begin(), values.end(), indices.begin());
}

indices_t indices_in_use(const element_array_t& elements) {
    const const_index_span indices(elements);
    return {indices.begin(), indices.end()};
}

struct ElementArray : ulk_test::gl_test {
    void TearDown() override {
        EXPECT_EQ(gl_integer(GL_ELEMENT_ARRAY_BUFFER_BINDING), 0);
        EXPECT_EQ(gl_integer(GL_COPY_READ_BUFFER_BINDING), 0);
        EXPECT_EQ(gl_integer(GL_VERTEX_ARRAY_BINDING), 0);
        gl_test::TearDown();
    }
};

TEST_F(ElementArray, AllocateSetsCountAndSize) {
    element_array_t elements;
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(elements.allocate(5));
    EXPECT_EQ(elements.element_count(), 5);
    EXPECT_EQ(elements.byte_size(), 20);
    ASSERT_TRUE(elements.provide());
    EXPECT_EQ(gl_store_size(elements.buffer_id()), 20);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(ElementArray, AllocateWithTheSameCountKeepsTheContent) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    fill(elements, {7, 8, 9});
    ASSERT_TRUE(elements.allocate(3));
    EXPECT_EQ(indices_in_use(elements), (indices_t{7, 8, 9}));
}

TEST_F(ElementArray, AllocateAfterAnExtendWithoutABufferMakesAStore) {
    element_array_t elements;
    // Only the sizes are set, for the next allocation: four times the demand.
    ASSERT_TRUE(elements.extend(3));
    ASSERT_FALSE(elements.has_buffer());
    ASSERT_TRUE(elements.allocate(3));
    EXPECT_EQ(elements.element_count(), 3);
    EXPECT_EQ(elements.byte_size(), 48);
    ASSERT_TRUE(elements.provide());
    EXPECT_EQ(gl_store_size(elements.buffer_id()), 48);
    fill(elements, {7, 8, 9});
    EXPECT_EQ(indices_in_use(elements), (indices_t{7, 8, 9}));
}

TEST_F(ElementArray, AllocateWithASmallerCountKeepsTheSize) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    fill(elements, {7, 8, 9});
    const GLuint id = elements.buffer_id();
    ASSERT_TRUE(elements.allocate(2));
    EXPECT_EQ(elements.byte_size(), 12);
    EXPECT_EQ(elements.buffer_id(), id);
}

TEST_F(ElementArray, AllocateMarksAPendingError) {
    element_array_t elements;
    ulk_test::make_gl_error();
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(elements.allocate(5));
    EXPECT_EQ(errors.text(), "element_array_t::allocate(1): Error 1280: invalid enumerant\n");
}

TEST_F(ElementArray, AllocateMarksEachStep) {
    element_array_t elements;
    const ulk_test::gl_trace trace;
    ASSERT_TRUE(elements.allocate(5));
    EXPECT_THAT(trace.events(), ElementsAre("glGenBuffers", "element_array_t::allocate(1)", "glBindBuffer",
                                            "element_array_t::allocate(2)", "element_array_t::allocate(3)",
                                            "glBindBuffer", "element_array_t::allocate(end)"));
}

TEST_F(ElementArray, AllocateWithTheSameCountSetsNoMark) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(5));
    ulk_test::make_gl_error();
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(elements.allocate(5));
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM));
}

TEST_F(ElementArray, MemoryThatIsNotThereIsToldWithBothCounts) {
    element_array_t elements;
    {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(elements.allocate(std::int64_t{1} << 60));
        EXPECT_EQ(errors.text(),
                  "element_array_t::allocate(3): Error 1285: out of memory\n"
                  "elements: 1152921504606846976\n"
                  "buffer_size: 4611686018427387904\n");
    }
    EXPECT_EQ(elements.element_count(), 0);
    EXPECT_EQ(elements.byte_size(), 0);
    EXPECT_TRUE(elements.allocate(4)) << "a size that fits works again";
}

TEST_F(ElementArray, HoldsItsExactCapacity) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(4));
    EXPECT_TRUE(elements.holds(4));
    EXPECT_FALSE(elements.holds(5));
    EXPECT_FALSE(elements.holds(-1));
}

TEST_F(ElementArray, FitsIsFalseAtExactCapacity) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(4));
    EXPECT_TRUE(elements.fits(3));
    EXPECT_FALSE(elements.fits(4));
}

TEST_F(ElementArray, ExtendThatFitsExactlyDoesNotTouchTheStore) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(4));
    fill(elements, {1, 2, 3, 4});
    ASSERT_TRUE(elements.extend(2));
    ASSERT_TRUE(elements.extend(4));
    EXPECT_EQ(elements.byte_size(), 16);
    EXPECT_EQ(indices_in_use(elements), (indices_t{1, 2, 3, 4}));
}

TEST_F(ElementArray, ExtendPastTheCapacityGrowsFourfoldAndKeepsTheContent) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    fill(elements, {7, 8, 9});
    ASSERT_TRUE(elements.extend(5));
    EXPECT_EQ(elements.element_count(), 5);
    EXPECT_EQ(elements.byte_size(), 80);
    EXPECT_EQ(gl_store_size(elements.buffer_id()), 80);
    auto indices = indices_in_use(elements);
    indices.resize(3);
    EXPECT_EQ(indices, (indices_t{7, 8, 9}));
}

TEST_F(ElementArray, ExtendWithoutMemoryIsFalseAndKeepsTheContent) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    fill(elements, {7, 8, 9});
    EXPECT_FALSE(elements.extend(std::int64_t{1} << 40));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_OUT_OF_MEMORY));
    EXPECT_EQ(elements.element_count(), std::int64_t{1} << 40) << "the count is stored without any test";
    EXPECT_EQ(elements.byte_size(), 12);
    EXPECT_EQ(indices_in_use(elements), (indices_t{7, 8, 9}));
}

TEST_F(ElementArray, ReserveKeepsCountAndContent) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    fill(elements, {7, 8, 9});
    ASSERT_TRUE(elements.reserve(50));
    EXPECT_EQ(elements.element_count(), 3);
    EXPECT_EQ(elements.byte_size(), 200);
    EXPECT_EQ(indices_in_use(elements), (indices_t{7, 8, 9}));
    EXPECT_TRUE(elements.reserve(50));
    EXPECT_TRUE(elements.reserve(1));
    EXPECT_EQ(elements.byte_size(), 200);
}

TEST_F(ElementArray, ReleaseDropsTheBufferAndZeroesTheSizes) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    const GLuint id = elements.buffer_id();
    elements.release();
    EXPECT_EQ(glIsBuffer(id), GL_FALSE);
    EXPECT_EQ(elements.element_count(), 0);
    EXPECT_EQ(elements.byte_size(), 0);
}

TEST_F(ElementArray, MappingThatFailsPrintsBothMessages) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(0));
    {
        const captured_stream errors(std::cerr);
        EXPECT_EQ(elements.map(), nullptr);
        EXPECT_EQ(errors.text(), "buffer_t::MapBufferRange(): ptr is NULL.\nelement pointer is NULL.\n");
    }
    EXPECT_NE(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "a store of no bytes can not be mapped";
}

std::string printed(const element_array_t& elements) {
    std::ostringstream stream;
    stream << elements;
    return stream.str();
}

TEST_F(ElementArray, PrintsItsIndicesWithRestartMarksAsMinusOne) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(5));
    fill(elements, {0, 12, restart_mark, 4294967294U, 3});
    EXPECT_EQ(printed(elements), "0, 12, -1, 4294967294, 3\n");
}

TEST_F(ElementArray, PrintsOnlyANewlineForNoIndices) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(0));
    const captured_stream errors(std::cerr);
    EXPECT_EQ(printed(elements), "\n");
    EXPECT_EQ(errors.text(), "");
}

struct grouped_digits : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST_F(ElementArray, PrintsTheSameInEveryLocale) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(1));
    fill(elements, {1234567});
    std::ostringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new grouped_digits));
    stream << elements;
    EXPECT_EQ(stream.str(), "1234567\n");
}

TEST_F(ElementArray, DrawMarksAPendingErrorAtItsStart) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(1));
    const auto vertex_array = vertex_array_ref::make();
    vertex_array->allocate();
    fill(elements, {0});
    ulk_test::make_gl_error();
    const captured_stream errors(std::cerr);
    elements.draw(vertex_array, GL_POINTS);
    EXPECT_EQ(errors.text().substr(0, errors.text().find('\n')),
              "element_array_t::draw(0): Error 1280: invalid enumerant");
}

TEST_F(ElementArray, DrawMarksEachStep) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(1));
    fill(elements, {0});
    const auto vertex_array = vertex_array_ref::make();
    vertex_array->allocate();
    const ulk_test::gl_trace trace;
    elements.draw(vertex_array, GL_POINTS);
    EXPECT_THAT(trace.events(),
                ElementsAre("element_array_t::draw(0)", "glBindVertexArray", "element_array_t::draw(1)",
                            "glBindBuffer", "element_array_t::draw(2)", "glDrawElements",
                            "element_array_t::draw(3)", "glBindBuffer", "element_array_t::draw(4)",
                            "glBindVertexArray", "element_array_t::draw(end)"));
}

TEST_F(ElementArray, DrawWithAnAbsentVertexArrayIsToldByItsMarks) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(1));
    fill(elements, {0});
    const captured_stream errors(std::cerr);
    elements.draw(vertex_array_ref::make(), GL_POINTS);
    EXPECT_EQ(errors.text().substr(0, errors.text().find('\n')),
              "element_array_t::draw(1): Error 1282: invalid operation");
}

TEST_F(ElementArray, DrawWithAnUnknownModeIsToldAfterTheDraw) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(1));
    fill(elements, {0});
    const auto vertex_array = vertex_array_ref::make();
    vertex_array->allocate();
    const captured_stream errors(std::cerr);
    elements.draw(vertex_array, 0xFFFF);
    EXPECT_EQ(errors.text(), "element_array_t::draw(3): Error 1280: invalid enumerant\n");
}

TEST_F(ElementArray, DrawWithoutVertexArrayHolderDoesNothing) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(1));
    const captured_stream errors(std::cerr);
    elements.draw({}, GL_POINTS);
    EXPECT_EQ(errors.text(), "");
}

}  // namespace
