#include "utils/files/former_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "support/captured_stream.h"
#include "support/child_process.h"
#include "support/ordinary_user.h"
#include "support/scene_text.h"
#include "utils/files/output_file.h"

namespace fs = std::filesystem;
using libutils::fifo_t;
using libutils::output_file;
using ulk_test::captured_stream;
using ulk_test::child_result_t;
using ulk_test::read_file;

namespace {

class FormerFile : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return folder.path(name); }

    /// The names of all files in the folder, in order.
    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder.path("")))
            found.push_back(entry.path().filename());
        std::ranges::sort(found);
        return found;
    }

    const ulk_test::temporary_folder_t folder;
};

bool save(const std::string& path, const std::string& bytes) {
    output_file output(path.c_str(), fifo_t::refuse);
    output.write(bytes.data(), bytes.size());
    return output.complete();
}

bool save_as_ordinary_user(const std::string& path, const std::string& bytes) {
    const ulk_test::ordinary_user_t user;
    return save(path, bytes);
}

/// Writes a few bytes and fails then.
void save_badly(const std::string& path) {
    output_file output(path.c_str(), fifo_t::refuse);
    output.write("new", 3);
    output.fail();
    EXPECT_FALSE(output.complete());
}

mode_t mode_of(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

using names_t = std::vector<std::string>;

TEST_F(FormerFile, LiesAsideUntilTheNewOneIsWhole) {
    folder.write("a.ulk", "former");
    output_file output(path("a.ulk").c_str(), fifo_t::refuse);
    output.write("new", 3);
    EXPECT_EQ(read_file(path("a.ulk")), "new");
    EXPECT_EQ(read_file(path("a.ulk~")), "former");
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(output.complete());
    EXPECT_EQ(names(), names_t{"a.ulk"});
    EXPECT_EQ(read_file(path("a.ulk")), "new");
    EXPECT_EQ(errors.text(), "");
}

TEST_F(FormerFile, StaysAsideWhenTheSaveFails) {
    folder.write("a.ulk", "former");
    const captured_stream errors(std::cerr);
    save_badly(path("a.ulk"));
    EXPECT_EQ(read_file(path("a.ulk")), "new");
    EXPECT_EQ(read_file(path("a.ulk~")), "former");
    EXPECT_EQ(errors.text(), path("a.ulk") + ": not saved; the former file is " + path("a.ulk~") + "\n");
}

TEST_F(FormerFile, StaysAsideWhenTheSaveIsGivenUp) {
    folder.write("a.ulk", "former");
    const captured_stream errors(std::cerr);
    { output_file output(path("a.ulk").c_str(), fifo_t::refuse); }
    EXPECT_EQ(read_file(path("a.ulk~")), "former");
    EXPECT_NE(errors.text(), "");
}

TEST_F(FormerFile, TakesTheNextFreeName) {
    folder.write("a.ulk", "former");
    folder.write("a.ulk~", "kept");
    fs::create_directory(path("a.ulk~1"));
    fs::create_symlink("nowhere", path("a.ulk~2"));
    const captured_stream errors(std::cerr);
    save_badly(path("a.ulk"));
    EXPECT_EQ(read_file(path("a.ulk~3")), "former");
    EXPECT_EQ(read_file(path("a.ulk~")), "kept");
    EXPECT_TRUE(save(path("a.ulk"), "whole"));
    EXPECT_EQ(names(), (names_t{"a.ulk", "a.ulk~", "a.ulk~1", "a.ulk~2", "a.ulk~3"}));
    EXPECT_EQ(read_file(path("a.ulk~3")), "former");
}

TEST_F(FormerFile, IsNoneForANewName) {
    const captured_stream errors(std::cerr);
    save_badly(path("a.ulk"));
    EXPECT_EQ(names(), names_t{"a.ulk"});
    EXPECT_EQ(errors.text(), "");
}

TEST_F(FormerFile, GivesItsModeToTheNewOne) {
    folder.write("a.ulk", "former");
    for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
        ASSERT_EQ(chmod(path("a.ulk").c_str(), mode), 0);
        ASSERT_TRUE(save(path("a.ulk"), "new"));
        EXPECT_EQ(mode_of(path("a.ulk")), mode);
    }
}

TEST_F(FormerFile, GivesItsOwnerToTheNewOne) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    folder.write("a.ulk", "former");
    ASSERT_EQ(chown(path("a.ulk").c_str(), 1234, 2345), 0);
    ASSERT_TRUE(save(path("a.ulk"), "new"));
    struct stat status {};
    ASSERT_EQ(stat(path("a.ulk").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
}

TEST_F(FormerFile, OfAnotherGroupOpensTheNewOneToNobodyElse) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    folder.write("a.ulk", "former");
    ASSERT_EQ(chmod(path("").c_str(), 0777), 0);
    ASSERT_EQ(chown(path("a.ulk").c_str(), 1234, 2345), 0);
    ASSERT_EQ(chmod(path("a.ulk").c_str(), 0666), 0);
    EXPECT_TRUE(save_as_ordinary_user(path("a.ulk"), "new"));
    EXPECT_EQ(mode_of(path("a.ulk")), 0666U);
    ASSERT_EQ(chown(path("a.ulk").c_str(), ulk_test::ordinary_user, 2345), 0);
    ASSERT_EQ(chmod(path("a.ulk").c_str(), 0660), 0);
    EXPECT_TRUE(save_as_ordinary_user(path("a.ulk"), "newer"));
    EXPECT_EQ(mode_of(path("a.ulk")), 0600U);
    EXPECT_EQ(read_file(path("a.ulk")), "newer");
}

TEST_F(FormerFile, GivesItsAttributesToTheNewOne) {
    folder.write("a.ulk", "former");
    if (setxattr(path("a.ulk").c_str(), "user.tag", "red", 3, 0) != 0)
        GTEST_SKIP() << "the file system of the temporary folder keeps no attributes";
    ASSERT_TRUE(save(path("a.ulk"), "new"));
    std::string value(3, ' ');
    EXPECT_EQ(getxattr(path("a.ulk").c_str(), "user.tag", value.data(), value.size()), 3);
    EXPECT_EQ(value, "red");
}

TEST_F(FormerFile, IsTheOneBehindTheLinks) {
    fs::create_directory(path("real"));
    folder.write("real/a.ulk", "former");
    fs::create_symlink("real/a.ulk", path("near.ulk"));
    fs::create_symlink(path("near.ulk"), path("far.ulk"));
    const captured_stream errors(std::cerr);
    save_badly(path("far.ulk"));
    EXPECT_EQ(read_file(path("real/a.ulk~")), "former");
    EXPECT_TRUE(save(path("far.ulk"), "whole"));
    EXPECT_TRUE(fs::is_symlink(path("far.ulk")));
    EXPECT_TRUE(fs::is_symlink(path("near.ulk")));
    EXPECT_EQ(read_file(path("real/a.ulk")), "whole");
    EXPECT_EQ(names(), (names_t{"far.ulk", "near.ulk", "real"}));
}

TEST_F(FormerFile, IsWrittenOverWhenItHasSeveralNames) {
    folder.write("a.ulk", "former");
    fs::create_hard_link(path("a.ulk"), path("other.ulk"));
    const captured_stream errors(std::cerr);
    save_badly(path("a.ulk"));
    EXPECT_EQ(read_file(path("other.ulk")), "new");
    EXPECT_EQ(names(), (names_t{"a.ulk", "other.ulk"}));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(FormerFile, IsWrittenOverWhenItsNameCanNotBecomeLonger) {
    const std::string name(255, 'n');
    folder.write(name, "former");
    EXPECT_TRUE(save(path(name), "new"));
    EXPECT_EQ(read_file(path(name)), "new");
    EXPECT_EQ(names(), names_t{name});

    const std::string last_but_one(254, 'm');
    folder.write(last_but_one, "former");
    folder.write(last_but_one + "~", "kept");
    EXPECT_TRUE(save(path(last_but_one), "new"));
    EXPECT_EQ(read_file(path(last_but_one + "~")), "kept");
}

TEST_F(FormerFile, IsWrittenOverInAFolderThatTakesNoNewFiles) {
    folder.write("a.ulk", "former");
    ASSERT_EQ(chmod(path("a.ulk").c_str(), 0666), 0);
    ASSERT_EQ(chmod(path("").c_str(), 0555), 0);
    const bool saved = save_as_ordinary_user(path("a.ulk"), "new");
    ASSERT_EQ(chmod(path("").c_str(), 0755), 0);
    EXPECT_TRUE(saved);
    EXPECT_EQ(read_file(path("a.ulk")), "new");
    EXPECT_EQ(names(), names_t{"a.ulk"});
}

TEST_F(FormerFile, IsWrittenOverWhenOnlyItsOwnerMayRenameIt) {
    if (geteuid() != 0)
        GTEST_SKIP() << "a file of another user is needed";
    folder.write("a.ulk", "former");
    ASSERT_EQ(chmod(path("a.ulk").c_str(), 0666), 0);
    ASSERT_EQ(chmod(path("").c_str(), 01777), 0);
    EXPECT_TRUE(save_as_ordinary_user(path("a.ulk"), "new"));
    EXPECT_EQ(read_file(path("a.ulk")), "new");
    EXPECT_EQ(names(), names_t{"a.ulk"});
}

TEST_F(FormerFile, IsLeftAloneWhenItMayNotBeWritten) {
    folder.write("a.ulk", "former");
    ASSERT_EQ(chmod(path("a.ulk").c_str(), 0444), 0);
    ASSERT_EQ(chmod(path("").c_str(), 0777), 0);
    EXPECT_FALSE(save_as_ordinary_user(path("a.ulk"), "new"));
    EXPECT_EQ(read_file(path("a.ulk")), "former");
    EXPECT_EQ(names(), names_t{"a.ulk"});
}

TEST_F(FormerFile, StaysAsideWhenTheFolderIsRenamedUnderTheSave) {
    fs::create_directory(path("scenes"));
    folder.write("scenes/a.ulk", "former");
    const captured_stream errors(std::cerr);
    {
        output_file output(path("scenes/a.ulk").c_str(), fifo_t::refuse);
        output.write("new", 3);
        fs::rename(path("scenes"), path("moved"));
        EXPECT_FALSE(output.complete());
    }
    EXPECT_EQ(read_file(path("moved/a.ulk~")), "former");
}

TEST_F(FormerFile, IsGoneWithItsFolderAndTheSaveFails) {
    fs::create_directory(path("scenes"));
    folder.write("scenes/a.ulk", "former");
    const captured_stream errors(std::cerr);
    output_file output(path("scenes/a.ulk").c_str(), fifo_t::refuse);
    output.write("new", 3);
    fs::remove_all(path("scenes"));
    EXPECT_FALSE(output.complete());
}

TEST_F(FormerFile, GetsItsPlaceBackWhenTheSaveIsDiscarded) {
    folder.write("a.ulk", "former");
    const captured_stream errors(std::cerr);
    for (const bool completed : {false, true}) {
        output_file output(path("a.ulk").c_str(), fifo_t::refuse);
        output.write("new", 3);
        if (completed) {
            output.fail();
            EXPECT_FALSE(output.complete());
        }
        output.discard();
        EXPECT_EQ(read_file(path("a.ulk")), "former");
        EXPECT_EQ(names(), names_t{"a.ulk"});
    }
    EXPECT_EQ(errors.text(), "");
    output_file output(path("new.ulk").c_str(), fifo_t::refuse);
    output.discard();
    EXPECT_EQ(names(), names_t{"a.ulk"});
}

TEST_F(FormerFile, StaysAsideWhenTheSizeOfFilesIsLimited) {
    const std::string former(10'000, 'f');
    folder.write("a.ulk", former);
    const captured_stream errors(std::cerr);
    EXPECT_EQ(ulk_test::in_child([&] {
                  const rlimit limit{5000, 5000};
                  return setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
                         !save(path("a.ulk"), std::string(20'000, 'n'));
              }),
              child_result_t::yes);
    EXPECT_EQ(read_file(path("a.ulk")), std::string(5000, 'n'));
    EXPECT_EQ(read_file(path("a.ulk~")), former);
}

TEST_F(FormerFile, StaysAsideOnAFullDisk) {
    const auto fill_the_disk = [&] {
        const std::string disk = path("disk");
        fs::create_directory(disk);
        if (!ulk_test::mount_small_disk(disk))
            return child_result_t::not_possible;
        const std::string file = disk + "/a.ulk", former(40'000, 'f');
        if (!save(file, former) || save(file, std::string(100'000, 'n')))
            return child_result_t::no;
        return read_file(file + "~") == former ? child_result_t::yes : child_result_t::no;
    };
    const child_result_t result = ulk_test::result_of_child(fill_the_disk);
    if (result == child_result_t::not_possible)
        GTEST_SKIP() << "this user can not mount a small disk";
    EXPECT_EQ(result, child_result_t::yes);
}

TEST_F(FormerFile, AReaderThatGoesAwayIsAFailureAndNoSignal) {
    const std::string fifo = path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(ulk_test::in_child([&] {
                  const int reader = ::open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
                  output_file output(fifo.c_str(), fifo_t::needs_reader);
                  ::close(reader);
                  output.write("new", 3);
                  return !output.complete();
              }),
              child_result_t::yes);
}

TEST_F(FormerFile, SignalsDoAfterASaveWhatTheyDidBefore) {
    ASSERT_TRUE(save(path("a.ulk"), "new"));
    for (const int signal : {SIGXFSZ, SIGPIPE}) {
        struct sigaction action {};
        ASSERT_EQ(sigaction(signal, nullptr, &action), 0);
        EXPECT_EQ(action.sa_handler, SIG_DFL) << signal;
    }
}

}  // namespace
