#include "formats/scene/scene_completeness.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "support/scene_text.h"

namespace {

using ulk3d::scene_completeness;
using ulk3d::scene_completeness_t;

scene_completeness_t of_text(const std::string& text) {
    const ulk_test::temporary_folder_t folder;
    return scene_completeness(folder.write("scene.ulk", text).c_str());
}

using line_t = std::optional<std::uint64_t>;

}  // namespace

TEST(SceneCompleteness, OfAWholeFileMissesNothing) {
    for (const std::string& text :
         {std::string(), std::string("\n"), std::string("# a comment\r\n"),
          std::string("begin environment\ncubetex a.png\nend\nbegin polygon_surface,0,0\r\nend\r\n")}) {
        EXPECT_EQ(of_text(text).open_block, line_t()) << text;
        EXPECT_FALSE(of_text(text).lacks_last_feed) << text;
    }
    for (const char* name : {"mixed.ulk", "mirror.ulk", "patch.ulk"}) {
        const scene_completeness_t found = scene_completeness(ulk_test::sample(name).c_str());
        EXPECT_EQ(found.open_block, line_t()) << name;
        EXPECT_FALSE(found.lacks_last_feed) << name;
    }
}

TEST(SceneCompleteness, TellsTheBlockWithoutAnEnd) {
    EXPECT_EQ(of_text("begin polygon_surface,0,0\n").open_block, line_t(1));
    EXPECT_EQ(of_text("begin environment\nend\n\nbegin nurbs_surface,1,1,1,1\nknot1 0\n").open_block,
              line_t(4));
    EXPECT_EQ(of_text("# text\nbegin environment").open_block, line_t(2));
}

TEST(SceneCompleteness, ABlockGoesOnToItsEndWhateverItHolds) {
    // As for the reader, "end" is a line that begins with these letters, and a block holds no other.
    EXPECT_EQ(of_text("begin environment\nbegin polygon_surface,0,0\nendless\n").open_block, line_t());
    EXPECT_EQ(of_text("begin environment\n end\nEnd\n").open_block, line_t(1));
    EXPECT_EQ(of_text("end\n begin environment\nbegin something\n").open_block, line_t());
}

TEST(SceneCompleteness, TellsALastLineWithoutALineFeed) {
    const scene_completeness_t found = of_text("begin environment\nend");
    EXPECT_TRUE(found.lacks_last_feed);
    EXPECT_EQ(found.open_block, line_t());
    EXPECT_TRUE(of_text("#").lacks_last_feed);
    EXPECT_TRUE(of_text("begin environment\nend\r").lacks_last_feed);
}

TEST(SceneCompleteness, LinesMayBeCutByAWindow) {
    // The window has 262,144 bytes; each of these texts puts a border of windows elsewhere into the last
    // lines.
    const std::string opening = "begin polygon_surface,0,0" + std::string(60, ' ') + '\n';
    for (std::size_t gap = 0; gap < 110; ++gap) {
        const std::string start = '#' + std::string(262'144 - 105 + gap, 'x') + '\n' + opening;
        EXPECT_EQ(of_text(start + "end\n").open_block, line_t()) << gap;
        EXPECT_EQ(of_text(start + "en\n").open_block, line_t(2)) << gap;
        EXPECT_TRUE(of_text(start + "end").lacks_last_feed) << gap;
    }
}

TEST(SceneCompleteness, OfAFileThatCanNotBeReadMissesNothing) {
    const ulk_test::temporary_folder_t folder;
    for (const std::string& path : {folder.path("none"), folder.path(""), std::string("/dev/zero")}) {
        EXPECT_EQ(scene_completeness(path.c_str()).open_block, line_t());
        EXPECT_FALSE(scene_completeness(path.c_str()).lacks_last_feed);
    }
}
