// A save that is killed, as by a crash of the machine, before and after each of its calls of the system.

#include <signal.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <optional>

#include "faults/fault_loop.h"
#include "faults/saved_files.h"
#include "support/pictures.h"
#include "utils/pictures/image_files.h"

namespace {

using namespace ulk_test;

enum class end_t { killed, by_itself, not_possible };

/// Runs `work` in a child process and kills that at its stop numbered `stop`: each call of the system has one
/// before and one after it.
template <class Work>
end_t killed_at(int stop, Work&& work) {
    const pid_t child = fork();
    if (child < 0)
        return end_t::not_possible;
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(1);
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFSTOPPED(status))
        return end_t::not_possible;
    for (int i = 0; i < stop; ++i) {
        if (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0 || waitpid(child, &status, 0) != child)
            return end_t::not_possible;
        if (WIFEXITED(status))
            return WEXITSTATUS(status) == 0 ? end_t::by_itself : end_t::not_possible;
        if (!WIFSTOPPED(status) || WSTOPSIG(status) != SIGTRAP)
            return end_t::not_possible;
    }
    kill(child, SIGKILL);
    while (waitpid(child, &status, 0) == child && !WIFSIGNALED(status) && !WIFEXITED(status)) {
    }
    return end_t::killed;
}

class KilledSave : public fault_loop {
  protected:
    void SetUp() override {
        fault_loop::SetUp();
        open(triangle_block(1, -0.5F) + patch_block());
        // Finished by now, so that the child finds nothing that waits for a driver's threads.
        glFinish();
    }

    /// Kills a save everywhere. Returns how many times, 0 where processes may not be traced.
    int kill_everywhere(const saved_file_t& save) {
        for (int stop = 0;; ++stop) {
            SCOPED_TRACE("stop " + std::to_string(stop));
            save.prepare();
            const end_t end = killed_at(stop, [&] { return save.save(); });
            if (end == end_t::not_possible)
                return 0;
            if (end == end_t::by_itself) {
                EXPECT_EQ(save.complaint_when(true), "");
                return stop;
            }
            EXPECT_EQ(save.complaint_after_the_end(), "");
            if (HasFailure())
                return stop;
        }
    }

    void expect_whole_files(const saved_file_t& save) {
        const int stops = kill_everywhere(save);
        if (stops == 0)
            GTEST_SKIP() << "Left out: processes may not be traced here.";
        EXPECT_GT(stops, 10) << "a save has more calls than that";
    }
};

TEST_F(KilledSave, OfASceneLeavesAWholeFile) {
    expect_whole_files(
        {folder, "scene.ulk", [this](const char* path) { return editor.save_models_to(path); }});
}

TEST_F(KilledSave, OfAnStlFileLeavesAWholeFile) {
    expect_whole_files(
        {folder, "mesh.stl", [this](const char* path) { return editor.save_models_to(path); }});
}

class KilledPictureSave : public KilledSave, public testing::WithParamInterface<const char*> {};

TEST_P(KilledPictureSave, LeavesAWholeFile) {
    const libutils::image2d picture = plain_picture(40, 30, {10, 20, 30});
    expect_whole_files(
        {folder, GetParam(), [&](const char* path) { return libutils::autosaveformat(picture, path); }});
}

INSTANTIATE_TEST_SUITE_P(Forms, KilledPictureSave,
                         testing::Values("picture.png", "picture.jpg", "picture.bmp", "picture.tga"),
                         [](const auto& form) { return std::string(form.param).substr(8); });

}  // namespace
