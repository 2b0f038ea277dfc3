#include "model/nurbs/nurbs_normals.h"

#include <algorithm>

#include "model/math/vectors.h"

namespace ulk3d {
namespace {

/// The differences at each sample: forwards along its row and its column, then backwards.
class frame_filler_t {
  public:
    frame_filler_t(std::span<const pos3> sampled, std::uint64_t columns, std::uint64_t rows,
                   std::span<work_frame_t> filled)
        : positions(sampled), W(columns), R(rows), frames(filled) {}

    void fill() {
        fill_inner_vertices();
        for (std::uint64_t r = 1; r + 1 < R; ++r)
            fill_row_ends(r);
        for (std::uint64_t c = 1; c + 1 < W; ++c)
            fill_column_ends(c);
        fill_corners();
    }

  private:
    const pos3& P(std::uint64_t r, std::uint64_t c) const { return positions[r * W + c]; }
    work_frame_t& frame(std::uint64_t r, std::uint64_t c) { return frames[r * W + c]; }

    void fill_inner_vertices() {
        for (std::uint64_t r = 1; r + 1 < R; ++r) {
            for (std::uint64_t c = 1; c + 1 < W; ++c)
                frame(r, c) = {P(r, c + 1) - P(r, c), P(r + 1, c) - P(r, c), P(r, c) - P(r, c - 1),
                               P(r, c) - P(r - 1, c)};
        }
    }

    void fill_row_ends(std::uint64_t r) {
        const pos3& a = P(r, 0);
        const pos3& b = P(r, 1);
        const pos3& e = P(r, W - 1);
        const pos3& f = P(r, W - 2);
        const work_frame_t seam{b - a, P(r + 1, 0) - a, e - f, e - P(r - 1, W - 1)};
        if (f_eq(a, e) && f_eq(P(r + 1, 0), P(r + 1, W - 1)) && f_eq(P(r - 1, 0), P(r - 1, W - 1)) &&
            is_smooth(seam)) {
            frame(r, 0) = frame(r, W - 1) = seam;
            return;
        }
        if (f_eq(P(r + 1, 0), P(r - 1, 0)))
            frame(r, 0) = {b - a, P(r + 1, 1) - b, b - a, b - P(r - 1, 1)};
        else
            frame(r, 0) = {b - a, P(r + 1, 0) - a, b - a, a - P(r - 1, 0)};
        // A fold at the right end has no second vector, unlike one at the left end.
        if (f_eq(P(r + 1, W - 1), P(r - 1, W - 1)))
            frame(r, W - 1) = {e - f, dir3{}, e - f, f - P(r - 1, W - 2)};
        else
            frame(r, W - 1) = {e - f, P(r + 1, W - 1) - e, e - f, e - P(r - 1, W - 1)};
    }

    void fill_column_ends(std::uint64_t c) {
        const std::uint64_t top = R - 1;
        const work_frame_t seam{P(0, c + 1) - P(0, c), P(1, c) - P(0, c), P(top, c) - P(top, c - 1),
                                P(top, c) - P(top - 1, c)};
        if (f_eq(P(0, c), P(top, c)) && f_eq(P(0, c + 1), P(top, c + 1)) &&
            f_eq(P(0, c - 1), P(top, c - 1)) && is_smooth(seam)) {
            frame(0, c) = frame(top, c) = seam;
            return;
        }
        fill_column_end(c, 0, 1, P(1, c) - P(0, c));
        fill_column_end(c, top, top - 1, P(top, c) - P(top - 1, c));
    }

    /// The end of a column at row r; `rise` is its only difference along the column. In a pole the row has no
    /// length, and the differences along it are those of the neighbouring row.
    void fill_column_end(std::uint64_t c, std::uint64_t r, std::uint64_t neighbour, const dir3& rise) {
        const std::uint64_t row = f_eq(P(r, c + 1), P(r, c - 1)) ? neighbour : r;
        frame(r, c) = {P(row, c + 1) - P(row, c), rise, P(row, c) - P(row, c - 1), rise};
    }

    void fill_corners() {
        if (fill_joined_corners())
            return;
        fill_plain_corners();
        fill_closed_row(0, 1);
        fill_closed_column(0, 1);
        fill_closed_column(W - 1, W - 2);
        fill_closed_row(R - 1, R - 2);
    }

    /// Handles the case that all four corners are one place in which the surface closes smoothly both ways.
    bool fill_joined_corners() {
        const std::uint64_t top = R - 1;
        const std::uint64_t right = W - 1;
        const pos3& corner = P(0, 0);
        const work_frame_t joined{P(0, 1) - corner, P(1, 0) - corner, P(top, right) - P(top, right - 1),
                                  P(top, right) - P(top - 1, right)};
        const bool coincide = f_eq(corner, P(0, right)) && f_eq(corner, P(top, 0)) &&
                              f_eq(corner, P(top, right)) && f_eq(P(0, right), P(top, right)) &&
                              f_eq(P(top, 0), P(top, right)) && f_eq(P(0, right), P(top, 0));
        const bool neighbours_coincide = f_eq(P(0, 1), P(top, 1)) && f_eq(P(1, 0), P(1, right)) &&
                                         f_eq(P(0, right - 1), P(top, right - 1)) &&
                                         f_eq(P(top - 1, 0), P(top - 1, right));
        if (!coincide || !neighbours_coincide || !is_smooth(joined))
            return false;
        frame(0, 0) = frame(0, right) = frame(top, 0) = frame(top, right) = joined;
        return true;
    }

    void fill_plain_corners() {
        for (const std::uint64_t r : {std::uint64_t{0}, R - 1}) {
            for (const std::uint64_t c : {std::uint64_t{0}, W - 1})
                frame(r, c) = {along_row(r, c), along_column(r, c), along_row(r, c), along_column(r, c)};
        }
    }

    /// The corners of the bottom or top row, when the ends of the row meet and those of the row next to it do
    /// too.
    void fill_closed_row(std::uint64_t r, std::uint64_t neighbour) {
        if (!f_eq(P(r, 0), P(r, W - 1)) || !f_eq(P(neighbour, 0), P(neighbour, W - 1)))
            return;
        const dir3 left_rise = along_column(r, 0);
        frame(r, 0) = {along_row(neighbour, 0), left_rise, along_row(r, 0), left_rise};
        const dir3 right_rise = along_column(r, W - 1);
        frame(r, W - 1) = {along_row(r, W - 1), right_rise, along_row(neighbour, W - 1), right_rise};
    }

    /// The corners of the left or right column, when the ends of the column meet and those of the column next
    /// to it do too.
    void fill_closed_column(std::uint64_t c, std::uint64_t neighbour) {
        const std::uint64_t top = R - 1;
        if (!f_eq(P(0, c), P(top, c)) || !f_eq(P(0, neighbour), P(top, neighbour)))
            return;
        const dir3 low_rise = along_column(0, neighbour);
        frame(0, c) = {along_row(0, c), low_rise, along_row(0, c), low_rise};
        const dir3 high_rise = along_column(top, neighbour);
        frame(top, c) = {along_row(top, c), high_rise, along_row(top - 1, c), high_rise};
    }

    /// The first or last difference of a row: c is 0 or W - 1.
    dir3 along_row(std::uint64_t r, std::uint64_t c) const {
        return c == 0 ? P(r, 1) - P(r, 0) : P(r, c) - P(r, c - 1);
    }
    /// The first or last difference of a column: r is 0 or R - 1.
    dir3 along_column(std::uint64_t r, std::uint64_t c) const {
        return r == 0 ? P(1, c) - P(0, c) : P(r, c) - P(r - 1, c);
    }

    /// True when the surface continues across a seam in the direction in which it arrived.
    static bool is_smooth(const work_frame_t& seam) {
        return f_gt(dot(seam.first, seam.third), 0) && f_gt(dot(seam.second, seam.fourth), 0);
    }

    std::span<const pos3> positions;
    const std::uint64_t W;  ///< samples in a row
    const std::uint64_t R;  ///< rows
    std::span<work_frame_t> frames;
};

}  // namespace

void fill_work_frames(std::span<const pos3> positions, std::uint32_t resolution1, std::uint32_t resolution2,
                      std::span<work_frame_t> frames) {
    if (resolution1 < 2 || resolution2 < 2)
        std::ranges::fill(frames, work_frame_t{});
    else
        frame_filler_t(positions, resolution1, resolution2, frames).fill();
}

}  // namespace ulk3d
