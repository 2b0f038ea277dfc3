#include <algorithm>
#include <assimp/Importer.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "tool/foreign/foreign_scenes.h"
#include "tool/foreign/library/written_formats.h"
#include "utils/text/strings.h"

/// Which endings the library knows.
namespace ulktool {

namespace {

/// Those of the library without ".stl", which the modeller reads by itself.
std::vector<std::string> read_endings() {
    aiString list;
    Assimp::Importer().GetExtensionList(list);
    std::istringstream patterns(list.C_Str());
    std::vector<std::string> endings;
    for (std::string pattern; std::getline(patterns, pattern, ';');)
        if (pattern.starts_with("*.") && pattern != "*.stl")
            endings.push_back(pattern.substr(1));
    std::ranges::sort(endings);
    return endings;
}

}  // namespace

bool is_foreign_path(std::string_view path) {
    return std::ranges::any_of(read_endings(), [path](const std::string& ending) {
        return libutils::has_extension(path, ending) == 0;
    });
}

bool is_foreign_output(std::string_view path) {
    return written_format_of(path) != nullptr;
}

std::string foreign_input_endings() {
    std::string text;
    for (const std::string& ending : read_endings())
        text += (text.empty() ? "" : " ") + ending;
    return text;
}

std::string foreign_output_endings() {
    return std::string(written_endings());
}

}  // namespace ulktool
