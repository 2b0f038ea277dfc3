#include "utils/text/paths.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

using namespace libutils;

namespace {

struct split_row {
    const char* path;
    const char* drive;
    const char* directory;
    const char* name;
    const char* extension;
};

const std::vector<split_row> split_rows = {
    {"C:\\x\\y.tar.gz", "C:", "\\x\\", "y.tar", ".gz"},
    {"/home/me/scene.ulk", "", "/home/me/", "scene", ".ulk"},
    {"scene.ulk", "", "", "scene", ".ulk"},
    {"scene", "", "", "scene", ""},
    {"a.b/scene", "", "a.b/", "scene", ""},
    {"a/b\\c.png", "", "a/b\\", "c", ".png"},
    {"/scene", "", "/", "scene", ""},
    {"C:scene.ulk", "C:", "", "scene", ".ulk"},
    {"dir/", "", "dir/", "", ""},
    {".hidden", "", "", "", ".hidden"},
    {"name.", "", "", "name", "."},
    {"a:b:c/d", "a:", "b:c/", "d", ""},
    {"dir/a:b.c", "dir/a:", "", "b", ".c"},
    {"a.b:c", "a.b:", "", "c", ""},
    {"", "", "", "", ""},
};

/// The multibyte encoding of a locale for the length of a scope, C again after.
class character_locale {
  public:
    explicit character_locale(const char* name) : found(std::setlocale(LC_CTYPE, name) != nullptr) {}
    ~character_locale() { std::setlocale(LC_CTYPE, "C"); }
    const bool found;
};

/// U+8868, the classic: its second byte in the Japanese code page is a backslash.
constexpr const char* japanese_directory = "\x95\x5c";

}  // namespace

TEST(Paths, SplitsIntoFourParts) {
    for (const split_row& row : split_rows) {
        path_parts_t parts;
        splitpath(row.path, parts);
        EXPECT_STREQ(parts.drive, row.drive) << row.path;
        EXPECT_STREQ(parts.directory, row.directory) << row.path;
        EXPECT_STREQ(parts.name, row.name) << row.path;
        EXPECT_STREQ(parts.extension, row.extension) << row.path;
    }
}

TEST(Paths, MakepathJoinsWhatSplitpathCut) {
    for (const split_row& row : split_rows) {
        path_parts_t parts;
        splitpath(row.path, parts);
        std::string path = "old";
        makepath(path, parts);
        EXPECT_EQ(path, row.path);
    }
}

TEST(Paths, PartsAreFieldsOf260Bytes) {
    EXPECT_EQ(sizeof(path_parts_t), 4U * 260);
    EXPECT_EQ(offsetof(path_parts_t, extension), 3U * 260);
}

TEST(Paths, EveryPartIsCutTo259Bytes) {
    const std::string longest(259, 'x');
    const std::string path = longest + "d:" + longest + "d/" + longest + "n." + longest;
    path_parts_t parts;
    splitpath(path.c_str(), parts);
    EXPECT_EQ(parts.drive, longest);
    EXPECT_EQ(parts.directory, longest);
    EXPECT_EQ(parts.name, longest);
    EXPECT_EQ(parts.extension, "." + longest.substr(1));
}

TEST(Paths, ViewsAreOfAnyLength) {
    const std::string longest(400, 'x');
    const std::string path = longest + "d:" + longest + "d/" + longest + "n." + longest;
    const path_views_t parts = view_path(path);
    EXPECT_EQ(parts.drive, longest + "d:");
    EXPECT_EQ(parts.directory, longest + "d/");
    EXPECT_EQ(parts.name, longest + "n");
    EXPECT_EQ(parts.extension, "." + longest);
    EXPECT_EQ(parts.folder(), longest + "d:" + longest + "d/");
}

TEST(Paths, ViewsAreWhereSplitpathCuts) {
    for (const split_row& row : split_rows) {
        const path_views_t parts = view_path(row.path);
        EXPECT_EQ(parts.drive, row.drive) << row.path;
        EXPECT_EQ(parts.directory, row.directory) << row.path;
        EXPECT_EQ(parts.name, row.name) << row.path;
        EXPECT_EQ(parts.extension, row.extension) << row.path;
    }
}

TEST(Paths, SplitsIntoFourBuffers) {
    char drive[260], directory[260], name[260], extension[260];
    splitpath("C:\\x\\y.gz", drive, directory, name, extension);
    EXPECT_STREQ(drive, "C:");
    EXPECT_STREQ(directory, "\\x\\");
    EXPECT_STREQ(name, "y");
    EXPECT_STREQ(extension, ".gz");
    splitpath("z.png", nullptr, nullptr, name, nullptr);
    EXPECT_STREQ(name, "z");
}

TEST(Paths, MakepathConcatenates) {
    std::string path;
    makepath(path, "C:", "\\x\\", "y", ".gz");
    EXPECT_EQ(path, "C:\\x\\y.gz");
    makepath(path, nullptr, "x/", "y", "");
    EXPECT_EQ(path, "x/y");
}

TEST(Paths, Basename) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"a/b\\c.png", "c.png"}, {"a\\b/c.png", "c.png"}, {"c.png", "c.png"}, {"/c.png", "/c.png"},
        {"\\c.png", "\\c.png"},  {"/a/c.png", "c.png"},   {"a/", ""},         {"", ""}};
    for (const auto& [path, expected] : rows)
        EXPECT_STREQ(libutils::basename(path.c_str()), expected.c_str()) << path;
}

TEST(Paths, BasenameIsAPlaceInThePath) {
    const char* const path = "a/b";
    EXPECT_EQ(libutils::basename(path), path + 2);
}

TEST(Paths, DirnameKeepsItsSeparator) {
    const std::vector<std::pair<const char*, const char*>> rows = {{"a/b\\c.png", "a/b\\"},
                                                                   {"C:\\x\\y", "C:\\x\\"},
                                                                   {"c.png", ""},
                                                                   {"/c.png", "/"},
                                                                   {"a/", "a/"},
                                                                   {"", ""}};
    for (const auto& [path, expected] : rows) {
        EXPECT_EQ(libutils::dirname(path), expected) << path;
        char buffer[32];
        libutils::dirname(path, buffer, sizeof buffer);
        EXPECT_STREQ(buffer, expected) << path;
    }
}

TEST(Paths, FilenameWithoutExtension) {
    const std::vector<std::pair<const char*, const char*>> rows = {{"a/b\\c.png", "c"},
                                                                   {"c.tar.gz", "c.tar"},
                                                                   {"c", "c"},
                                                                   {"a.b/c", "c"},
                                                                   {"/c.png", "c"},
                                                                   {".x", ""},
                                                                   {"", ""}};
    for (const auto& [path, expected] : rows) {
        EXPECT_EQ(filename_without_extension(path), expected) << path;
        char buffer[32];
        filename_without_extension(path, buffer, sizeof buffer);
        EXPECT_STREQ(buffer, expected) << path;
    }
}

TEST(Paths, BuffersAreCutToFit) {
    char buffer[4] = {'x', 'x', 'x', 'x'};
    libutils::dirname("abcdef/g", buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "abc");
    filename_without_extension("g/hijklm.n", buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "hij");
    filename_without_extension("other", buffer, 0);
    EXPECT_STREQ(buffer, "hij");
}

TEST(Paths, ToBackslash) {
    EXPECT_EQ(tobackslash("a/b\\c/d.png"), "a\\b\\c\\d.png");
    EXPECT_EQ(tobackslash(""), "");
}

TEST(PathsInALocale, TrailByteIsNoSeparator) {
    const character_locale locale("ja_JP.WINDOWS-31J");
    if (!locale.found)
        GTEST_SKIP() << "the locale ja_JP.WINDOWS-31J is not in LOCPATH; ctest sets it";
    const std::string path = std::string(japanese_directory) + "." + japanese_directory;
    EXPECT_STREQ(libutils::basename(path.c_str()), path.c_str());
    path_parts_t parts;
    splitpath(("a/" + path).c_str(), parts);
    EXPECT_STREQ(parts.directory, "a/");
    EXPECT_STREQ(parts.name, japanese_directory);
    EXPECT_EQ(parts.extension, std::string(".") + japanese_directory);
    EXPECT_EQ(tobackslash(("a/" + path).c_str()), "a\\" + path);
}

TEST(PathsInALocale, TrailByteIsASeparatorWhereBytesAreCharacters) {
    const std::string path = std::string(japanese_directory) + ".png";
    EXPECT_STREQ(libutils::basename(path.c_str()), ".png");
}

TEST(PathsInALocale, NameThatIsNotValidIsSearchedByteByByte) {
    const character_locale locale("C.UTF-8");
    ASSERT_TRUE(locale.found);
    const std::string path = "d\xff:\x80/n\xe3\x81.\xfe";
    path_parts_t parts;
    splitpath(path.c_str(), parts);
    EXPECT_STREQ(parts.drive, "d\xff:");
    EXPECT_STREQ(parts.directory, "\x80/");
    EXPECT_STREQ(parts.name, "n\xe3\x81");
    EXPECT_STREQ(parts.extension, ".\xfe");
    EXPECT_STREQ(libutils::basename(path.c_str()), "n\xe3\x81.\xfe");
    EXPECT_EQ(tobackslash(path.c_str()), "d\xff:\x80\\n\xe3\x81.\xfe");
    std::string joined;
    makepath(joined, parts);
    EXPECT_EQ(joined, path);
}

TEST(PathsInALocale, NameInUtf8) {
    const character_locale locale("C.UTF-8");
    ASSERT_TRUE(locale.found);
    path_parts_t parts;
    splitpath("図/形.png", parts);
    EXPECT_STREQ(parts.directory, "図/");
    EXPECT_STREQ(parts.name, "形");
    EXPECT_EQ(tobackslash("図/形.png"), "図\\形.png");
}
