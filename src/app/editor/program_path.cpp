#include "app/editor/program_path.h"

#include <string_view>

#include "utils/text/paths.h"
#include "utils/text/strings.h"

namespace ulk3d {

std::string program_directory(const char* argv0) {
    char directory[libutils::path_part_size];
    libutils::dirname(argv0, directory, sizeof directory);
    return directory;
}

std::string program_title(const char* argv0) {
    char name[libutils::path_part_size];
    libutils::filename_without_extension(argv0, name, sizeof name);
    std::string title = name;
    constexpr std::string_view extension = ".exe";
    if (libutils::has_extension(title, extension) == 0)
        title.resize(title.size() - extension.size());
    return title;
}

}  // namespace ulk3d
