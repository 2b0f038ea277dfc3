#include "model/nurbs/flat_sheet.h"

#include <gtest/gtest.h>

#include "model/nurbs/nurbs.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"

namespace {

using namespace ulk3d;

class FlatSheet : public testing::Test {
  protected:
    void make(std::uint64_t count1, std::uint64_t order1, std::uint64_t count2, std::uint64_t order2) {
        ASSERT_TRUE(nurbs.allocate(count1, order1, count2, order2));
        make_flat_sheet(nurbs);
    }

    std::vector<float> row(const matrix_t<float>& table, std::uint64_t index) const {
        const auto values = table.row(index);
        return {values.begin(), values.end()};
    }

    texture_t texture;
    polygon_t polygon;
    nurbs_t nurbs{&texture, &polygon};
};

TEST_F(FlatSheet, PointsAreAnEvenGridWithTheFirstRowAtTheBottom) {
    make(3, 2, 2, 2);
    const std::vector<pos3> places = {{-0.5F, -0.5F, 0}, {0, -0.5F, 0}, {0.5F, -0.5F, 0},
                                      {-0.5F, 0.5F, 0},  {0, 0.5F, 0},  {0.5F, 0.5F, 0}};
    ASSERT_EQ(nurbs.points.data.size(), places.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        EXPECT_EQ(nurbs.points.data[i], (control_point_t{places[i], {0.5F, 0.5F, 0.5F, 1.0F}})) << i;
    EXPECT_EQ(nurbs.weight.data, std::vector<float>(6, 1.0F));
}

TEST_F(FlatSheet, KnotsAreClampedAndEven) {
    make(5, 3, 4, 2);
    for (std::uint64_t r = 0; r < 4; ++r)
        EXPECT_EQ(row(nurbs.knot1, r), (std::vector<float>{0, 0, 0, 1.0F / 3, 2.0F / 3, 1, 1, 1})) << r;
    for (std::uint64_t c = 0; c < 5; ++c)
        EXPECT_EQ(row(nurbs.knot2, c), (std::vector<float>{0, 0, 1.0F / 3, 2.0F / 3, 1, 1})) << c;
}

TEST_F(FlatSheet, AsManyPointsAsTheOrderHaveNoKnotsBetween) {
    make(4, 4, 1, 1);
    EXPECT_EQ(row(nurbs.knot1, 0), (std::vector<float>{0, 0, 0, 0, 1, 1, 1, 1}));
    EXPECT_EQ(row(nurbs.knot2, 0), (std::vector<float>{0, 1}));
}

TEST_F(FlatSheet, ASinglePointLiesInTheMiddle) {
    make(1, 1, 1, 1);
    EXPECT_EQ(nurbs.points.data[0].position, (pos3{0, 0, 0}));
}

TEST_F(FlatSheet, StrangeSizesAreFilledToo) {
    make(2, 5, 3, 0);
    EXPECT_EQ(row(nurbs.knot1, 0), (std::vector<float>{0, 0, 0, 0, 0, 1, 1}));
    EXPECT_EQ(row(nurbs.knot2, 0), (std::vector<float>{0.25F, 0.5F, 0.75F}));
    make(0, 0, 0, 0);
    EXPECT_TRUE(nurbs.points.data.empty());
}

}  // namespace
