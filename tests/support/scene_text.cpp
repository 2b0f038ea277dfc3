#include "support/scene_text.h"

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "support/places.h"
#include "utils/text/numbers.h"

namespace ulk_test {

temporary_folder_t::temporary_folder_t() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ulk-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder: " + pattern);
    folder = pattern;
}

temporary_folder_t::~temporary_folder_t() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::string temporary_folder_t::write(const std::string& name, std::string_view bytes) const {
    std::ofstream file(folder / name, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("not written: " + name);
    return path(name);
}

std::string triangle_block(float size, float depth) {
    std::string s, z;
    libutils::append_number(s, size);
    libutils::append_number(z, depth);
    std::string text = "begin polygon_surface,3,4\n";
    text += "position 0,0," + z + "\nposition " + s + ",0," + z + "\nposition 0," + s + "," + z + "\n";
    text += "element 0\nelement 1\nelement 2\nelement -1\n";
    for (int i = 0; i < 3; ++i)
        text += "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n";
    return text + "end\n";
}

std::string patch_block() {
    std::string text = "begin nurbs_surface,2,2,2,2\n";
    for (const char* knot : {"knot1 ", "knot2 "})
        for (int row = 0; row < 2; ++row)
            for (const char* value : {"0", "0", "1", "1"})
                text += std::string(knot) + value + "\n";
    text += "weight 1\nweight 1\nweight 1\nweight 1\n";
    return text + "position 0,0,0\nposition 1,0,0\nposition 0,1,0\nposition 1,1,0\nend\n";
}

std::string sample(const std::string& name) {
    return samples_folder() + "/" + name;
}

std::string read_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

}  // namespace ulk_test
