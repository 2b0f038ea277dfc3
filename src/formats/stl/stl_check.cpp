#include "formats/stl/stl_check.h"

#include <array>
#include <cstring>
#include <string_view>

#include "formats/stl/stl_layout.h"
#include "utils/files/file_descriptor.h"

namespace ulk3d {

std::optional<stl_check_t> check_stl(const char* path) {
    stl_check_t check;
    libutils::file_descriptor file = libutils::open_plain_file(path, check.file_size);
    if (!file.is_open() || check.file_size == 0)
        return std::nullopt;
    std::array<char, stl::prologue_size> prologue{};
    std::size_t there = 0;
    while (const std::size_t got = read_some(file, prologue.data() + there, prologue.size() - there))
        there += got;
    if (there == prologue.size()) {
        stl::count_t count = 0;
        std::memcpy(&count, prologue.data() + stl::header_size, sizeof count);
        check.announced = count;
    }
    check.expected_size = stl::prologue_size + check.announced * stl::record_size;
    check.is_text = !check.fits() && std::string_view(prologue.data(), there).starts_with("solid");
    return check;
}

}  // namespace ulk3d
