#include "formats/scene/text_lines.h"

#include <algorithm>
#include <new>

#include "utils/memory/memory_budget.h"

namespace ulk3d {

namespace {

constexpr std::size_t first_window = std::size_t{256} * 1024;

}  // namespace

text_lines::text_lines(std::string_view text) : limit(text.size()), opened(true) {
    if (!resize_window(text.size()))
        throw std::bad_alloc();
    std::copy(text.begin(), text.end(), window.get());
}

// One byte more than the file has, so that the read that finds its end does not need a larger window.
text_lines::text_lines(libutils::file_descriptor&& source, std::uint64_t size)
    : file(std::move(source)), unread(size), opened(file.is_open()) {
    if (!resize_window(static_cast<std::size_t>(std::min<std::uint64_t>(size, first_window - 1)) + 1))
        throw std::bad_alloc();
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
        if (!refill())
            break;
        searched = limit - last_read;
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

/// False, with the window as it was, when there is no memory.
bool text_lines::resize_window(std::size_t new_capacity) {
    auto* const resized = static_cast<char*>(std::realloc(window.get(), new_capacity + 1));
    if (resized == nullptr)
        return false;
    // The block was freed, or is the same.
    static_cast<void>(window.release());
    window.reset(resized);
    capacity = new_capacity;
    return true;
}

/// Makes room in a window that one line fills. False when there is no memory for that.
bool text_lines::make_room() {
    if (*window.get() == '#') {
        limit = 1;
        return true;
    }
    // The file may have become longer since it was opened.
    const std::size_t rest = unread != 0 ? static_cast<std::size_t>(unread) + 1 : capacity;
    const std::size_t more = std::min(capacity, rest);
    return libutils::claim_memory(more) && resize_window(capacity + more);
}

/// Moves the partial line at the cursor to the front of the window and reads `last_read` more bytes behind
/// it. False at the end of the file, and without memory for the line.
bool text_lines::refill() {
    if (!file.is_open())
        return false;
    const std::size_t partial = limit - cursor;
    if (cursor != 0)
        std::memmove(window.get(), window.get() + cursor, partial);
    cursor = 0;
    limit = partial;
    if (partial == capacity && !make_room()) {
        overlong = true;
        limit = 0;
        end_here();
        return false;
    }
    last_read = read_some(file, window.get() + limit, capacity - limit);
    limit += last_read;
    unread -= std::min<std::uint64_t>(unread, last_read);
    if (last_read == 0)
        end_here();
    return last_read > 0;
}

void text_lines::end_here() {
    unread = 0;
    static_cast<void>(file.close());
}

}  // namespace ulk3d
