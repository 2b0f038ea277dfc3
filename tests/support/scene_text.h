#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Scene files for tests: small blocks as text, and temporary files.
namespace ulk_test {

/// A new folder that is removed, with its content, at the end of the scope.
class temporary_folder_t {
  public:
    temporary_folder_t();
    ~temporary_folder_t();
    temporary_folder_t(const temporary_folder_t&) = delete;
    temporary_folder_t& operator=(const temporary_folder_t&) = delete;

    /// Writes a file into the folder and returns its path.
    std::string write(const std::string& name, std::string_view bytes) const;
    /// The path of a file of this name, which need not exist.
    std::string path(const std::string& name) const { return (folder / name).string(); }

  private:
    std::filesystem::path folder;
};

/// A polygon block of one triangle: (0, 0), (1, 0) and (0, 1), each times `size`, at z = `depth`, facing +z.
std::string triangle_block(float size = 1, float depth = 0);

/// A NURBS block of a bilinear patch over 0..1 in x and y.
std::string patch_block();

/// The path of a sample scene.
std::string sample(const std::string& name);

/// All bytes of a file.
std::string read_file(const std::string& path);

}  // namespace ulk_test
