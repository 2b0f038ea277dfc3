#include "fuzz/parts/scene_mutator.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "formats/scene/key_names.h"
#include "fuzz/parts/scene_lines.h"

namespace ulk_test {

namespace {

using ulk3d::key_names_t;

/// A run of lines, as iterators' distances.
auto at(scene_lines_t& lines, std::size_t place) {
    return lines.begin() + static_cast<std::ptrdiff_t>(place);
}

/// Numbers at which something may change: limits of types, of the readers and of the drawn surfaces.
constexpr const char* numbers[] = {
    "0",     "1",          "2",          "3",          "4",          "5",    "8",       "33",   "64",
    "65",    "-1",         "-0",         "0.5",        "1/3",        "255",  "256",     "1024", "1025",
    "65536", "2147483647", "2147483648", "4294967295", "4294967296", "0x10", "010",     "nan",  "inf",
    "-inf",  "1e38",       "-1e38",      "1e39",       "1e-45",      "1/0",  "0/0",     "1e-6", "(1+3)*2",
    "((1",   "1))",        "-(2)",       "1e",         "",           " 1",   "360/8*3", "45",   "90",
};
/// Counts of points, orders and resolutions that still make a small scene.
constexpr const char* small_counts[] = {"0", "1", "2", "3", "4", "5", "6", "7"};
constexpr const char* words[] = {"true", "false", "1", "a.png", "sub/b c.jpg", "../x.tga", "sky.png", ""};

constexpr std::size_t most_lines = 2000;
constexpr std::size_t longest_run = 8;

/// One mutation or cross-over under way.
class scene_changer_t {
  public:
    scene_changer_t(std::string_view text, std::uint64_t seed, byte_mutator_t bytes_mutator)
        : lines(lines_of(text)), random(seed), mutate_bytes(bytes_mutator) {}

    void mutate() {
        if (lines.empty())
            lines.emplace_back("begin polygon_surface,0,0");
        using change_t = void (scene_changer_t::*)();
        // Numbers most often: most of a scene is numbers.
        static constexpr change_t changes[] = {
            &scene_changer_t::change_number, &scene_changer_t::change_number, &scene_changer_t::change_number,
            &scene_changer_t::change_counts, &scene_changer_t::change_counts, &scene_changer_t::insert_key,
            &scene_changer_t::insert_key,    &scene_changer_t::delete_lines,  &scene_changer_t::double_lines,
            &scene_changer_t::swap_lines,    &scene_changer_t::splice_lines,  &scene_changer_t::delete_block,
            &scene_changer_t::delete_block,  &scene_changer_t::double_block,  &scene_changer_t::remove_end,
            &scene_changer_t::change_bytes,  &scene_changer_t::change_bytes,  &scene_changer_t::change_bytes,
        };
        for (std::size_t count = 1 + random.below(3); count > 0; --count)
            (this->*random.of(changes))();
        fit_blocks();
    }

    /// Puts a block or a run of lines of another scene between the lines, or in the place of as much.
    void cross(std::string_view other_text) {
        scene_lines_t other = lines_of(other_text);
        // Without this, scenes would grow by each cross-over, and large ones are slow.
        if (random.one_in(2))
            delete_block();
        const auto blocks = blocks_of(other);
        if (!blocks.empty() && !random.one_in(3)) {
            const line_block_t block = blocks[random.below(blocks.size())];
            lines.insert(at(lines, place_between_blocks()), at(other, block.first), at(other, block.behind));
        } else if (!other.empty()) {
            const auto [first, behind] = run_of(other);
            lines.insert(at(lines, random.below(lines.size() + 1)), at(other, first), at(other, behind));
        }
        fit_blocks();
    }

    std::string text(std::size_t most_bytes) const { return text_of(lines, most_bytes); }

  private:
    using run_t = std::pair<std::size_t, std::size_t>;

    run_t run_of(const scene_lines_t& of) {
        const std::size_t first = random.below(of.size());
        const std::size_t length = random.one_in(2) ? 1 : 1 + random.below(longest_run);
        return {first, std::min(first + length, of.size())};
    }

    void delete_lines() {
        if (lines.empty())
            return;
        const auto [first, behind] = run_of(lines);
        lines.erase(at(lines, first), at(lines, behind));
    }

    void double_lines() {
        if (!lines.empty())
            copy_to(run_of(lines), random.below(lines.size() + 1));
    }

    void swap_lines() {
        if (!lines.empty())
            std::swap(lines[random.below(lines.size())], lines[random.below(lines.size())]);
    }

    /// Replaces a run by another one.
    void splice_lines() {
        if (lines.empty())
            return;
        const auto [first, behind] = run_of(lines);
        const scene_lines_t taken(at(lines, first), at(lines, behind));
        delete_lines();
        lines.insert(at(lines, random.below(lines.size() + 1)), taken.begin(), taken.end());
    }

    void delete_block() {
        const auto blocks = blocks_of(lines);
        if (blocks.size() < 2)
            return;
        const line_block_t block = blocks[random.below(blocks.size())];
        lines.erase(at(lines, block.first), at(lines, block.behind));
    }

    void double_block() {
        const auto blocks = blocks_of(lines);
        if (blocks.empty())
            return;
        const line_block_t block = blocks[random.below(blocks.size())];
        copy_to({block.first, block.behind}, place_between_blocks());
    }

    void remove_end() {
        const auto blocks = blocks_of(lines);
        if (!blocks.empty() && random.one_in(4))
            lines.erase(at(lines, blocks[random.below(blocks.size())].behind - 1));
    }

    /// The beginning of a block, or the end of the text.
    std::size_t place_between_blocks() {
        const auto blocks = blocks_of(lines);
        const std::size_t n = random.below(blocks.size() + 1);
        return n == blocks.size() ? lines.size() : blocks[n].first;
    }

    void copy_to(run_t run, std::size_t place) {
        if (lines.size() + run.second - run.first > most_lines)
            return;
        const scene_lines_t copy(at(lines, run.first), at(lines, run.second));
        lines.insert(at(lines, place), copy.begin(), copy.end());
    }

    /// Another number for one of the fields of a line that look like numbers.
    void change_number() {
        if (lines.empty())
            return;
        std::string& line = lines[random.below(lines.size())];
        std::vector<run_t> fields;
        for (std::size_t separator = line.find_first_of(" ,"); separator != std::string::npos;) {
            const std::size_t next = line.find_first_of(" ,", separator + 1);
            const std::size_t first = separator + 1, behind = std::min(next, line.size());
            if (first < behind && std::string_view("0123456789.-(ni").find(line[first]) != std::string::npos)
                fields.emplace_back(first, behind);
            separator = next;
        }
        if (fields.empty())
            return;
        const auto [first, behind] = fields[random.below(fields.size())];
        const bool counts = line.starts_with("begin ") || line.starts_with("resolution");
        const char* const number = counts && !random.one_in(4) ? random.of(small_counts) : random.of(numbers);
        line.replace(first, behind - first, number);
    }

    /// Other counts in an opening line, and mostly the lines to go with them.
    void change_counts() {
        const auto blocks = blocks_of(lines);
        if (blocks.empty())
            return;
        const line_block_t block = blocks[random.below(blocks.size())];
        std::string& opening = lines[block.first];
        if (opens_mesh(opening))
            opening = "begin polygon_surface," + count() + ',' + count();
        else if (opens_net(opening))
            opening = "begin nurbs_surface," + count() + ',' + count() + ',' + count() + ',' + count();
        if (!random.one_in(4))
            fit_lines_to_counts(lines, block);
    }

    std::string count() { return random.one_in(12) ? random.of(numbers) : random.of(small_counts); }

    /// A line with one of the keys that the block around it knows.
    void insert_key() {
        static const key_names_t of_environment = ulk3d::environment_key_names();
        static const key_names_t of_mesh = ulk3d::polygon_key_names();
        static const key_names_t of_net = ulk3d::nurbs_key_names();
        static const key_names_t of_both = ulk3d::shared_key_names();
        const auto blocks = blocks_of(lines);
        if (blocks.empty())
            return;
        const line_block_t block = blocks[random.below(blocks.size())];
        const bool mesh = opens_mesh(lines[block.first]), net = opens_net(lines[block.first]);
        const key_names_t& own = mesh ? of_mesh : net ? of_net : of_environment;
        const key_names_t& keys = (mesh || net) && random.one_in(2) ? of_both : own;
        const std::size_t place = block.first + 1 + random.below(block.size());
        lines.insert(at(lines, std::min(place, lines.size())), key_line(keys[random.below(keys.size())]));
    }

    std::string key_line(std::string_view key) {
        std::string line(key);
        if (random.one_in(16))
            return line;
        if (random.one_in(4))
            return line + ' ' + random.of(words);
        for (std::size_t n = 0, fields = 1 + random.below(4); n < fields; ++n) {
            const bool is_small = key == "resolution" || random.one_in(2);
            line += n == 0 ? ' ' : ',';
            line += is_small ? random.of(small_counts) : random.of(numbers);
        }
        return line;
    }

    void change_bytes() {
        if (lines.empty() || mutate_bytes == nullptr)
            return;
        constexpr std::size_t growth = 16;
        std::string& line = lines[random.below(lines.size())];
        const std::size_t held = line.size();
        line.resize(held + growth);
        line.resize(mutate_bytes(reinterpret_cast<std::uint8_t*>(line.data()), held, line.size()));
    }

    /// From the last block to the first, as fitting one moves those behind it. At times one is left as it is.
    void fit_blocks() {
        const auto blocks = blocks_of(lines);
        for (std::size_t n = blocks.size(); n > 0; --n) {
            if (random.one_in(8))
                continue;
            if (random.one_in(2))
                fit_counts_to_lines(lines, blocks[n - 1]);
            fit_lines_to_counts(lines, blocks[n - 1]);
        }
    }

    scene_lines_t lines;
    fuzz_random_t random;
    byte_mutator_t mutate_bytes;
};

}  // namespace

std::string mutated_scene(std::string_view text, std::size_t most_bytes, std::uint64_t seed,
                          byte_mutator_t mutate_bytes) {
    scene_changer_t changer(text, seed, mutate_bytes);
    changer.mutate();
    return changer.text(most_bytes);
}

std::string crossed_scenes(std::string_view text, std::string_view other, std::size_t most_bytes,
                           std::uint64_t seed) {
    scene_changer_t changer(text, seed, nullptr);
    changer.cross(other);
    return changer.text(most_bytes);
}

}  // namespace ulk_test
