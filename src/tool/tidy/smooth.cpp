#include "tool/tidy/smooth.h"

#include <cmath>
#include <numbers>
#include <numeric>

#include "tool/tidy/corner_frames.h"

namespace ulktool {

namespace {

/// Below all cosines.
constexpr double over_all_edges = -2;

}  // namespace

void smooth(triangle_mesh_t& mesh, double degrees) {
    const corner_frames_t made = smooth_corner_frames(mesh, std::cos(degrees * std::numbers::pi / 180));
    // From a vertex's entry on, its frames take up places in the new mesh.
    std::vector<std::uint32_t> places(mesh.vertices.size() + 1);
    for (const corner_frame_t& frame : made.frames)
        ++places[frame.vertex + 1];
    std::partial_sum(places.begin(), places.end(), places.begin());
    const auto place_of = [&places](const corner_frame_t& frame) {
        return places[frame.vertex] + frame.rank;
    };

    triangle_mesh_t smoothed;
    smoothed.vertices.resize(made.frames.size());
    smoothed.frames.resize(made.frames.size());
    for (const corner_frame_t& frame : made.frames) {
        smoothed.vertices[place_of(frame)] = mesh.vertices[frame.vertex];
        smoothed.frames[place_of(frame)] = frame.frame;
    }
    smoothed.triangles = std::move(mesh.triangles);
    auto of_corner = made.of_corner.begin();
    for (triangle_corners_t& corners : smoothed.triangles)
        for (std::uint32_t& vertex : corners)
            vertex = place_of(made.frames[*of_corner++]);
    mesh = std::move(smoothed);
}

void renew_frames(triangle_mesh_t& mesh, const std::vector<bool>& renewed) {
    for (const corner_frame_t& made : smooth_corner_frames(mesh, over_all_edges).frames)
        if (made.rank == 0 && renewed[made.vertex])
            mesh.frames[made.vertex] = made.frame;
}

}  // namespace ulktool
