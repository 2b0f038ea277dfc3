#include "tool/scenes/prefixed_lines.h"

#include <cstring>
#include <utility>

namespace ulktool {

prefixed_lines_t::prefixed_lines_t(std::streambuf& output, std::string prefix)
    : target(output), text_before(std::move(prefix)) {}

bool prefixed_lines_t::put(const char* bytes, std::streamsize count) {
    return target.sputn(bytes, count) == count;
}

prefixed_lines_t::int_type prefixed_lines_t::overflow(int_type byte) {
    if (traits_type::eq_int_type(byte, traits_type::eof()))
        return traits_type::not_eof(byte);
    const char character = traits_type::to_char_type(byte);
    return xsputn(&character, 1) == 1 ? byte : traits_type::eof();
}

std::streamsize prefixed_lines_t::xsputn(const char* bytes, std::streamsize count) {
    for (std::streamsize done = 0; done < count;) {
        const char* const rest = bytes + done;
        const auto* const feed =
            static_cast<const char*>(std::memchr(rest, '\n', static_cast<std::size_t>(count - done)));
        const std::streamsize length = feed != nullptr ? feed - rest + 1 : count - done;
        if ((is_at_start && !put(text_before.data(), static_cast<std::streamsize>(text_before.size()))) ||
            !put(rest, length))
            return done;
        is_at_start = feed != nullptr;
        done += length;
    }
    return count;
}

}  // namespace ulktool
