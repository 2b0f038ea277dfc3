#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/math/records.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// The plane of the points p with normal dot p = d. Values are computed in single precision, from left to
/// right.
struct cut_plane_t {
    dir3 normal;
    float d = 0;
};

/// Finds the triangles of a mesh that are not entirely on one side of a plane, without looking at each of
/// them, while the mesh is being split.
///
/// The elements are divided into runs of consecutive positions, each with the box of the vertices that its
/// triangles use. A run is skipped when all corners of its box are on one side. That is exact: rounded sums
/// and products are monotonic, so that no vertex of the run has a value beyond that of the box's corner. A
/// run with a vertex that is not finite is never skipped.
class strip_runs_t {
  public:
    explicit strip_runs_t(const strip_mesh_t& of) : mesh(of) { build(); }

    /// The triangle that closes at `position`; `run_count` is the number of indices of its strip up to there.
    struct place_t {
        std::uint32_t position = 0;
        std::uint32_t run_count = 0;
    };

    /// A triangle with corners on both sides of a plane, or with a corner in it.
    struct candidate_t {
        std::uint32_t run;
        std::uint32_t offset;  ///< from the beginning of the run to the closing position
        bool flipped;
        /// The corner that is alone on its side, in the order mi2, mi1, i; 3 when a corner is in the plane or
        /// its value is not-a-number.
        std::uint32_t lone;

        bool has_lone_corner() const { return lone < 3; }
    };

    /// All runs that the plane may meet, in order. Valid until the next call.
    const std::vector<std::uint32_t>& meeting(const cut_plane_t& plane);

    /// Appends the candidates of a run, in order.
    void append_candidates(std::vector<candidate_t>& candidates, std::uint32_t run, const cut_plane_t& plane);

    /// The corners mi2, mi1, i of a candidate.
    std::array<pos3, 3> corners(const candidate_t& candidate) const;

    place_t place(const candidate_t& candidate) const;
    std::uint32_t end_of(std::uint32_t run) const { return runs[run].begin + runs[run].size; }

    /// Call after the mesh was split in a run and has grown by `growth` positions there.
    void update(std::uint32_t run, std::uint32_t growth);

    /// Divides the elements again when splits have made a run long. The numbers of runs change.
    void tidy();

  private:
    /// What is known about 64 positions, as bits.
    struct word_t {
        std::uint64_t closing = 0;  ///< a triangle closes here
        std::uint64_t flipped = 0;  ///< and is flipped, if an even number of indices comes before the run
        std::uint64_t leading = 0;  ///< before the first restart mark: an odd number inverts `flipped`
    };

    struct run_t {
        std::uint32_t begin = 0, size = 0;
        std::uint32_t count_before = 0;  ///< number of indices of the strip before the run
        std::uint32_t stride = 0;
        std::vector<float> coordinates;  ///< all x, all y, all z of positions begin - 2 on, `stride` each
        std::vector<word_t> words;       ///< from position begin - 2 on
    };

    /// Boxes by axis: low x, y, z, then high x, y, z.
    struct boxes_t {
        std::array<std::vector<float>, 6> bounds;
        void resize(std::size_t count);
        std::array<float, 6> at(std::size_t n) const;
        void set(std::size_t n, const std::array<float, 6>& box);
    };

    void build();
    void fill(std::uint32_t run);
    void fill_words(run_t& run) const;
    void fill_group(std::size_t group);
    std::uint32_t count_at_end(const run_t& run) const;
    static std::uint64_t boxes_met(const boxes_t& boxes, const cut_plane_t& plane, std::size_t first,
                                   std::size_t count);

    const strip_mesh_t& mesh;
    std::vector<run_t> runs;
    boxes_t run_boxes, group_boxes;
    std::vector<std::uint32_t> met;
    bool overgrown = false;
};

}  // namespace ulk3d
