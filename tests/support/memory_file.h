#pragma once

#include <string>
#include <string_view>

namespace ulk_test {

/// A file in memory that has a path. Ends the process when the system can not provide one.
class memory_file_t {
  public:
    explicit memory_file_t(const char* label);
    ~memory_file_t();
    memory_file_t(const memory_file_t&) = delete;
    memory_file_t& operator=(const memory_file_t&) = delete;

    const char* path() const { return name.c_str(); }
    /// Replaces the content of the file.
    void write(std::string_view bytes) const;
    /// The whole content of the file.
    std::string read() const;

  private:
    int descriptor;
    std::string name;
};

}  // namespace ulk_test
