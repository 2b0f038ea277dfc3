#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>

#include "formats/scene_files.h"
#include "formats/stl/stl_writer.h"
#include "gl/formats/scene/block_reading.h"
#include "support/gl_context.h"
#include "support/places.h"
#include "support/scene_text.h"
#include "support/stl_bytes.h"

/// Exchange with another program that reads and writes STL files: the mesh checker admesh.
namespace {

using namespace ulk3d;
using namespace ulk_test;

/// Runs admesh on a file; what it printed. Fails the test when it did not run well.
std::string admesh(const std::string& options, const std::string& path) {
    const std::string command = "'" + admesh_program() + "' " + options + " '" + path + "' 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        ADD_FAILURE() << "not started: " << command;
        return {};
    }
    std::string printed;
    char buffer[4096];
    for (std::size_t got = 0; (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        printed.append(buffer, got);
    EXPECT_EQ(pclose(pipe), 0) << command << "\n" << printed;
    return printed;
}

/// The number behind the first of these words in what admesh printed; -1 when they are missing.
double number_behind(const std::string& words, const std::string& printed) {
    const std::size_t place = printed.find(words);
    if (place == std::string::npos)
        return -1;
    const std::size_t digits = printed.find_first_of("-0123456789", place + words.size());
    return std::stod(printed.substr(digits));
}

class StlExchange : public gl_test {
  protected:
    void load(const std::string& path) {
        std::ostringstream log;
        ASSERT_TRUE(load_scene(scene, path.c_str(), surface_programs(), log)) << log.str();
    }

    /// The closed cube of the samples: twelve triangles.
    void load_cube() { load(sample("cube.ulk")); }

    temporary_folder_t folder;
    scene_t scene;
};

void expect_a_sound_cube(const std::string& report) {
    EXPECT_EQ(number_behind("Number of facets", report), 12) << report;
    EXPECT_EQ(number_behind("Total disconnected facets", report), 0) << report;
    EXPECT_EQ(number_behind("Number of parts", report), 1) << report;
    EXPECT_EQ(number_behind("Degenerate facets", report), 0) << report;
    EXPECT_EQ(number_behind("Facets reversed", report), 0) << report;
    EXPECT_EQ(number_behind("Normals fixed", report), 0) << report;
    // It is positive only for triangles that look outward.
    EXPECT_GT(number_behind("Volume", report), 0) << report;
}

TEST_F(StlExchange, TheBinaryFormIsASoundMeshToAnotherReader) {
    load_cube();
    const std::string path = folder.path("cube.stl");
    ASSERT_TRUE(save_scene(scene, path.c_str()));
    const std::string report = admesh("", path);
    EXPECT_NE(report.find("Binary STL file"), std::string::npos) << report;
    expect_a_sound_cube(report);
}

TEST_F(StlExchange, TheAsciiFormIsASoundMeshToAnotherReader) {
    load_cube();
    const std::string path = folder.path("cube.txt");
    ASSERT_TRUE(save_stl_ascii(path.c_str(), scene.models));
    const std::string report = admesh("", path);
    EXPECT_NE(report.find("ASCII STL file"), std::string::npos) << report;
    expect_a_sound_cube(report);
}

TEST_F(StlExchange, AnotherWritersFileHasTheSameTriangles) {
    load_cube();
    const std::string ours = folder.path("ours.stl"), theirs = folder.path("theirs.stl"),
                      again = folder.path("again.stl");
    ASSERT_TRUE(save_scene(scene, ours.c_str()));
    admesh("--no-check --write-binary-stl='" + theirs + "'", ours);
    ASSERT_NE(read_file(theirs).substr(0, 80), read_file(ours).substr(0, 80))
        << "it wrote no file of its own";

    scene.models.clear();
    load(theirs);
    ASSERT_TRUE(save_scene(scene, again.c_str()));
    EXPECT_EQ(stl_triangles(read_file(again)).size(), 12U);
    EXPECT_EQ(stl_triangles(read_file(again)), stl_triangles(read_file(ours)));
}

}  // namespace
