#include <gmock/gmock.h>

#include <cmath>
#include <iostream>
#include <random>

#include "model/polygon/polygon.h"
#include "render/gl/mapped_span.h"
#include "render/models/glpolygon.h"
#include "support/captured_stream.h"
#include "support/failing_stores.h"
#include "support/gl_context.h"
#include "support/gl_state.h"
#include "support/polygon_builder.h"

namespace ulk3d {
namespace {

struct vector_t {
    double x, y, z;
};

vector_t sum(const dir3& a, const dir3& b) {
    return {double{a.x} + b.x, double{a.y} + b.y, double{a.z} + b.z};
}

template <class A, class B>
vector_t cross(const A& a, const B& b) {
    return {double{a.y} * b.z - double{a.z} * b.y, double{a.z} * b.x - double{a.x} * b.z,
            double{a.x} * b.y - double{a.y} * b.x};
}

vector_t unit(const vector_t& a) {
    const double length = std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
    return {a.x / length, a.y / length, a.z / length};
}

/// The frame of a vertex in double precision.
struct expected_frame_t {
    vector_t tangent, binormal, normal;
};

expected_frame_t frame_of(const work_frame_t& work) {
    const vector_t one = cross(work.first, work.second);
    const vector_t other = cross(work.third, work.fourth);
    expected_frame_t frame{};
    frame.normal = unit({one.x + other.x, one.y + other.y, one.z + other.z});
    frame.tangent = unit(sum(work.first, work.third));
    frame.binormal = cross(frame.normal, frame.tangent);
    return frame;
}

void expect_near(const dir3& is, const vector_t& expected, std::size_t vertex) {
    EXPECT_NEAR(is.x, expected.x, 1e-5) << "vertex " << vertex;
    EXPECT_NEAR(is.y, expected.y, 1e-5) << "vertex " << vertex;
    EXPECT_NEAR(is.z, expected.z, 1e-5) << "vertex " << vertex;
}

class FramePass : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        ulk_test::gl_test::SetUp();
        target.bind();
        ASSERT_TRUE(glpolygon.init(nullptr));
    }

    /// A strip along x with the work frames of `works`.
    void build(polygon_t& polygon, const std::vector<work_frame_t>& works) {
        std::vector<vertex_t> vertices;
        std::vector<std::uint32_t> elements;
        for (std::uint32_t i = 0; i < works.size(); ++i) {
            vertices.push_back(ulk_test::vertex_at(static_cast<float>(i), static_cast<float>(i % 2), 0));
            elements.push_back(i);
        }
        ulk_test::build_polygon(polygon, vertices, elements);
        set_work_frames(polygon, works);
    }

    static void set_work_frames(polygon_t& polygon, const std::vector<work_frame_t>& works) {
        const array_span<work_frame_t> records(polygon.wknmls);
        ASSERT_EQ(records.size(), works.size());
        std::copy(works.begin(), works.end(), records.begin());
    }

    std::string errors_of_update(polygon_t& polygon) {
        const ulk_test::captured_stream errors(std::cerr);
        EXPECT_TRUE(glpolygon.update_frames(polygon));
        return errors.text();
    }

    ulk_test::render_target_t target{16, 16};
    glpolygon_t glpolygon;
};

/// Along x and along y, so that the frame is that of the axes.
constexpr work_frame_t axes{{1, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 1, 0}};
/// The same turned by 90 degrees about x.
constexpr work_frame_t turned_axes{{1, 0, 0}, {0, 0, 1}, {1, 0, 0}, {0, 0, 1}};

TEST_F(FramePass, AveragesTheTwoFramesOfEachVertex) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> length(0.25F, 2.0F);
    std::uniform_real_distribution<float> noise(-0.2F, 0.2F);
    std::vector<work_frame_t> works;
    for (int i = 0; i < 200; ++i) {
        const auto along = [&](dir3 axis) {
            const float scale = length(random);
            return dir3{axis.x * scale + noise(random), axis.y * scale + noise(random),
                        axis.z * scale + noise(random)};
        };
        works.push_back({along({1, 0, 0}), along({0, 1, 0}), along({1, 0, 0}), along({0, 1, 0})});
    }
    polygon_t polygon;
    build(polygon, works);
    EXPECT_EQ(errors_of_update(polygon), "");
    const std::vector<frame_t> frames = ulk_test::frames_of(polygon);
    for (std::size_t i = 0; i < works.size(); ++i) {
        const expected_frame_t expected = frame_of(works[i]);
        expect_near(frames[i].tangent, expected.tangent, i);
        expect_near(frames[i].binormal, expected.binormal, i);
        expect_near(frames[i].normal, expected.normal, i);
    }
}

TEST_F(FramePass, WithoutMemoryKeepsTheFramesAndCanBeRunAgain) {
    polygon_t polygon;
    build(polygon, {axes, turned_axes, axes});
    const std::vector<frame_t> before = ulk_test::frames_of(polygon);
    {
        const ulk_test::failing_stores failing(1);
        const ulk_test::captured_stream errors(std::cerr);
        EXPECT_FALSE(glpolygon.update_frames(polygon));
        EXPECT_EQ(errors.text(), "buffer_t::MapBufferRange(): ptr is NULL.\n");
    }
    EXPECT_EQ(ulk_test::frames_of(polygon), before);
    EXPECT_EQ(errors_of_update(polygon), "");
    EXPECT_EQ(ulk_test::frames_of(polygon)[1], (frame_t{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}));
}

TEST_F(FramePass, WithoutMemoryForWhatItReadsKeepsTheFrames) {
    polygon_t polygon;
    build(polygon, {axes});
    // The work normals are asked for again, and what they were is lost.
    ASSERT_TRUE(polygon.wknmls.allocate(8, work_frame_elements()));
    const std::vector<frame_t> before = ulk_test::frames_of(polygon);
    ASSERT_TRUE(polygon.normalfeedback.provide());
    const ulk_test::failing_stores failing(1);
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_FALSE(glpolygon.update_frames(polygon));
    EXPECT_EQ(errors.text(), "buffer_t::MapBufferRange(): ptr is NULL.\narray pointer is NULL.\n");
    EXPECT_EQ(ulk_test::frames_of(polygon), before);
}

TEST_F(FramePass, WritesTangentBinormalNormalInThisOrder) {
    polygon_t polygon;
    build(polygon, {axes, turned_axes, axes});
    EXPECT_TRUE(glpolygon.update_frames(polygon));
    const std::vector<frame_t> frames = ulk_test::frames_of(polygon);
    EXPECT_EQ(frames[0], (frame_t{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
    EXPECT_EQ(frames[1], (frame_t{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}));
}

TEST_F(FramePass, TakesThePairThatIsThereWhenTheOtherIsZero) {
    polygon_t polygon;
    build(polygon, {{{2, 0, 0}, {0, 3, 0}, {}, {}}, {{}, {}, {0, 5, 0}, {0, 0, 2}}, axes});
    EXPECT_TRUE(glpolygon.update_frames(polygon));
    const std::vector<frame_t> frames = ulk_test::frames_of(polygon);
    EXPECT_EQ(frames[0], (frame_t{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
    EXPECT_EQ(frames[1], (frame_t{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}));
}

TEST_F(FramePass, VertexWithFourZeroVectorsLeavesItsNeighboursRight) {
    polygon_t polygon;
    build(polygon, {axes, {}, turned_axes});
    EXPECT_EQ(errors_of_update(polygon), "");
    const std::vector<frame_t> frames = ulk_test::frames_of(polygon);
    EXPECT_EQ(frames[0].normal, (dir3{0, 0, 1}));
    EXPECT_EQ(frames[2].normal, (dir3{0, -1, 0}));
}

TEST_F(FramePass, PrintsNothingForNoVertices) {
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(0, 0));
    EXPECT_EQ(errors_of_update(polygon), "");
}

TEST_F(FramePass, FewerVerticesThanTheBufferWasMadeForPrintALineAndTheCopyFollows) {
    polygon_t polygon;
    build(polygon, {axes, axes, axes, axes});
    EXPECT_TRUE(glpolygon.update_frames(polygon));
    set_work_frames(polygon, {turned_axes, turned_axes, turned_axes, turned_axes});
    ASSERT_TRUE(polygon.vertices.extend(3));
    EXPECT_EQ(errors_of_update(polygon), "glpolygon buf != gened: 4, 3\n");
    const std::vector<frame_t> frames = ulk_test::frames_of(polygon);
    EXPECT_EQ(frames[2].normal, (dir3{0, -1, 0}));
    EXPECT_EQ(frames[3].normal, (dir3{0, 0, 1})) << "the record that was not written is the former one";
}

TEST_F(FramePass, BufferThatIsTooSmallPrintsBothLinesAndTheCopyFollows) {
    polygon_t polygon;
    build(polygon, {axes, turned_axes, axes, axes});
    ASSERT_TRUE(polygon.normalfeedback.allocate(2 * 9));
    EXPECT_EQ(errors_of_update(polygon), "glpolygon wrted != gened: 2, 4\nglpolygon buf != gened: 2, 4\n");
    EXPECT_EQ(ulk_test::frames_of(polygon)[1].normal, (dir3{0, -1, 0}));
}

// The frames' array keeps its size when a model is made anew with fewer vertices, the feedback buffer does
// not.
TEST_F(FramePass, ModelMadeAnewWithFewerVerticesGetsItsFrames) {
    polygon_t polygon;
    build(polygon, {axes, axes, axes, axes, axes, axes});
    EXPECT_TRUE(glpolygon.update_frames(polygon));
    build(polygon, {turned_axes, turned_axes, turned_axes});
    EXPECT_EQ(errors_of_update(polygon), "");
    EXPECT_EQ(ulk_test::frames_of(polygon)[2].normal, (dir3{0, -1, 0}));
}

// Neither the vertices nor the frames in use limit the copy: what the pass has not written is copied with the
// rest.
TEST_F(FramePass, CopyRunsOverTheWholeArrayOfFrames) {
    polygon_t polygon;
    build(polygon, {axes, axes, axes, axes});
    EXPECT_TRUE(glpolygon.update_frames(polygon));
    const frame_t strange{{7, 7, 7}, {8, 8, 8}, {9, 9, 9}};
    polygon.normals.write_one(3, &strange);
    ASSERT_TRUE(polygon.vertices.extend(3));
    ASSERT_TRUE(polygon.normals.extend(3));
    EXPECT_EQ(errors_of_update(polygon), "glpolygon buf != gened: 4, 3\n");
    ASSERT_TRUE(polygon.normals.extend(4));
    EXPECT_EQ(ulk_test::frames_of(polygon)[3], (frame_t{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST_F(FramePass, RasterisesThePointsThatItDraws) {
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    polygon_t polygon;
    build(polygon, {axes, axes, axes});
    {
        const array_span<vertex_t> vertices(polygon.vertices);
        for (vertex_t& vertex : vertices)
            vertex.position = {0.0625F, 0.0625F, 0.9F};  // the centre of a pixel
    }
    EXPECT_TRUE(glpolygon.update_frames(polygon));
    EXPECT_EQ(target.read_pixels().at(8, 7), (libutils::rgba_picture_t::pixel_t{255, 255, 255, 255}));
}

TEST_F(FramePass, LeavesNothingBound) {
    polygon_t polygon;
    build(polygon, {axes, axes, axes});
    EXPECT_TRUE(glpolygon.update_frames(polygon));
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0);
    EXPECT_EQ(ulk_test::gl_integer(GL_ARRAY_BUFFER_BINDING), 0);
    EXPECT_EQ(ulk_test::gl_integer(GL_TRANSFORM_FEEDBACK_BUFFER_BINDING), 0);
    EXPECT_EQ(ulk_test::gl_integer(GL_VERTEX_ARRAY_BINDING), 0);
}

}  // namespace
}  // namespace ulk3d
