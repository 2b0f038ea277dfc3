#include "support/temporary_folder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace ulk_test {

temporary_folder::temporary_folder() {
    std::string name = (std::filesystem::temp_directory_path() / "ulk_test_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no temporary folder can be made");
    folder = name;
}

temporary_folder::~temporary_folder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void temporary_folder::write(const std::string& name, const std::string& content) const {
    std::ofstream(folder / name, std::ios::binary) << content;
}

}  // namespace ulk_test
