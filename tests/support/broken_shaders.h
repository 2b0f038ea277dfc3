#pragma once

#include <gtest/gtest.h>

#include <ostream>

#include "support/gl_context.h"
#include "support/scene_text.h"

namespace ulk_test {

inline constexpr const char* does_not_compile = "#version 330\nvoid main() { this is no GLSL }\n";
/// Compiles, but calls a function that is not defined.
inline constexpr const char* does_not_link = "#version 330\nvoid missing();\nvoid main() { missing(); }\n";

/// A shader file that replaces a built-in source, and what is printed before the process ends because of it.
struct broken_file_t {
    const char* file;
    const char* content;
    const char* words;
};

inline void PrintTo(const broken_file_t& row, std::ostream* os) {
    *os << row.file;
}

/// Base of the tests in which such a file ends the process. The names of their suites end in DeathTest.
class broken_shader_test : public gl_test, public testing::WithParamInterface<broken_file_t> {
  protected:
    void SetUp() override {
        // A plain fork would lose the driver's threads. This style starts a new process, in which moreover no
        // earlier test has built a shared program.
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        gl_test::SetUp();
        folder.write(GetParam().file, GetParam().content);
    }

    temporary_folder_t folder;
};

}  // namespace ulk_test
