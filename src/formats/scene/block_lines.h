#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "formats/scene/key_names.h"
#include "formats/scene/key_value.h"
#include "formats/scene/line_log.h"
#include "formats/scene/text_lines.h"

namespace ulk3d {

/// How far one of a block's arrays is filled. Lines fill it strictly in file order.
struct fill_t {
    std::string_view full;     ///< the array's name in the message about a surplus line
    std::string_view name;     ///< its name in the message about missing lines,
    std::string_view too_few;  ///< and how that message ends
    std::uint64_t capacity = 0;
    std::uint64_t count = 0;
};

/// One key of a block: `read` takes the value of each line that starts with `name`.
template <typename Block>
struct block_key_t {
    line_key name;
    /// The message, after the line number, for a line without a space; empty for no message.
    std::string_view missing;
    void (*read)(Block&, std::string_view value);
    /// The array that the line fills, or null. `read` writes entry `count`. A further line for a full array
    /// ends the block, even a line without a value, which would fill nothing.
    fill_t Block::*fill = nullptr;
};

/// True when no key is a prefix of another one. A line then matches at most one key, so the order in which
/// keys are tried does not matter.
template <typename Block, std::size_t N>
constexpr bool is_prefix_free(const std::array<block_key_t<Block>, N>& keys) {
    for (const auto& key : keys) {
        for (const auto& other : keys) {
            if (&key != &other && other.name.name().starts_with(key.name.name()))
                return false;
        }
    }
    return true;
}

/// Concatenates two tables of keys.
template <typename Block, std::size_t N, std::size_t M>
constexpr std::array<block_key_t<Block>, N + M> joined(const std::array<block_key_t<Block>, N>& first,
                                                       const std::array<block_key_t<Block>, M>& second) {
    const auto at = [&](std::size_t i) { return i < N ? first[i] : second[i - N]; };
    return [&]<std::size_t... i>(std::index_sequence<i...>) {
        return std::array<block_key_t<Block>, N + M>{at(i)...};
    }
    (std::make_index_sequence<N + M>());
}

template <typename Block, std::size_t N>
key_names_t names_of(const std::array<block_key_t<Block>, N>& keys) {
    key_names_t names;
    for (const auto& key : keys)
        names.push_back(key.name.name());
    return names;
}

/// The array that a key fills, or null. A block without arrays sets `has_arrays` to false.
template <typename Block>
fill_t* fill_of(Block& block, const block_key_t<Block>& key) {
    if constexpr (Block::has_arrays)
        return key.fill != nullptr ? &(block.*key.fill) : nullptr;
    else
        return nullptr;
}

enum class block_end_t { end_line, end_of_file, over_run };

/// Finds the key of each line of a block. Lines come in patterns (tangent, binormal, normal, tangent, ...),
/// so the key that last followed the previous line's key is tried before the whole table.
template <typename Block, std::size_t N>
class key_finder {
  public:
    /// `block_keys` must be prefix-free and outlive the finder.
    explicit key_finder(const std::array<block_key_t<Block>, N>& block_keys) : keys(block_keys) {}

    /// Null for a line that starts with none of the keys.
    const block_key_t<Block>* find(const text_line_t& line) {
        std::size_t index = successor[previous];
        if (!line.starts_with_key(keys[index].name)) {
            for (index = 0; index < N && !line.starts_with_key(keys[index].name);)
                ++index;
            if (index == N)
                return nullptr;
            successor[previous] = index;
        }
        previous = index;
        return &keys[index];
    }

  private:
    const std::array<block_key_t<Block>, N>& keys;
    std::array<std::size_t, N> successor{};
    std::size_t previous = 0;
};

/// Passes the value of a line to its key, or logs that the value is missing. False, with a message, when the
/// key's array is already full; that is checked first.
template <typename Block>
[[nodiscard]] bool read_key_line(const block_key_t<Block>& key, Block& block, const text_line_t& line,
                                 line_log& log) {
    fill_t* const fill = fill_of(block, key);
    if (fill != nullptr && fill->count >= fill->capacity) {
        log.over_run(fill->full, fill->count);
        return false;
    }
    const auto value = value_of(line, key.name.name());
    if (value) {
        key.read(block, *value);
        if (fill != nullptr)
            ++fill->count;
    } else if (!key.missing.empty()) {
        log.message(key.missing, line);
    }
    return true;
}

/// Reads the lines of a block up to one that starts with "end", and returns what ended the block. A line that
/// starts with none of the keys goes to `Block::read_other(line, log)`; if that returns false and the line is
/// neither blank nor a comment, it is logged as illegal.
template <typename Block, std::size_t N>
block_end_t read_block_lines(const std::array<block_key_t<Block>, N>& keys, Block& block, text_line_t& line,
                             text_lines& input, line_log& log) {
    key_finder<Block, N> finder(keys);
    while (!input.failed()) {
        line = input.next();
        log.step();
        if (line.starts_with("end"))
            return block_end_t::end_line;
        if (const block_key_t<Block>* const key = finder.find(line)) {
            if (!read_key_line(*key, block, line, log))
                return block_end_t::over_run;
        } else if (!block.read_other(line, log) && !line.is_blank() && !line.is_comment()) {
            log.message(": illegal command: ", line);
        }
    }
    return block_end_t::end_of_file;
}

/// True when all arrays are full. Logs a message for each one that is not, in the order given.
template <typename... Fills>
[[nodiscard]] bool all_filled(line_log& log, const Fills&... fills) {
    const auto is_full = [&log](const fill_t& fill) {
        if (fill.count < fill.capacity)
            log.shortage(fill.name, fill.count, fill.capacity, fill.too_few);
        return fill.count >= fill.capacity;
    };
    bool full = true;
    ((full = is_full(fills) && full), ...);
    return full;
}

}  // namespace ulk3d
