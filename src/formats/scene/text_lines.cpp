#include "formats/scene/text_lines.h"

#include <algorithm>

namespace ulk3d {

namespace {

constexpr std::size_t first_window = std::size_t{256} * 1024;

}  // namespace

text_lines::text_lines(std::string_view text)
    : window(std::make_unique_for_overwrite<char[]>(text.size() + 1)),
      capacity(text.size()),
      limit(text.size()),
      opened(true) {
    std::copy(text.begin(), text.end(), window.get());
}

// One byte more than the file has, so that the read that finds its end does not need a larger window.
text_lines::text_lines(libutils::file_descriptor&& source, std::uint64_t size)
    : file(std::move(source)),
      unread(size),
      capacity(static_cast<std::size_t>(std::min<std::uint64_t>(size, first_window - 1)) + 1),
      opened(file.is_open()) {
    window = std::make_unique_for_overwrite<char[]>(capacity + 1);
}

text_lines text_lines::open(const char* path) {
    std::uint64_t size = 0;
    libutils::file_descriptor file = libutils::open_plain_file(path, size);
    return text_lines(std::move(file), size);
}

text_line_t text_lines::next() {
    for (std::size_t searched = cursor;;) {
        auto* const feed = static_cast<char*>(std::memchr(window.get() + searched, '\n', limit - searched));
        if (feed != nullptr) {
            const char* const start = window.get() + cursor;
            *feed = '\0';
            cursor = static_cast<std::size_t>(feed - window.get()) + 1;
            return {start, static_cast<std::size_t>(feed - start)};
        }
        const std::size_t partial = limit - cursor;
        if (!refill())
            break;
        searched = cursor + partial;
    }
    if (cursor == limit) {
        at_end = true;
        return {};
    }
    window[limit] = '\0';
    const text_line_t last{window.get() + cursor, limit - cursor};
    cursor = limit;
    return last;
}

/// Moves the partial line at the cursor to the front of the window and reads more bytes behind it. False at
/// the end of the file.
bool text_lines::refill() {
    if (!file.is_open())
        return false;
    const std::size_t partial = limit - cursor;
    if (partial == capacity) {
        const std::size_t larger = capacity * 2;
        auto grown = std::make_unique_for_overwrite<char[]>(larger + 1);
        std::copy_n(window.get() + cursor, partial, grown.get());
        window = std::move(grown);
        capacity = larger;
    } else {
        std::memmove(window.get(), window.get() + cursor, partial);
    }
    cursor = 0;
    limit = partial;
    const std::size_t got = read_some(file, window.get() + limit, capacity - limit);
    limit += got;
    unread -= std::min<std::uint64_t>(unread, got);
    if (got == 0) {
        unread = 0;
        static_cast<void>(file.close());
    }
    return got > 0;
}

}  // namespace ulk3d
