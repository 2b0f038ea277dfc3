#include "formats/record_text.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "utils/text/evalnumber.h"
#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

/// Calls `store(index, line)` with each of the first `count` lines, NUL-terminated. The last line may lack
/// its line feed.
template <typename Store>
void for_each_line(std::string& text, std::size_t count, Store&& store) {
    char* line = text.data();
    char* const end = line + text.size();
    for (std::size_t i = 0; i < count && line != end; ++i) {
        char* const line_end = std::find(line, end, '\n');
        *line_end = '\0';
        store(i, static_cast<const char*>(line));
        line = line_end == end ? end : line_end + 1;
    }
}

void store_line(const char* line, std::span<float> components) {
    for (float& component : components) {
        component = libutils::evalnumber(line, &line);
        if (*line != '\0')
            ++line;
    }
}

/// Has `store` change a copy of the content, which is written back when all lines are read: where one of them
/// fails, the array stays as it was.
template <class Mapping, class Array, class Store>
bool store_in(Array& array, Store&& store) {
    const Mapping mapping(array);
    std::vector content(mapping.begin(), mapping.end());
    store(std::span(content));
    std::ranges::copy(content, mapping.begin());
    return static_cast<bool>(mapping) || array.bytes_in_use() == 0;
}

}  // namespace

std::string member_text(std::span<const float> words, const record_member_t& member) {
    std::string text;
    const member_view_t<const float> values(words, member);
    for (std::size_t i = 0; member.components > 0 && i < values.size(); ++i) {
        const float* const value = values.at(i, member.components);
        for (std::uint32_t k = 0; k < member.components; ++k) {
            if (k > 0)
                text += ',';
            libutils::append_number(text, value[k]);
        }
        text += '\n';
    }
    return text;
}

std::string member_text(const array_t& array, std::uint64_t member) {
    const array_span<const float> words(array);
    return member_text(words.span(), member_of(array, member));
}

void store_member_text(std::span<float> words, const record_member_t& member, std::string text) {
    const member_view_t<float> values(words, member);
    for_each_line(text, member.components == 0 ? 0 : values.size(), [&](std::size_t i, const char* line) {
        store_line(line, {values.at(i, member.components), member.components});
    });
}

bool store_member_text(array_t& array, std::uint64_t member, std::string text) {
    return store_in<array_span<float>>(array, [&](std::span<float> words) {
        store_member_text(words, member_of(array, member), std::move(text));
    });
}

std::string index_text(const element_array_t& elements) {
    std::string text;
    const const_index_span indices(elements);
    for (const std::uint32_t index : indices.span()) {
        if (index == restart_mark)
            text += "-1";
        else
            libutils::append_number(text, index);
        text += '\n';
    }
    return text;
}

void store_index_text(std::span<std::uint32_t> indices, std::string text) {
    for_each_line(text, indices.size(),
                  [&](std::size_t i, const char* line) { indices[i] = libutils::parse_uint(line, nullptr); });
}

bool store_index_text(element_array_t& elements, std::string text) {
    return store_in<index_span>(
        elements, [&](std::span<std::uint32_t> indices) { store_index_text(indices, std::move(text)); });
}

}  // namespace ulk3d
