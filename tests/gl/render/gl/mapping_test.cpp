#include "render/gl/mapping.h"

#include <array>
#include <iostream>

#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;

using record_t = std::array<float, 3>;
using Mapping = ulk_test::gl_test;

bool is_mapped(GLuint id) {
    GLint mapped = -1;
    glBindBuffer(GL_COPY_WRITE_BUFFER, id);
    glGetBufferParameteriv(GL_COPY_WRITE_BUFFER, GL_BUFFER_MAPPED, &mapped);
    glBindBuffer(GL_COPY_WRITE_BUFFER, 0);
    return mapped == GL_TRUE;
}

TEST_F(Mapping, LastsForItsScope) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    {
        const auto records = map_records<record_t>(array);
        EXPECT_TRUE(records);
        EXPECT_TRUE(is_mapped(array.buffer_id()));
    }
    EXPECT_FALSE(is_mapped(array.buffer_id()));
}

TEST_F(Mapping, CanBeEndedBeforeItsScope) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    auto records = map_records<record_t>(array);
    records.unmap();
    EXPECT_FALSE(records);
    EXPECT_EQ(records.size(), 0u);
    EXPECT_FALSE(is_mapped(array.buffer_id()));
}

TEST_F(Mapping, LeavesNothingBound) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    const auto records = map_records<record_t>(array);
    EXPECT_EQ(ulk_test::gl_integer(GL_ARRAY_BUFFER_BINDING), 0);
}

TEST_F(Mapping, CoversTheRecordsInUseNotTheReservedOnes) {
    array_t array;
    ASSERT_TRUE(array.allocate(10, make_element_list({e_type_t::Position})));
    ASSERT_TRUE(array.extend(4));
    EXPECT_EQ(map_records<record_t>(array).size(), 4u);
    EXPECT_EQ(map_records<float>(array).size(), 12u);
}

TEST_F(Mapping, LeavesOutARecordThatIsNotWhole) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, make_element_list({e_type_t::PointSize})));
    EXPECT_EQ(map_records<record_t>(array).size(), 1u);
}

TEST_F(Mapping, WritesAreThereInTheNextMapping) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position})));
    {
        const auto records = map_records<record_t>(array);
        records[0] = {1, 2, 3};
        records[1] = {4, 5, 6};
    }
    const array_t& read_only = array;
    const auto records = map_records<const record_t>(read_only);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0], (record_t{1, 2, 3}));
    EXPECT_EQ(records[1], (record_t{4, 5, 6}));
}

TEST_F(Mapping, OfIndicesCoversTheIndicesInUse) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(5));
    ASSERT_TRUE(elements.extend(3));
    EXPECT_EQ(map_indices(elements).size(), 3u);
}

TEST_F(Mapping, OfFeedbackCoversTheWholeBuffer) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(7));
    EXPECT_EQ(map_feedback<record_t>(feedback).size(), 2u);
    EXPECT_EQ(map_feedback<float>(feedback).size(), 7u);
    EXPECT_FALSE(is_mapped(feedback.buffer_id()));
}

TEST_F(Mapping, OfACopyWithALongerCountFailsInsteadOfReachingOut) {
    array_t array;
    ASSERT_TRUE(array.allocate(4, make_element_list({e_type_t::Position})));
    array_t copy = array;
    ASSERT_TRUE(array.extend(100));
    ASSERT_TRUE(copy.allocate(4, make_element_list({e_type_t::Position})));
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_FALSE(map_records<record_t>(array));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_VALUE));
}

}  // namespace
