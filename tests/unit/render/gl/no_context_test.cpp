// This program never loads the GL entry points: a call through one of them would end it.
#include <gtest/gtest.h>

#include <iostream>
#include <limits>
#include <sstream>

#include "gltextures/gr_context.h"
#include "render/gl/array.h"
#include "render/gl/element_array.h"
#include "render/gl/feedback_buffer.h"
#include "render/gl/mapped_span.h"
#include "render/gl/program.h"
#include "render/gl/query.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"
#include "render/gl/vertex_array.h"
#include "support/captured_stream.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

TEST(NoContext, NoneIsCurrentBeforeTheEntryPointsAreLoaded) {
    EXPECT_FALSE(libgr::grContextIsCurrent());
}

TEST(NoContext, AbsentObjectsHaveTheIdOfNoObject) {
    EXPECT_EQ(gl_no_object, 1281u);
    EXPECT_EQ(buffer_t().id(), 1281u);
    EXPECT_EQ(vertex_array_t().id(), 1281u);
}

TEST(NoContext, AbsentObjectsWithPlainIdsHaveZero) {
    EXPECT_EQ(shader_t().shader_id(), 0u);
    EXPECT_EQ(program_t().program_id(), 0u);
    EXPECT_EQ(feedback_buffer_t().buffer_id(), 0u);
    EXPECT_EQ(array_t().buffer_id(), 0u);
    EXPECT_EQ(element_array_t().buffer_id(), 0u);
    EXPECT_FALSE(query_t().is_allocated());
}

TEST(NoContext, ReleaseOfAbsentObjectsDoesNothing) {
    buffer_t().release();
    vertex_array_t().release();
    shader_t().release();
    query_t().release();
    feedback_buffer_t().release();
    array_t().release();
    element_array_t().release();
}

TEST(NoContext, TransformFeedbackBuiltBeforeTheContextIsNotNative) {
    transform_feedback_t feedback;
    EXPECT_FALSE(feedback.is_native());
    EXPECT_EQ(feedback.feedback_id(), 0u);
    EXPECT_TRUE(feedback.allocate());
    EXPECT_EQ(feedback.feedback_id(), 1u);
}

TEST(NoContext, ProgramBeforeCreateDoesNothing) {
    program_t program;
    shader_t shader;
    program.attach(shader);
    program.detach(shader);
    program.use();
    EXPECT_FALSE(program.link());
}

TEST(NoContext, NullVertexArrayHolderIsNeitherFedNorDrawn) {
    const vertex_array_ref none;
    bind_attributes(none, make_element_list({e_type_t::Position}), 3, 1, 0);
    draw(none, GL_POINTS, 1);
}

TEST(NoContext, ArrayWithoutBufferFeedsNothing) {
    const auto vertex_array = vertex_array_ref::make();
    array_t().bind_to(vertex_array, 0);
}

TEST(NoContext, DrawOfElementsWithoutBufferIsSilent) {
    const captured_stream errors(std::cerr);
    element_array_t().draw(vertex_array_ref::make(), GL_TRIANGLES);
    EXPECT_EQ(errors.text(), "");
}

TEST(NoContext, ArrayWithoutBufferTellsSoWhenMapped) {
    const captured_stream errors(std::cerr);
    EXPECT_EQ(array_t().map(), nullptr);
    EXPECT_EQ(errors.text(), "array buffer is not allocated.\n");
}

TEST(NoContext, ElementArrayWithoutBufferTellsSoWhenMapped) {
    const captured_stream errors(std::cerr);
    EXPECT_EQ(element_array_t().map(), nullptr);
    EXPECT_EQ(errors.text(), "element object is not allocated.\n");
}

TEST(NoContext, FeedbackBufferWithoutNameMapsSilentlyToNull) {
    const captured_stream errors(std::cerr);
    EXPECT_EQ(feedback_buffer_t().map(), nullptr);
    EXPECT_EQ(errors.text(), "");
}

TEST(NoContext, UnmapWithoutBufferDoesNothing) {
    array_t().unmap();
    element_array_t().unmap();
    feedback_buffer_t().unmap();
}

TEST(NoContext, GuardOfAnAbsentBufferIsFalseAndEmpty) {
    const captured_stream errors(std::cerr);
    array_t array;
    const array_span<float> records(array);
    EXPECT_FALSE(records);
    EXPECT_EQ(records.span().data(), nullptr);
    EXPECT_EQ(records.size(), 0u);
    EXPECT_TRUE(records.begin() == records.end());
}

TEST(NoContext, ArrayExtendWithoutBufferIsFalse) {
    array_t array;
    EXPECT_FALSE(array.extend(0));
    EXPECT_FALSE(array.extend(3));
    EXPECT_EQ(array.element_count(), 0);
}

TEST(NoContext, ElementReserveWithoutBufferOnlyNotesTheSize) {
    element_array_t elements;
    EXPECT_TRUE(elements.reserve(10));
    EXPECT_EQ(elements.byte_size(), 40);
    EXPECT_EQ(elements.element_count(), 0);
    EXPECT_FALSE(elements.has_buffer());
}

TEST(NoContext, ElementExtendWithoutBufferNotesCountAndFourfoldSize) {
    element_array_t elements;
    EXPECT_TRUE(elements.extend(10));
    EXPECT_EQ(elements.element_count(), 10);
    EXPECT_EQ(elements.byte_size(), 160);
}

TEST(NoContext, ElementReleaseWithoutBufferKeepsTheNotedSizes) {
    element_array_t elements;
    ASSERT_TRUE(elements.extend(10));
    elements.release();
    EXPECT_EQ(elements.element_count(), 10);
    EXPECT_EQ(elements.byte_size(), 160);
}

TEST(NoContext, RoomThatIsOnlyNotedHoldsNothing) {
    element_array_t elements;
    ASSERT_TRUE(elements.reserve(10));
    EXPECT_FALSE(elements.holds(0));
    EXPECT_FALSE(array_t().holds(0));
}

TEST(NoContext, ElementFitsNeedsMoreThanTheExactSize) {
    element_array_t elements;
    ASSERT_TRUE(elements.reserve(10));
    EXPECT_TRUE(elements.fits(9));
    EXPECT_FALSE(elements.fits(10));
}

TEST(NoContext, CountsThatCanNotBeAreRefusedWithNothingChanged) {
    element_array_t elements;
    for (const std::int64_t count :
         {std::int64_t{-1}, std::numeric_limits<std::int64_t>::min(), most, most / 2}) {
        EXPECT_FALSE(elements.allocate(count)) << count;
        EXPECT_FALSE(elements.extend(count)) << count;
        EXPECT_FALSE(elements.reserve(count)) << count;
        EXPECT_FALSE(elements.fits(count)) << count;
        EXPECT_FALSE(feedback_buffer_t().allocate(count)) << count;
    }
    EXPECT_EQ(elements.element_count(), 0);
    EXPECT_EQ(elements.byte_size(), 0);
    EXPECT_FALSE(elements.has_buffer());
    array_t array;
    EXPECT_FALSE(array.reserve(-1));
    EXPECT_FALSE(array.fits(-1));
}

TEST(NoContext, ElementExtendWhoseFourfoldSizeCanNotBeIsFalse) {
    element_array_t elements;
    EXPECT_FALSE(elements.extend(most / 8));
    EXPECT_FALSE(elements.extend(most / 4));
    EXPECT_EQ(elements.byte_size(), 0);
}

TEST(NoContext, ElementArrayOfNoIndicesPrintsOnlyANewline) {
    const captured_stream errors(std::cerr);
    std::ostringstream text;
    text << element_array_t();
    EXPECT_EQ(text.str(), "\n");
    EXPECT_EQ(errors.text(), "");
}

TEST(NoContext, DrawCountsBeyondGlAreCut) {
    EXPECT_EQ(to_draw_count(0), 0);
    EXPECT_EQ(to_draw_count(2147483647), 2147483647);
    EXPECT_EQ(to_draw_count(2147483648), 2147483647);
    EXPECT_LT(to_draw_count(-5), 0);
}

}  // namespace
