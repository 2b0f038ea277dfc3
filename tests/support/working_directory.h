#pragma once

#include <filesystem>

namespace ulk_test {

/// Makes a folder the working directory during its lifetime.
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
