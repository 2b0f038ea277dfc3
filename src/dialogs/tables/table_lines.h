#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace ulk3d {

/// The lines of a large table, all of its rows or all of its columns, and where they are in pixels. There may
/// be millions of lines, of few sizes: some that occur once come first, and behind them comes a group that
/// repeats up to the end.
///
/// A block is what is never taken apart: one of the first lines, or a group.
class table_lines_t {
  public:
    /// `first_lines` of the `all_lines` come before the groups of `group_lines`; `pixels` are left empty
    /// between two lines.
    table_lines_t(unsigned all_lines, unsigned first_lines, unsigned group_lines, int pixels = 0)
        : count(all_lines), first(first_lines), sizes(first_lines + group_lines), spacing(pixels) {}

    unsigned lines() const { return count; }

    /// Makes a line, and the lines like it, at least so large.
    void fit(unsigned line, int size) { sizes[like(line)] = std::max(sizes[like(line)], size); }
    /// The size of all lines together.
    int least() const { return count == 0 ? 0 : static_cast<int>(narrow_begin(count) - spacing); }
    /// Spreads what a place is larger than the lines evenly over them.
    void fill(int size) { extra = std::max(size - least(), 0); }

    int begin(unsigned line) const {
        return static_cast<int>(narrow_begin(line) + (count == 0 ? 0 : std::int64_t{extra} * line / count));
    }
    /// The end of a line, or of several whose last one is `line` - 1, without the pixels behind it.
    int end(unsigned line) const { return begin(line) - spacing; }

    unsigned blocks() const { return block_of(count); }
    unsigned block_of(unsigned line) const { return line < first ? line : first + (line - first) / group(); }
    unsigned first_line(unsigned block) const {
        return block < first ? block : first + (block - first) * group();
    }
    /// The block that covers a pixel; the first or the last one for those outside.
    unsigned block_at(double pixel) const {
        unsigned low = 0, high = std::max(blocks(), 1U);
        while (high - low > 1) {
            const unsigned middle = low + (high - low) / 2;
            (begin(first_line(middle)) <= pixel ? low : high) = middle;
        }
        return low;
    }
    /// So many blocks cover any place of so many pixels.
    unsigned blocks_in(double pixels) const {
        const unsigned groups = blocks() > first ? blocks() - first : 1;
        const double size =
            std::max(begin(count) - begin(std::min(first, count)), 1) / static_cast<double>(groups);
        return first + static_cast<unsigned>(pixels / size) + 2;
    }

  private:
    unsigned group() const { return static_cast<unsigned>(sizes.size()) - first; }
    unsigned like(unsigned line) const { return line < first ? line : first + (line - first) % group(); }

    /// Where a line begins when nothing is spread.
    std::int64_t narrow_begin(unsigned line) const {
        std::int64_t place = std::int64_t{line} * spacing, group_size = 0;
        for (unsigned i = 0; i < std::min(line, first); ++i)
            place += sizes[i];
        if (line <= first)
            return place;
        for (unsigned i = first; i < sizes.size(); ++i)
            group_size += sizes[i];
        place += group_size * ((line - first) / group());
        for (unsigned i = first; i < like(line); ++i)
            place += sizes[i];
        return place;
    }

    unsigned count, first;
    std::vector<int> sizes;  ///< of the first lines and of one group
    int spacing;
    int extra = 0;
};

}  // namespace ulk3d
