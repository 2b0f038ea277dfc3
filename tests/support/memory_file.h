#pragma once

#include <string>
#include <string_view>

namespace ulk_test {

/// A file in memory that has a path. Ends the process when the system has none to give.
class memory_file_t {
  public:
    explicit memory_file_t(const char* label);
    ~memory_file_t();
    memory_file_t(const memory_file_t&) = delete;
    memory_file_t& operator=(const memory_file_t&) = delete;

    const char* path() const { return name.c_str(); }
    /// Replaces what the file holds.
    void write(std::string_view bytes) const;
    /// All that the file holds.
    std::string read() const;

  private:
    int descriptor;
    std::string name;
};

}  // namespace ulk_test
