#include "render/gl/shader_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace ulk3d;
namespace fs = std::filesystem;

/// A directory of its own for each test, as working directory, with a "base/" below it.
class ShaderFile : public testing::Test {
  protected:
    void SetUp() override {
        former = fs::current_path();
        std::string name = (fs::temp_directory_path() / "ulk_shader_XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        fs::create_directory(folder / "base");
        fs::current_path(folder);
    }
    void TearDown() override {
        fs::current_path(former);
        fs::remove_all(folder);
    }
    static void write(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    /// The text that is loaded, "(none)" when nothing is.
    static std::string load(const char* name, const char* base) {
        shader_text_t text;
        return load_shader_file(text, name, base) ? std::string(text.begin(), text.end()) : "(none)";
    }
    fs::path former, folder;
};

TEST_F(ShaderFile, IsReadFromTheWorkingDirectory) {
    write("shader.vsd", "void main() {}\r\n\xE3\x81\x82");
    EXPECT_EQ(load("shader.vsd", nullptr), "void main() {}\r\n\xE3\x81\x82");
}

TEST_F(ShaderFile, MissingWithoutBaseIsFalse) {
    EXPECT_EQ(load("shader.vsd", nullptr), "(none)");
}

TEST_F(ShaderFile, BaseDirectoryIsTriedSecond) {
    write("base/shader.vsd", "base");
    EXPECT_EQ(load("shader.vsd", "base/"), "base");
    write("shader.vsd", "working");
    EXPECT_EQ(load("shader.vsd", "base/"), "working");
}

TEST_F(ShaderFile, NoSeparatorIsAddedToTheBase) {
    write("base/shader.vsd", "slash");
    EXPECT_EQ(load("shader.vsd", "base"), "(none)");
    write("baseshader.vsd", "plain");
    EXPECT_EQ(load("shader.vsd", "base"), "plain");
}

TEST_F(ShaderFile, MissingInBothIsFalse) {
    EXPECT_EQ(load("shader.vsd", "base/"), "(none)");
}

TEST_F(ShaderFile, LongBasesAndNamesAreNotCut) {
    const std::string base = "base/" + std::string(300, '/');
    write("base/shader.vsd", "far");
    EXPECT_EQ(load("shader.vsd", base.c_str()), "far");
    const std::string name(5000, 'n');
    EXPECT_EQ(load(name.c_str(), base.c_str()), "(none)");
}

TEST_F(ShaderFile, DirectoryIsNoFile) {
    fs::create_directory("shader.vsd");
    EXPECT_EQ(load("shader.vsd", nullptr), "(none)");
    write("base/shader.vsd", "base");
    EXPECT_EQ(load("shader.vsd", "base/"), "base");
}

TEST_F(ShaderFile, EmptyFileGivesAnEmptyText) {
    write("shader.vsd", "");
    EXPECT_EQ(load("shader.vsd", nullptr), "");
}

TEST_F(ShaderFile, UnreadableFileIsFalse) {
    write("shader.vsd", "secret");
    fs::permissions("shader.vsd", fs::perms::none);
    fs::permissions(folder, fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
    // The superuser reads every file, so this looks with the eyes of another user.
    const uid_t user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
    const std::string text = load("shader.vsd", nullptr);
    ASSERT_EQ(seteuid(user), 0);
    EXPECT_EQ(text, "(none)");
}

TEST_F(ShaderFile, FormerTextIsReplaced) {
    write("long.vsd", "a long text");
    write("short.vsd", "short");
    shader_text_t text;
    ASSERT_TRUE(load_shader_file(text, "long.vsd", nullptr));
    ASSERT_TRUE(load_shader_file(text, "short.vsd", nullptr));
    EXPECT_EQ(std::string(text.begin(), text.end()), "short");
}

}  // namespace
