#include "operations/separate_strips.h"

#include <initializer_list>

#include "model/strip_walk.h"
#include "render/gl/element_array.h"

namespace ulk3d {

namespace {

/// Writes the separated strips beside the given ones: in place, every cut would move all that stands behind
/// it.
class strip_separator_t {
  public:
    strip_separator_t(std::span<const std::uint32_t> strips, std::uint64_t vertices)
        : source(strips), vertex_count(vertices) {
        out.elements.reserve(source.size());
    }

    /// Takes the next triangle of the walk, and what stands before its last element.
    void take(const strip_triangle_t& triangle, bool marked) {
        const bool begins_strip = triangle.position != next_position;
        next_position = std::size_t{triangle.position} + 1;
        copy_up_to(std::size_t{triangle.position} + 2);
        if (begins_strip) {
            is_first = true;
            inside = false;
        }

        if (marked != inside && !is_first) {
            cut_before(triangle, marked);
        } else {
            append({triangle.c});
            if (marked)
                touch(is_first ? 3 : 1);
            inside = marked;
            is_first = false;
        }
        ++copied;
    }

    separated_strips_t finish() {
        copy_up_to(source.size());
        return std::move(out);
    }

  private:
    /// Begins a strip with the triangle. The first triangle of a strip is odd, so that an even one with more
    /// behind it gets a strip of its own and the rest begins another one.
    void cut_before(const strip_triangle_t& triangle, bool marked) {
        append({restart_mark, triangle.a, triangle.b, triangle.c});
        if (marked)
            touch(3);
        inside = marked;
        const std::size_t next = next_position + 2;
        if (triangle.flipped && next < source.size() && source[next] < vertex_count) {
            append({restart_mark, triangle.a, triangle.c});
            is_first = true;
            inside = false;
        }
    }

    void append(std::initializer_list<std::uint32_t> elements) {
        out.elements.insert(out.elements.end(), elements);
    }

    void copy_up_to(std::size_t end) {
        out.elements.insert(out.elements.end(), source.begin() + static_cast<std::ptrdiff_t>(copied),
                            source.begin() + static_cast<std::ptrdiff_t>(end));
        copied = end;
    }

    /// The last elements belong to a marked triangle.
    void touch(std::size_t count) {
        for (std::size_t place = out.elements.size() - count; place < out.elements.size(); ++place)
            out.touched.push_back(place);
    }

    std::span<const std::uint32_t> source;
    std::uint64_t vertex_count;
    separated_strips_t out;
    std::size_t copied = 0;  ///< so much of the source has been written
    std::size_t next_position =
        static_cast<std::size_t>(-1);  ///< of the triangle that would go on with the strip
    bool is_first = true;              ///< the triangle is the first one of a written strip
    bool inside = false;               ///< the triangle before it is of the set, in one strip with it
};

}  // namespace

separated_strips_t separate_strips(std::span<const std::uint32_t> elements, std::uint64_t vertex_count,
                                   const std::set<std::uint32_t>& selected) {
    strip_separator_t separator(elements, vertex_count);
    auto next_selected = selected.begin();
    walk_strips(elements, vertex_count, [&](const strip_triangle_t& triangle) {
        // The set and the ids both rise.
        const bool marked = next_selected != selected.end() && *next_selected == triangle.id;
        if (marked)
            ++next_selected;
        separator.take(triangle, marked);
    });
    return separator.finish();
}

}  // namespace ulk3d
