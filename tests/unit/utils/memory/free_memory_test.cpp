#include "utils/memory/free_memory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>

#include "support/scene_text.h"

namespace {

using namespace libutils;

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

/// The folders in which the kernel shows control groups, made of plain files.
struct ControlGroups : testing::Test {
    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(folder.path(name)).parent_path());
        static_cast<void>(folder.write(name, text));
    }
    void are(const std::string& lines) const { write("proc/self/cgroup", lines); }
    void group(const std::string& path, const std::string& limit, const std::string& usage,
               const std::string& inactive = "0") const {
        write("groups" + path + "/memory.max", limit + "\n");
        write("groups" + path + "/memory.current", usage + "\n");
        write("groups" + path + "/memory.stat",
              "anon 1\nactive_file 7\ninactive_file " + inactive + "\nslab 3\n");
    }
    void group_of_version_1(const std::string& path, const std::string& limit, const std::string& usage,
                            const std::string& inactive) const {
        const std::string place = "groups/memory" + path;
        write(place + "/memory.limit_in_bytes", limit + "\n");
        write(place + "/memory.usage_in_bytes", usage + "\n");
        write(place + "/memory.stat", "inactive_file 1\ntotal_inactive_file " + inactive + "\n");
    }
    std::uint64_t left() const { return control_group_memory(folder.path("proc"), folder.path("groups")); }

    ulk_test::temporary_folder_t folder;
};

TEST_F(ControlGroups, WithoutAnyThereIsNoLimit) {
    EXPECT_EQ(left(), most);
    are("");
    EXPECT_EQ(left(), most);
    are("nonsense\n0:\n:\n");
    EXPECT_EQ(left(), most);
}

TEST_F(ControlGroups, AGroupLeavesItsLimitLessWhatItUses) {
    are("0::/box\n");
    group("/box", "1000", "300");
    EXPECT_EQ(left(), 700U);
}

TEST_F(ControlGroups, CachedFilesThatCanBeDroppedAreLeft) {
    are("0::/box\n");
    group("/box", "1000", "300", "120");
    EXPECT_EQ(left(), 820U);
    group("/box", "1000", "300", "9000");
    EXPECT_EQ(left(), 1000U);
}

TEST_F(ControlGroups, AGroupAboveItsLimitLeavesNothing) {
    are("0::/box\n");
    group("/box", "1000", "1001");
    EXPECT_EQ(left(), 0U);
}

TEST_F(ControlGroups, MaxIsNoLimit) {
    are("0::/box\n");
    group("/box", "max", "300");
    EXPECT_EQ(left(), most);
}

TEST_F(ControlGroups, EveryGroupAroundCounts) {
    are("0::/a/b/c\n");
    group("/a/b/c", "max", "10");
    group("/a/b", "1000", "10");
    group("/a", "900", "500");
    EXPECT_EQ(left(), 400U);
    // As a container sees it: its own group is the root, under whatever path.
    group("", "800", "700");
    EXPECT_EQ(left(), 100U);
}

TEST_F(ControlGroups, TheRootHasNoFilesAndNoLimit) {
    are("0::/\n");
    EXPECT_EQ(left(), most);
    group("", "50", "20");
    EXPECT_EQ(left(), 30U);
}

TEST_F(ControlGroups, OfVersion1AreThoseOfTheMemoryController) {
    are("12:cpu,cpuacct:/other\n5:memory:/a/b\n1:name=systemd:/a\n0::/\n");
    group_of_version_1("/a/b", "9223372036854771712", "300", "0");
    EXPECT_GT(left(), std::uint64_t{1} << 60);
    group_of_version_1("/a", "2000", "700", "200");
    EXPECT_EQ(left(), 1500U);
    group_of_version_1("/other", "1", "1", "0");
    EXPECT_EQ(left(), 1500U);
    are("3:hugetlb,memory:/a/b\n");
    EXPECT_EQ(left(), 1500U);
    are("3:memory_of_another_kind:/a/b\n");
    EXPECT_EQ(left(), most);
}

TEST(FreeMemory, IsSomeAndNoMoreThanTheGroupsLeave) {
    EXPECT_GT(free_memory(), 0U);
    // Other programs take and give in between.
    EXPECT_LE(free_memory() / 2, control_group_memory("/proc", "/sys/fs/cgroup"));
}

}  // namespace
