#pragma once

#include <assimp/IOSystem.hpp>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace ulktool {

/// How the library writes a file and those beside it: first into files without names, which take their places
/// when all of them are whole.
class output_files_t : public Assimp::IOSystem {
  public:
    /// What the library writes lies in the folder of `path`.
    explicit output_files_t(const std::string& path);

    /// Saves all files as output_file does, the one at the path last. False when one could not be made or
    /// saved. Those that were not saved then are taken back.
    [[nodiscard]] bool publish();

    bool Exists(const char*) const override { return false; }
    char getOsSeparator() const override { return '/'; }
    /// Null when there is no room for another file.
    Assimp::IOStream* Open(const char* name, const char* mode) override;
    void Close(Assimp::IOStream* file) override;

  private:
    struct close_t {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using file_t = std::unique_ptr<std::FILE, close_t>;
    struct made_t {
        std::string name;
        file_t file;
    };

    std::string folder, main_name;
    std::vector<made_t> made;
    bool is_whole = true;
};

}  // namespace ulktool
