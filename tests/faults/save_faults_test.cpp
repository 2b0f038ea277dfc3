// Saving over a file while something fails: the new file is there whole, or the former one under one of its
// two names.

#include <sys/resource.h>

#include <cerrno>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <vector>

#include "faults/fault_loop.h"
#include "faults/saved_files.h"
#include "formats/scene_files.h"
#include "support/child_process.h"
#include "support/pictures.h"
#include "utils/pictures/image_files.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// Pixels that differ, so that a file of a few bytes is not all that there is.
libutils::image2d gradient() {
    libutils::image2d image = plain_picture(40, 30, {0, 0, 0});
    for (std::uint32_t y = 0; y < image.height; ++y)
        for (std::uint32_t x = 0; x < image.width; ++x)
            for (std::uint32_t channel = 0; channel < 3; ++channel)
                image.pixel(x, y)[channel] = static_cast<unsigned char>(x * 6 + y * 3 + channel * 50);
    return image;
}

class SaveFaults : public fault_loop {
  protected:
    void SetUp() override {
        fault_loop::SetUp();
        write_cube(folder, "sky", {});
        const std::string text =
            "begin environment\ncubetex sky.png\nend\n" + triangle_block(1, -0.5F) + patch_block();
        open(text);
        std::ostringstream log;
        ASSERT_TRUE(load_scene(scene, folder.write("scene.ulk", text).c_str(), editor.view().glpolygon, log));
    }

    /// A save of each kind.
    std::vector<saved_file_t> saves() {
        std::vector<saved_file_t> all;
        for (const char* name : {"scene.ulk", "mesh.stl"})
            all.emplace_back(folder, name, [this](const char* path) { return editor.save_models_to(path); });
        all.emplace_back(folder, "model.ulk",
                         [this](const char* path) { return editor.save_current_to(path); });
        all.emplace_back(folder, "whole.ulk", [this](const char* path) { return save_scene(scene, path); });
        for (const char* name : {"picture.png", "picture.jpg", "picture.bmp", "picture.tga"})
            all.emplace_back(folder, name,
                             [this](const char* path) { return libutils::autosaveformat(picture, path); });
        return all;
    }

    void fail_everywhere(const fault_t& fault) {
        for (const saved_file_t& save : saves()) {
            SCOPED_TRACE(save.path);
            fail_everywhere(fault, save);
        }
    }

    scene_t scene;
    const libutils::image2d picture = gradient();

  private:
    void fail_everywhere(const fault_t& fault, const saved_file_t& save) {
        std::uint64_t count = 0;
        save.prepare();
        {
            const faults_t faults(fault, 0);
            EXPECT_TRUE(save.save());
            count = faults.count();
        }
        // libpng's writes are the library's own.
        const bool may_have_none = fault.operation == fallible_t::write ||
                                   fault.operation == fallible_t::mapping ||
                                   fault.operation == fallible_t::buffer_mapping;
        EXPECT_TRUE(count > 0 || may_have_none);
        for (const std::uint64_t number : failing_numbers(count)) {
            SCOPED_TRACE("operation " + std::to_string(number) + " of " + std::to_string(count));
            save.prepare();
            bool worked = false;
            {
                const kept_words_t words(std::cerr);
                const faults_t faults(fault, number);
                worked = save.save();
            }
            std::cerr.clear();
            EXPECT_EQ(save.complaint_when(worked), "");
            EXPECT_TRUE(save.save()) << "the failure has left something behind";
            EXPECT_EQ(save.complaint_when(true), "");
            if (HasFailure())
                return;
        }
    }
};

TEST_F(SaveFaults, OfMemory) {
    fail_everywhere({fallible_t::allocation});
    fail_everywhere({.operation = fallible_t::allocation, .is_lasting = true});
    fail_everywhere({fallible_t::mapping, ENOMEM});
    fail_everywhere({fallible_t::buffer_mapping});
}

TEST_F(SaveFaults, OfTheDisk) {
    for (const fallible_t operation :
         {fallible_t::open, fallible_t::write, fallible_t::rename, fallible_t::unlink, fallible_t::sync,
          fallible_t::close, fallible_t::status}) {
        SCOPED_TRACE("kind " + std::to_string(static_cast<int>(operation)));
        fail_everywhere({operation, EIO});
        fail_everywhere({operation, ENOSPC});
        fail_everywhere({.operation = operation, .error = EIO, .is_lasting = true});
    }
}

TEST_F(SaveFaults, AreNotOfInterruptionsAndShortWrites) {
    std::vector<saved_file_t> all = saves();
    for (const fault_t& fault :
         {fault_t{fallible_t::write, EINTR}, fault_t{fallible_t::sync, EINTR},
          fault_t{fallible_t::open, EINTR}, fault_t{.operation = fallible_t::write, .is_short = true}}) {
        for (const saved_file_t& save : all) {
            SCOPED_TRACE(save.path);
            save.prepare();
            bool worked = false;
            {
                const faults_t faults(fault, 1);
                worked = save.save();
            }
            EXPECT_TRUE(worked);
            EXPECT_EQ(save.complaint_when(true), "");
            EXPECT_FALSE(std::filesystem::exists(save.path + '~'));
        }
    }
}

TEST_F(SaveFaults, OfALimitOnTheSizeOfFilesAreNotTheEnd) {
    // Finished by now, so that the child finds nothing that waits for a driver's threads.
    glFinish();
    for (const saved_file_t& save : saves()) {
        SCOPED_TRACE(save.path);
        save.prepare();
        const child_result_t result = in_child([&] {
            const rlimit limit{60, 60};
            const kept_words_t words(std::cerr);
            return setrlimit(RLIMIT_FSIZE, &limit) == 0 && !save.save();
        });
        EXPECT_EQ(result, child_result_t::yes);
        EXPECT_EQ(save.complaint_when(false), "");
    }
}

}  // namespace
