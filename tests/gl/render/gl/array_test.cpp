#include "render/gl/array.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <numeric>
#include <vector>

#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;
using ulk_test::gl_integer;
using ulk_test::gl_store_size;

element_list_t sizes() {
    return make_element_list({e_type_t::PointSize});
}
element_list_t points() {
    return make_element_list({e_type_t::Position, e_type_t::RGBA});
}

std::vector<float> counted(std::size_t count) {
    std::vector<float> values(count);
    std::iota(values.begin(), values.end(), 1.0F);
    return values;
}

std::vector<float> words_in_use(const array_t& array) {
    const array_span<const float> words(array);
    return {words.begin(), words.end()};
}

struct Array : ulk_test::gl_test {
    void TearDown() override {
        EXPECT_EQ(gl_integer(GL_ARRAY_BUFFER_BINDING), 0);
        EXPECT_EQ(gl_integer(GL_COPY_READ_BUFFER_BINDING), 0);
        EXPECT_EQ(gl_integer(GL_VERTEX_ARRAY_BINDING), 0);
        gl_test::TearDown();
    }
};

TEST_F(Array, AllocateSetsCountsStrideAndList) {
    array_t array;
    const auto list = points();
    ASSERT_TRUE(array.allocate(5, list));
    EXPECT_EQ(array.element_count(), 5);
    EXPECT_EQ(array.vertex_stride(), 7u);
    EXPECT_EQ(array.vertex_words(), 7u);
    EXPECT_EQ(array.byte_size(), 5 * 7 * 4);
    ASSERT_TRUE(array.provide());
    EXPECT_EQ(gl_store_size(array.buffer_id()), 5 * 7 * 4);
    EXPECT_TRUE(is_same_list(array.element_list(), list));
}

TEST_F(Array, UnknownKindCountsNothingInTheStride) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position, static_cast<e_type_t>(9)})));
    EXPECT_EQ(array.vertex_stride(), 3u);
    EXPECT_EQ(array.byte_size(), 2 * 3 * 4);
}

TEST_F(Array, AllocateOfNothingIsAnEmptyStore) {
    array_t array;
    ASSERT_TRUE(array.allocate(0, points()));
    EXPECT_EQ(array.byte_size(), 0);
    EXPECT_TRUE(array.has_buffer());
}

TEST_F(Array, ListLongerThanTheAttributeLimitIsRefusedSilently) {
    constexpr auto id = e_type_t::ID;
    ASSERT_EQ(gl_integer(GL_MAX_VERTEX_ATTRIBS), 16);
    const captured_stream errors(std::cerr);
    array_t array;
    EXPECT_FALSE(array.allocate(
        1, make_element_list({id, id, id, id, id, id, id, id, id, id, id, id, id, id, id, id, id})));
    EXPECT_FALSE(array.has_buffer());
    EXPECT_TRUE(array.allocate(
        1, make_element_list({id, id, id, id, id, id, id, id, id, id, id, id, id, id, id, id})));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(Array, AllocateTakesTheDataGiven) {
    array_t array;
    const auto data = counted(4);
    ASSERT_TRUE(array.allocate(4, sizes(), data.data(), 16));
    EXPECT_EQ(words_in_use(array), data);
}

TEST_F(Array, DataSizeZeroMeansTheWholeBuffer) {
    array_t array;
    const auto data = counted(4);
    ASSERT_TRUE(array.allocate(4, sizes(), data.data()));
    EXPECT_EQ(words_in_use(array), data);
}

TEST_F(Array, DataBeyondTheBufferIsCut) {
    array_t array;
    const auto data = counted(10);
    ASSERT_TRUE(array.allocate(4, sizes(), data.data(), 40));
    EXPECT_EQ(words_in_use(array), counted(4));
}

TEST_F(Array, DataShorterThanTheBufferFillsItsStart) {
    array_t array;
    const auto data = counted(4);
    ASSERT_TRUE(array.allocate(4, sizes(), data.data(), 8));
    const auto words = words_in_use(array);
    EXPECT_EQ(words[0], 1.0F);
    EXPECT_EQ(words[1], 2.0F);
}

TEST_F(Array, SmallerAllocateKeepsTheSize) {
    array_t array;
    ASSERT_TRUE(array.allocate(100, sizes(), counted(100).data()));
    const GLuint id = array.buffer_id();
    ASSERT_TRUE(array.allocate(10, sizes()));
    EXPECT_EQ(array.element_count(), 10);
    EXPECT_EQ(array.byte_size(), 400);
    ASSERT_TRUE(array.provide());
    EXPECT_EQ(gl_store_size(id), 400);
    EXPECT_EQ(array.buffer_id(), id) << "the name is used again";
}

TEST_F(Array, AllocateWithAnotherListTakesItsStride) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes()));
    const auto list = points();
    ASSERT_TRUE(array.allocate(4, list));
    EXPECT_EQ(array.vertex_stride(), 7u);
    EXPECT_TRUE(is_same_list(array.element_list(), list));
}

TEST_F(Array, CopiesShareTheBufferUntilTheLastRelease) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes(), counted(4).data()));
    const GLuint id = array.buffer_id();
    array_t copy = array;
    array_span<float>{copy}[0] = 9;
    EXPECT_EQ(words_in_use(array)[0], 9.0F);
    array.release();
    EXPECT_EQ(glIsBuffer(id), GL_TRUE);
    copy.release();
    EXPECT_EQ(glIsBuffer(id), GL_FALSE);
}

TEST_F(Array, ReleaseDropsTheBufferAndZeroesTheSizes) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, points()));
    array.release();
    EXPECT_FALSE(array.has_buffer());
    EXPECT_EQ(array.element_count(), 0);
    EXPECT_EQ(array.byte_size(), 0);
    EXPECT_EQ(array.vertex_stride(), 7u);
}

TEST_F(Array, MemoryThatIsNotThereMakesAllocateFalse) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes()));
    for (const std::int64_t count : {std::int64_t{1} << 40, std::int64_t{1} << 60}) {
        EXPECT_FALSE(array.allocate(count, sizes()));
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_OUT_OF_MEMORY)) << "left for the next mark";
        EXPECT_EQ(array.element_count(), 0);
        EXPECT_EQ(array.byte_size(), 0);
    }
    ASSERT_TRUE(array.allocate(4, sizes(), counted(4).data())) << "a size that fits works again";
    EXPECT_EQ(words_in_use(array), counted(4));
}

TEST_F(Array, FailureForMemoryIsSeenBehindAPendingError) {
    array_t array;
    ulk_test::make_gl_error();
    EXPECT_FALSE(array.allocate(std::int64_t{1} << 40, sizes()));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM)) << "it stays for the next mark";
}

TEST_F(Array, SizesThatCanNotBeAreRefusedWithNothingChanged) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, points(), counted(28).data()));
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    for (const std::int64_t count : {std::int64_t{-1}, most, most / 28 + 1}) {
        EXPECT_FALSE(array.allocate(count, points()));
        EXPECT_FALSE(array.extend(count));
        EXPECT_FALSE(array.reserve(count));
        EXPECT_FALSE(array.fits(count));
    }
    EXPECT_FALSE(array.allocate(4, points(), counted(28).data(), -1));
    EXPECT_EQ(array.element_count(), 4);
    EXPECT_EQ(words_in_use(array), counted(28));
}

TEST_F(Array, FitsAtExactCapacity) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, points()));
    EXPECT_TRUE(array.fits(4));
    EXPECT_FALSE(array.fits(5));
}

TEST_F(Array, HoldsItsExactCapacity) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, points()));
    EXPECT_TRUE(array.holds(4));
    EXPECT_FALSE(array.holds(5));
    EXPECT_FALSE(array.holds(-1));
}

TEST_F(Array, ExtendThatFitsDoesNotTouchTheStore) {
    array_t array;
    ASSERT_TRUE(array.allocate(8, sizes(), counted(8).data()));
    ASSERT_TRUE(array.extend(3));
    EXPECT_EQ(array.element_count(), 3);
    ASSERT_TRUE(array.extend(8));
    EXPECT_EQ(array.byte_size(), 32);
    EXPECT_EQ(gl_store_size(array.buffer_id()), 32);
    EXPECT_EQ(words_in_use(array), counted(8));
}

TEST_F(Array, ExtendToTheSameCountDoesNothing) {
    array_t array;
    ASSERT_TRUE(array.allocate(8, sizes()));
    EXPECT_TRUE(array.extend(8));
    EXPECT_EQ(array.byte_size(), 32);
}

TEST_F(Array, ExtendPastTheCapacityGrowsFourfoldAndKeepsTheContent) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, points(), counted(28).data()));
    const GLuint id = array.buffer_id();
    ASSERT_TRUE(array.extend(5));
    EXPECT_EQ(array.element_count(), 5);
    EXPECT_EQ(array.byte_size(), 5 * 4 * 7 * 4);
    EXPECT_EQ(gl_store_size(id), 5 * 4 * 7 * 4);
    EXPECT_EQ(array.buffer_id(), id);
    const auto words = words_in_use(array);
    ASSERT_EQ(words.size(), 35u);
    EXPECT_TRUE(std::equal(words.begin(), words.begin() + 28, counted(28).begin()));
}

TEST_F(Array, ExtendWithoutMemoryIsTrueAndKeepsTheContent) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes(), counted(4).data()));
    EXPECT_TRUE(array.extend(std::int64_t{1} << 40));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_OUT_OF_MEMORY));
    EXPECT_EQ(array.element_count(), std::int64_t{1} << 40);
    EXPECT_FALSE(array.holds(std::int64_t{1} << 40));
    EXPECT_EQ(array.byte_size(), 16);
    EXPECT_EQ(words_in_use(array), counted(4)) << "a mapping shows no more than what is there";
}

TEST_F(Array, ReserveGrowsToTheCountAndKeepsTheContent) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes(), counted(4).data()));
    ASSERT_TRUE(array.reserve(1000));
    EXPECT_EQ(array.element_count(), 4);
    EXPECT_EQ(array.byte_size(), 4000);
    EXPECT_EQ(gl_store_size(array.buffer_id()), 4000);
    EXPECT_EQ(words_in_use(array), counted(4));
}

TEST_F(Array, ReserveOfNoMoreThanThereIsDoesNothing) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes(), counted(4).data()));
    EXPECT_TRUE(array.reserve(4));
    EXPECT_TRUE(array.reserve(1));
    EXPECT_EQ(array.byte_size(), 16);
}

TEST_F(Array, ReserveWithoutMemoryIsFalseAndKeepsTheContent) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes(), counted(4).data()));
    EXPECT_FALSE(array.reserve(std::int64_t{1} << 40));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_OUT_OF_MEMORY));
    EXPECT_EQ(array.byte_size(), 16);
    EXPECT_EQ(words_in_use(array), counted(4));
}

TEST_F(Array, ReserveWithoutBufferIsTakenByTheNextAllocate) {
    array_t array;
    ASSERT_TRUE(array.allocate(1, sizes()));
    array.release();
    ASSERT_TRUE(array.reserve(100));
    EXPECT_FALSE(array.has_buffer());
    EXPECT_EQ(array.byte_size(), 400);
    ASSERT_TRUE(array.allocate(2, sizes()));
    ASSERT_TRUE(array.provide());
    EXPECT_EQ(gl_store_size(array.buffer_id()), 400);
}

TEST_F(Array, WriteAllWritesTheWholeBuffer) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes()));
    array.write_all(counted(4).data());
    EXPECT_EQ(words_in_use(array), counted(4));
}

TEST_F(Array, OneVertexIsWrittenAndReadAtItsPlace) {
    array_t array;
    ASSERT_TRUE(array.allocate(3, points(), counted(21).data()));
    const std::array<float, 7> vertex{-1, -2, -3, -4, -5, -6, -7};
    array.write_one(1, vertex.data());
    std::array<float, 7> read{};
    array.read_one(1, read.data());
    EXPECT_EQ(read, vertex);
    array.read_one(2, read.data());
    EXPECT_EQ(read[0], 15.0F);
    auto expected = counted(21);
    std::copy(vertex.begin(), vertex.end(), expected.begin() + 7);
    EXPECT_EQ(words_in_use(array), expected);
}

TEST_F(Array, OneVertexOutsideTheStoreIsNotTouched) {
    array_t array;
    ASSERT_TRUE(array.allocate(3, sizes(), counted(3).data()));
    float word = 42;
    array.write_one(3, &word);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_VALUE));
    array.read_one(3, &word);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_VALUE));
    array.write_one(-1, &word);
    array.read_one(std::numeric_limits<std::int64_t>::max(), &word);
    EXPECT_EQ(word, 42.0F);
    EXPECT_EQ(words_in_use(array), counted(3));
}

TEST_F(Array, AccessWithoutBufferReportsAnInvalidOperation) {
    array_t array;
    float word = 42;
    const auto expect_error = [] { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION)); };
    array.bind();
    expect_error();
    array.write_all(&word);
    expect_error();
    array.write_one(0, &word);
    expect_error();
    array.read_one(0, &word);
    expect_error();
    EXPECT_EQ(word, 42.0F);
}

TEST_F(Array, BindBindsItsBuffer) {
    array_t array;
    ASSERT_TRUE(array.allocate(1, sizes()));
    array.bind();
    EXPECT_EQ(gl_integer(GL_ARRAY_BUFFER_BINDING), static_cast<GLint>(array.buffer_id()));
    array.unbind();
}

TEST_F(Array, MappingThatFailsPrintsBothMessages) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, sizes(), counted(4).data()));
    const array_span<float> first(array);
    {
        const captured_stream errors(std::cerr);
        const array_span<float> second(array);
        EXPECT_FALSE(second);
        EXPECT_EQ(second.size(), 0u);
        EXPECT_EQ(errors.text(), "buffer_t::MapBufferRange(): ptr is NULL.\narray pointer is NULL.\n");
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION));
    // The guard that has no pointer has not ended the mapping of the other.
    EXPECT_EQ(first[3], 4.0F);
}

}  // namespace
