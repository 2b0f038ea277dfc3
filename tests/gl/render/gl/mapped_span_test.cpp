#include "render/gl/mapped_span.h"

#include <array>
#include <iostream>
#include <type_traits>

#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;

using record_t = std::array<float, 3>;
using MappedSpan = ulk_test::gl_test;

static_assert(!std::is_constructible_v<array_span<float>, const array_t&>);
static_assert(!std::is_constructible_v<index_span, const element_array_t&>);
static_assert(!std::is_constructible_v<feedback_span<float>, const feedback_buffer_t&>);

GLint parameter_of(GLuint id, GLenum parameter) {
    GLint value = -1;
    glBindBuffer(GL_COPY_WRITE_BUFFER, id);
    glGetBufferParameteriv(GL_COPY_WRITE_BUFFER, parameter, &value);
    glBindBuffer(GL_COPY_WRITE_BUFFER, 0);
    return value;
}

bool is_mapped(GLuint id) {
    return parameter_of(id, GL_BUFFER_MAPPED) == GL_TRUE;
}

GLint access_of(GLuint id) {
    return parameter_of(id, GL_BUFFER_ACCESS_FLAGS);
}

constexpr GLint reading = GL_MAP_READ_BIT;
constexpr GLint writing = GL_MAP_READ_BIT | GL_MAP_WRITE_BIT;

TEST_F(MappedSpan, LastsForItsScope) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    {
        const array_span<record_t> records(array);
        EXPECT_TRUE(records);
        EXPECT_TRUE(is_mapped(array.buffer_id()));
    }
    EXPECT_FALSE(is_mapped(array.buffer_id()));
}

TEST_F(MappedSpan, CanBeEndedBeforeItsScope) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    array_span<record_t> records(array);
    records.unmap();
    EXPECT_FALSE(records);
    EXPECT_EQ(records.size(), 0u);
    EXPECT_FALSE(is_mapped(array.buffer_id()));
}

TEST_F(MappedSpan, LeavesNothingBound) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    const array_span<record_t> records(array);
    EXPECT_EQ(ulk_test::gl_integer(GL_ARRAY_BUFFER_BINDING), 0);
}

TEST_F(MappedSpan, CoversTheRecordsInUseNotTheReservedOnes) {
    array_t array;
    ASSERT_TRUE(array.allocate(10, make_element_list({e_type_t::Position})));
    ASSERT_TRUE(array.extend(4));
    EXPECT_EQ(array_span<record_t>(array).size(), 4u);
    EXPECT_EQ(array_span<float>(array).size(), 12u);
}

TEST_F(MappedSpan, LeavesOutARecordThatIsNotWhole) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, make_element_list({e_type_t::PointSize})));
    EXPECT_EQ(array_span<record_t>(array).size(), 1u);
}

TEST_F(MappedSpan, WritesAreThereInTheNextMapping) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    {
        const array_span<record_t> records(array);
        records[0] = {1, 2, 3};
        records[1] = {4, 5, 6};
    }
    const array_t& read_only = array;
    const array_span<const record_t> records(read_only);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0], (record_t{1, 2, 3}));
    EXPECT_EQ(records[1], (record_t{4, 5, 6}));
}

TEST_F(MappedSpan, OfIndicesCoversTheIndicesInUse) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(5));
    ASSERT_TRUE(elements.extend(3));
    EXPECT_EQ(index_span(elements).size(), 3u);
}

TEST_F(MappedSpan, OfFeedbackCoversTheWholeBuffer) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(7));
    EXPECT_EQ(feedback_span<record_t>(feedback).size(), 2u);
    EXPECT_EQ(feedback_span<float>(feedback).size(), 7u);
    EXPECT_FALSE(is_mapped(feedback.buffer_id()));
}

TEST_F(MappedSpan, OfConstRecordsMapsForReadingOnly) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(2));
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(2));
    {
        const array_span<const float> records(array);
        const const_index_span indices(elements);
        const feedback_span<const float> words(feedback);
        EXPECT_EQ(access_of(array.buffer_id()), reading);
        EXPECT_EQ(access_of(elements.buffer_id()), reading);
        EXPECT_EQ(access_of(feedback.buffer_id()), reading);
    }
    const array_span<float> records(array);
    const index_span indices(elements);
    const feedback_span<float> words(feedback);
    EXPECT_EQ(access_of(array.buffer_id()), writing);
    EXPECT_EQ(access_of(elements.buffer_id()), writing);
    EXPECT_EQ(access_of(feedback.buffer_id()), writing);
}

TEST_F(MappedSpan, ForReadingIsNoChangeOfTheIndices) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(2));
    const std::uint64_t before = elements.writes();
    EXPECT_EQ(const_index_span(elements).size(), 2u);
    EXPECT_EQ(elements.writes(), before);
    EXPECT_EQ(index_span(elements).size(), 2u);
    EXPECT_EQ(elements.writes(), before + 1);
}

TEST_F(MappedSpan, OfNothingInUseIsEmptyAndSilent) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(0));
    const ulk_test::captured_stream errors(std::cerr);
    const index_span indices(elements);
    EXPECT_FALSE(indices);
    EXPECT_EQ(indices.size(), 0u);
    EXPECT_FALSE(is_mapped(elements.buffer_id()));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(MappedSpan, OfACopyWithALongerCountFailsInsteadOfReachingOut) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, make_element_list({e_type_t::Position})));
    array_t copy = array;
    ASSERT_TRUE(array.extend(100));
    ASSERT_TRUE(copy.allocate(4, make_element_list({e_type_t::Position})));
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_FALSE(array_span<record_t>(array));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_VALUE));
}

}  // namespace
