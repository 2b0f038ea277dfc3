#include "operations/strips/separate_strips.h"

#include <initializer_list>
#include <utility>

#include "model/polygon/strip_walk.h"
#include "render/gl/element_array.h"

namespace ulk3d {

namespace {

/// Writes the separated strips into a new list: cutting in place would move everything behind each cut.
class strip_separator_t {
  public:
    strip_separator_t(std::span<const std::uint32_t> strips, std::uint64_t vertices)
        : source(strips), vertex_count(vertices) {
        out.elements.reserve(source.size());
    }

    /// Takes the next triangle of the walk, and the elements before its last one.
    void take(const strip_triangle_t& triangle, bool marked) {
        if (triangle.position != next_position)
            is_first = true;
        next_position = std::size_t{triangle.position} + 1;
        copy_up_to(std::size_t{triangle.position} + 2);

        if (!is_first && marked != previous_marked) {
            cut_before(triangle, marked);
        } else {
            append({triangle.c});
            if (marked)
                touch(is_first ? 3 : 1);
            is_first = false;
        }
        previous_marked = marked;
        ++copied;
    }

    separated_strips_t finish() {
        copy_up_to(source.size());
        return std::move(out);
    }

  private:
    /// Begins a strip with the triangle. An even triangle becomes the first one of its new strip, which is
    /// odd: what continues behind it would be flipped, so it begins another strip.
    void cut_before(const strip_triangle_t& triangle, bool marked) {
        append({restart_mark, triangle.a, triangle.b, triangle.c});
        if (marked)
            touch(3);
        const std::size_t next = next_position + 2;
        if (triangle.flipped && next < source.size() && source[next] < vertex_count) {
            append({restart_mark, triangle.a, triangle.c});
            is_first = true;
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

    /// Records that the last elements belong to a selected triangle.
    void touch(std::size_t count) {
        for (std::size_t place = out.elements.size() - count; place < out.elements.size(); ++place)
            out.touched.push_back(place);
    }

    std::span<const std::uint32_t> source;
    std::uint64_t vertex_count;
    separated_strips_t out;
    std::size_t copied = 0;  ///< number of elements of the source that have been written
    /// The position of the triangle that would continue the strip of the last one.
    std::size_t next_position = static_cast<std::size_t>(-1);
    bool is_first = true;          ///< the next triangle begins a strip in the written list
    bool previous_marked = false;  ///< the last triangle was selected
};

}  // namespace

separated_strips_t separate_strips(std::span<const std::uint32_t> elements, std::uint64_t vertex_count,
                                   const std::set<std::uint32_t>& selected) {
    strip_separator_t separator(elements, vertex_count);
    auto next_selected = selected.begin();
    walk_strips(elements, vertex_count, [&](const strip_triangle_t& triangle) {
        // Both the set and the ids ascend.
        const bool marked = next_selected != selected.end() && *next_selected == triangle.id;
        if (marked)
            ++next_selected;
        separator.take(triangle, marked);
    });
    return separator.finish();
}

}  // namespace ulk3d
