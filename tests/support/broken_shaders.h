#pragma once

#include <gtest/gtest.h>

#include <ostream>

#include "support/gl_context.h"
#include "support/scene_text.h"

namespace ulk_test {

inline constexpr const char* does_not_compile = "#version 330\nvoid main() { this is no GLSL }\n";
/// Compiles, and has nothing behind the function that it calls.
inline constexpr const char* does_not_link = "#version 330\nvoid missing();\nvoid main() { missing(); }\n";

/// A shader file that replaces a built-in source, and what the program that uses it prints before it ends.
struct broken_file_t {
    const char* file;
    const char* content;
    const char* words;
};

inline void PrintTo(const broken_file_t& row, std::ostream* os) {
    *os << row.file;
}

/// Base of the tests in which such a file ends the process. Names of suites end in DeathTest.
class broken_shader_test : public gl_test, public testing::WithParamInterface<broken_file_t> {
  protected:
    void SetUp() override {
        // Drivers have threads, which a plain fork would leave behind; and the process of this style is a new
        // one, in which no test before has made a program that is shared.
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        gl_test::SetUp();
        folder.write(GetParam().file, GetParam().content);
    }

    temporary_folder_t folder;
};

}  // namespace ulk_test
