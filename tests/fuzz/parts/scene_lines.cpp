#include "fuzz/parts/scene_lines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>

namespace ulk_test {

namespace {

bool starts_with_any(std::string_view line, std::initializer_list<std::string_view> keys) {
    return std::ranges::any_of(keys, [line](std::string_view key) { return line.starts_with(key); });
}

bool is_point(std::string_view line) {
    return starts_with_any(line, {"position", "circle", "sphere"});
}

/// Lines of one kind, and how many of them a block should have.
struct wanted_t {
    std::string_view key;  ///< "position" stands for all keys of points
    const char* plain;     ///< what is added to a block without any
    std::uint64_t count;

    bool is_kind(std::string_view line) const {
        return key == "position" ? is_point(line) : line.starts_with(key);
    }
};

/// The whole numbers behind the commas of an opening line; 0 for what is no number.
std::array<std::uint32_t, 4> counts_of(std::string_view opening) {
    std::array<std::uint32_t, 4> counts{};
    for (std::uint32_t& count : counts) {
        const std::size_t comma = opening.find(',');
        if (comma == std::string_view::npos)
            break;
        opening.remove_prefix(comma + 1);
        std::from_chars(opening.data(), opening.data() + opening.size(), count);
    }
    return counts;
}

std::vector<wanted_t> wanted_in(std::string_view opening) {
    const auto [first, second, third, fourth] = counts_of(opening);
    if (opens_mesh(opening))
        return {{"position", "position 0,0,0", first},
                {"element", "element 0", second},
                {"tangent", "tangent 1,0,0", first},
                {"binormal", "binormal 0,1,0", first},
                {"normal", "normal 0,0,1", first}};
    if (!opens_net(opening))
        return {};
    constexpr std::uint64_t most = 1 << 16;  // keeps the products small
    const auto count1 = std::min<std::uint64_t>(first, most), order1 = std::min<std::uint64_t>(second, most),
               count2 = std::min<std::uint64_t>(third, most), order2 = std::min<std::uint64_t>(fourth, most);
    return {{"knot1", "knot1 0", (count1 + order1) * count2},
            {"knot2", "knot2 0", (count2 + order2) * count1},
            {"weight", "weight 1", count1 * count2},
            {"position", "position 0,0,0", count1 * count2}};
}

bool is_element(std::string_view line) {
    return line.starts_with("element");
}

bool is_end(std::string_view line) {
    return line.starts_with("end");
}

/// Makes `body`, a block without its opening and end lines, have the wanted number of lines of a kind.
void fit(scene_lines_t& body, const wanted_t& wanted) {
    std::size_t place = 0, held = 0;  // place: behind the last line of the kind that stays
    for (std::size_t n = 0; n < body.size();) {
        if (!wanted.is_kind(body[n])) {
            ++n;
        } else if (held < wanted.count) {
            ++held;
            place = ++n;
        } else {
            body.erase(body.begin() + static_cast<std::ptrdiff_t>(n));
        }
    }
    if (held == wanted.count)
        return;
    const std::string copied = held == 0 ? wanted.plain : body[place - 1];
    if (held == 0)
        place = body.size();
    body.insert(body.begin() + static_cast<std::ptrdiff_t>(place), wanted.count - held, copied);
}

}  // namespace

scene_lines_t lines_of(std::string_view text) {
    scene_lines_t lines;
    while (!text.empty()) {
        const std::size_t feed = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, feed));
        text.remove_prefix(std::min(feed + 1, text.size()));
    }
    return lines;
}

std::string text_of(const scene_lines_t& lines, std::size_t most_bytes) {
    std::string text;
    for (const std::string& line : lines) {
        if (text.size() + line.size() + 1 > most_bytes)
            break;
        text.append(line).push_back('\n');
    }
    return text;
}

bool opens_mesh(std::string_view line) {
    return line.starts_with("begin polygon_surface");
}

bool opens_net(std::string_view line) {
    return line.starts_with("begin nurbs_surface");
}

std::vector<line_block_t> blocks_of(const scene_lines_t& lines) {
    std::vector<line_block_t> blocks;
    bool inside = false;
    for (std::size_t n = 0; n < lines.size(); ++n) {
        const bool opens = lines[n].starts_with("begin ");
        if (opens)
            blocks.push_back({n, n});
        inside = inside || opens;
        if (!inside)
            continue;
        blocks.back().behind = n + 1;
        inside = !is_end(lines[n]);
    }
    return blocks;
}

void fit_lines_to_counts(scene_lines_t& lines, const line_block_t& block) {
    const std::vector<wanted_t> wanted = wanted_in(lines[block.first]);
    std::uint64_t all = 0;
    for (const wanted_t& kind : wanted)
        all += kind.count;
    if (wanted.empty() || all > block.size() + most_lines_added)
        return;
    const auto begin = lines.begin() + static_cast<std::ptrdiff_t>(block.first) + 1;
    const bool has_end = block.size() > 1 && is_end(lines[block.behind - 1]);
    const auto end = lines.begin() + static_cast<std::ptrdiff_t>(block.behind) - (has_end ? 1 : 0);
    scene_lines_t body(begin, end);
    for (const wanted_t& kind : wanted)
        fit(body, kind);
    lines.insert(lines.erase(begin, end), body.begin(), body.end());
}

void fit_counts_to_lines(scene_lines_t& lines, const line_block_t& block) {
    if (!opens_mesh(lines[block.first]))
        return;
    const auto begin = lines.begin() + static_cast<std::ptrdiff_t>(block.first);
    const auto end = lines.begin() + static_cast<std::ptrdiff_t>(block.behind);
    lines[block.first] = "begin polygon_surface," + std::to_string(std::count_if(begin, end, is_point)) +
                         ',' + std::to_string(std::count_if(begin, end, is_element));
}

}  // namespace ulk_test
