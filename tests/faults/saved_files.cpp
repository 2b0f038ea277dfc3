#include "faults/saved_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace ulk_test {

namespace fs = std::filesystem;

saved_file_t::saved_file_t(const temporary_folder_t& folder, const std::string& name,
                           std::function<bool(const char*)> save)
    : path(folder.path("saved/" + name)),
      folder_path(folder.path("saved")),
      save_to(std::move(save)),
      former("former content, which nobody can make again\n") {
    fs::create_directory(folder_path);
    EXPECT_TRUE(save_to(path.c_str()));
    expected = read_file(path);
    EXPECT_FALSE(expected.empty());
}

void saved_file_t::prepare() const {
    for (const auto& file : fs::directory_iterator(folder_path))
        if (file.is_regular_file())
            fs::remove(file.path());
    std::ofstream(path, std::ios::binary) << former;
}

bool saved_file_t::is_whole(const std::string& file) const {
    const std::string bytes = fs::is_regular_file(file) ? read_file(file) : std::string();
    return bytes == former || bytes == expected;
}

std::string saved_file_t::complaint_when(bool worked) const {
    if (worked)
        return read_file(path) == expected ? "" : "The new file is not whole.";
    return complaint_after_the_end();
}

std::string saved_file_t::complaint_after_the_end() const {
    return is_whole(path) || is_whole(path + '~') ? "" : "Neither the former file nor the new one is there.";
}

}  // namespace ulk_test
