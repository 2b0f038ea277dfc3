#include "render/gl/array.h"

#include "support/gl_context.h"

namespace {

using namespace ulk3d;

struct Array : ulk_test::gl_test {};

TEST_F(Array, AllocateSetsCountsAndStride) {
    array_t array;
    ASSERT_TRUE(array.allocate(5, make_element_list({e_type_t::Position, e_type_t::RGBA})));
    EXPECT_EQ(array.element_count(), 5);
    EXPECT_EQ(array.vertex_stride(), 7u);
    EXPECT_EQ(array.byte_size(), 5 * 7 * 4);
}

}  // namespace
