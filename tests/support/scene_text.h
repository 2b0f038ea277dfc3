#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Scene files for tests: small blocks as text, and files that go away with the test.
namespace ulk_test {

/// A folder of its own that is removed, with what it holds, at the end of the scope.
class temporary_folder_t {
  public:
    temporary_folder_t();
    ~temporary_folder_t();
    temporary_folder_t(const temporary_folder_t&) = delete;
    temporary_folder_t& operator=(const temporary_folder_t&) = delete;

    /// Writes a file into the folder; its path.
    std::string write(const std::string& name, std::string_view bytes) const;
    /// The path that a file of this name has or would have.
    std::string path(const std::string& name) const { return (folder / name).string(); }

  private:
    std::filesystem::path folder;
};

/// A polygon block of one triangle: (0, 0), (1, 0), (0, 1), each times `size`, at a depth, looking along +z.
std::string triangle_block(float size = 1, float depth = 0);

/// A NURBS block of a bilinear patch over 0..1 in x and y.
std::string patch_block();

/// The path of a sample scene.
std::string sample(const std::string& name);

/// All bytes of a file.
std::string read_file(const std::string& path);

}  // namespace ulk_test
