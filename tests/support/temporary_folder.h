#pragma once

#include <filesystem>
#include <string>

namespace ulk_test {

/// A new empty folder, removed with all that is in it at the end.
class temporary_folder {
  public:
    temporary_folder();
    ~temporary_folder();
    temporary_folder(const temporary_folder&) = delete;
    temporary_folder& operator=(const temporary_folder&) = delete;

    const std::filesystem::path& path() const { return folder; }
    /// The path with its separator at the end, ready for a file's name.
    std::string prefix() const { return folder.string() + "/"; }
    /// Writes a file into the folder.
    void write(const std::string& name, const std::string& content) const;

  private:
    std::filesystem::path folder;
};

/// Makes a folder the working directory while it lives.
class working_directory {
  public:
    explicit working_directory(const std::filesystem::path& folder)
        : former(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~working_directory() { std::filesystem::current_path(former); }
    working_directory(const working_directory&) = delete;
    working_directory& operator=(const working_directory&) = delete;

  private:
    std::filesystem::path former;
};

}  // namespace ulk_test
