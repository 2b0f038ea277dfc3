#include "gl/render/models/phong_reference.h"

#include <algorithm>
#include <cmath>

namespace ulk_test {

using namespace ulk3d;

namespace {

using vector_t = std::array<double, 3>;

double dot(const vector_t& a, const vector_t& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

vector_t scaled(const vector_t& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}

vector_t sum(const vector_t& a, const vector_t& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

vector_t unit(const vector_t& a) {
    return scaled(a, 1.0 / std::sqrt(dot(a, a)));
}

template <class Record>
vector_t vector_of(const Record& record) {
    return {record.x, record.y, record.z};
}

/// Row vector times matrix, w being 1.
vector_t moved(const vector_t& p, const mtx3w& m) {
    vector_t result{};
    for (std::size_t j = 0; j < 3; ++j)
        result[j] = p[0] * m[j] + p[1] * m[4 + j] + p[2] * m[8 + j] + m[12 + j];
    return result;
}

/// The transposed product, w being 0.
vector_t turned(const dir3& v, const mtx3w& m) {
    vector_t result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = m[4 * i] * v.x + m[4 * i + 1] * v.y + m[4 * i + 2] * v.z;
    return result;
}

/// Weights of the corners at (x, y).
vector_t weights_at(const std::array<vector_t, 3>& corners, double x, double y) {
    const auto twice_area = [](double ax, double ay, double bx, double by, double cx, double cy) {
        return (bx - ax) * (cy - ay) - (cx - ax) * (by - ay);
    };
    const auto& [a, b, c] = corners;
    const double whole = twice_area(a[0], a[1], b[0], b[1], c[0], c[1]);
    return {twice_area(x, y, b[0], b[1], c[0], c[1]) / whole,
            twice_area(a[0], a[1], x, y, c[0], c[1]) / whole,
            twice_area(a[0], a[1], b[0], b[1], x, y) / whole};
}

rgba_t phong(const vector_t& view_dir, const vector_t& light_dir, const rgba_t& color, double shininess,
             const map_samples_t& maps) {
    const vector_t v = unit(view_dir);
    const vector_t l = unit(light_dir);
    const double facing = dot(l, maps.normal);
    const vector_t r = sum(scaled(l, -1), scaled(maps.normal, 2 * facing));
    const double highlight = std::pow(std::max(dot(r, v), 0.0), shininess);
    const double lit = std::max(facing, 0.0);
    rgba_t result{};
    for (std::size_t i = 0; i < 4; ++i)
        result[i] = color[i] * maps.color[i] * (i < 3 ? lit : 1.0) + maps.specular[i] * highlight;
    return result;
}

rgba_t blended(const rgba_t& fragment, const rgba_t& ground, bool by_alpha) {
    rgba_t result{};
    const double alpha = std::clamp(fragment[3], 0.0, 1.0);
    for (std::size_t i = 0; i < 4; ++i)
        result[i] = std::clamp(
            std::clamp(fragment[i], 0.0, 1.0) * (by_alpha ? alpha : 1.0) + ground[i] * (1 - alpha), 0.0, 1.0);
    return result;
}

}  // namespace

rgba_t shade(const reference_triangle_t& triangle, const surface_view_t& view, double x, double y,
             double color_factor, const map_samples_t& maps) {
    std::array<vector_t, 3> corners{};
    std::array<vector_t, 3> light_dirs{};
    std::array<vector_t, 3> view_dirs{};
    for (std::size_t i = 0; i < 3; ++i) {
        const frame_t& frame = triangle.frames[i];
        const std::array<vector_t, 3> axes{turned(frame.tangent, view.invModelview),
                                           turned(frame.binormal, view.invModelview),
                                           turned(frame.normal, view.invModelview)};
        const vector_t position = moved(vector_of(triangle.vertices[i].position), view.Modelview);
        const vector_t to_light = unit(sum(vector_of(view.LightPosition), scaled(position, -1)));
        const vector_t to_eye = unit(scaled(position, -1));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            light_dirs[i][axis] = dot(to_light, axes[axis]);
            view_dirs[i][axis] = dot(to_eye, axes[axis]);
        }
        corners[i] = moved(position, view.Projection);
    }
    const vector_t weights = weights_at(corners, x, y);
    vector_t light_dir{};
    vector_t view_dir{};
    rgba_t color{};
    for (std::size_t i = 0; i < 3; ++i) {
        light_dir = sum(light_dir, scaled(light_dirs[i], weights[i]));
        view_dir = sum(view_dir, scaled(view_dirs[i], weights[i]));
        const col3a& c = triangle.vertices[i].color;
        const rgba_t corner_color{c.r, c.g, c.b, c.a * color_factor};
        for (std::size_t k = 0; k < 4; ++k)
            color[k] += corner_color[k] * weights[i];
    }
    return phong(view_dir, light_dir, color, view.Shininess, maps);
}

rgba_t blend_by_alpha(const rgba_t& fragment, const rgba_t& ground) {
    return blended(fragment, ground, true);
}

rgba_t blend_added(const rgba_t& fragment, const rgba_t& ground) {
    return blended(fragment, ground, false);
}

}  // namespace ulk_test
