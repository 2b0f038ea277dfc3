#include "support/polygon_builder.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "render/gl/mapped_span.h"

namespace ulk_test {

using namespace ulk3d;

namespace {

template <class Record>
std::vector<Record> records_of(const array_t& array) {
    const array_span<const Record> records(array);
    return {records.span().begin(), records.span().end()};
}

std::vector<std::uint32_t> indices_of(const element_array_t& elements) {
    const const_index_span indices(elements);
    return {indices.span().begin(), indices.span().end()};
}

template <class Record>
void write(array_t& array, const std::vector<Record>& records) {
    const array_span<Record> target(array);
    ASSERT_GE(target.size(), records.size());
    std::ranges::fill(target.span(), Record{});
    std::ranges::copy(records, target.span().begin());
}

}  // namespace

vertex_t vertex_at(float x, float y, float z) {
    return {{x, y, z}, {1, 1, 1, 1}, {}};
}

std::vector<vertex_t> vertices_at(const std::vector<pos3>& places) {
    std::vector<vertex_t> vertices;
    for (const pos3& place : places)
        vertices.push_back(vertex_at(place.x, place.y, place.z));
    return vertices;
}

void build_polygon(polygon_t& polygon, const std::vector<vertex_t>& vertices,
                   const std::vector<std::uint32_t>& elements) {
    build_polygon(polygon, vertices, elements, std::vector<frame_t>(vertices.size()));
}

void build_polygon(polygon_t& polygon, const std::vector<vertex_t>& vertices,
                   const std::vector<std::uint32_t>& elements, const std::vector<frame_t>& frames) {
    ASSERT_TRUE(polygon.allocate(vertices.size(), elements.size()));
    write(polygon.vertices, vertices);
    write(polygon.normals, frames);
    {
        const index_span target(polygon.elements);
        ASSERT_EQ(target.size(), elements.size());
        std::ranges::copy(elements, target.span().begin());
    }
    polygon.afterload(nullptr);
}

void select_polygons(polygon_t& polygon, const std::set<std::uint32_t>& ids) {
    polygon.clearpolygons();
    for (const std::uint32_t id : ids)
        polygon.selectpolygon(id);
}

std::vector<vertex_t> vertices_of(const polygon_t& polygon) {
    return records_of<vertex_t>(polygon.vertices);
}

std::vector<ulk3d::pos3> positions_of(const polygon_t& polygon) {
    std::vector<ulk3d::pos3> positions;
    for (const vertex_t& vertex : vertices_of(polygon))
        positions.push_back(vertex.position);
    return positions;
}

std::vector<frame_t> frames_of(const polygon_t& polygon) {
    return records_of<frame_t>(polygon.normals);
}

std::vector<std::uint32_t> elements_of(const polygon_t& polygon) {
    return indices_of(polygon.elements);
}

std::vector<std::uint32_t> selectelems_of(const polygon_t& polygon) {
    return indices_of(polygon.selectelems);
}

std::vector<float> pointsizes_of(const modeling_t& model) {
    return records_of<float>(model.pointsizes);
}

}  // namespace ulk_test
