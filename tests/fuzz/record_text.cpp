#include "formats/record_text.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string>

#include "support/captured_stream.h"

/// What a user types into a text dialog reaches only the components that are edited, whatever it says.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const ulk_test::captured_stream messages(std::cerr);

    constexpr ulk3d::record_member_t middle{9, 3, 4};
    std::array<float, 5 * middle.stride> words{};
    words.fill(77);
    ulk3d::store_member_text(words, middle, text);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::size_t place = i % middle.stride;
        const bool is_edited = place >= middle.offset && place < middle.offset + middle.components;
        if (!is_edited && words[i] != 77)
            std::abort();
    }

    std::array<std::uint32_t, 5> indices{};
    ulk3d::store_index_text(indices, text);
    return 0;
}
