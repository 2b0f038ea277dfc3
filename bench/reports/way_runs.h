#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Ways to load and save meshes (peers/load_way.h), each run in processes of its own program. What goes wrong
/// is thrown as a std::runtime_error.

/// A kind of file, and what writes one with about as many triangles as asked for (load_files.h).
struct kind_t {
    const char* suffix;
    std::uint64_t (*write)(const std::string& path, std::uint64_t triangles);
};
struct way_t {
    const char* name;  ///< behind "load_with_" in the name of the program
    const kind_t& kind;
};

/// The ways whose programs were built: those whose library was found.
std::vector<way_t> ways_here(std::span<const way_t> ways);

/// A file in a folder of its own, which also has room for what is saved, as some ways write a second file.
/// The folder is removed with its owner.
class made_file_t {
  public:
    made_file_t(const kind_t& kind, std::uint64_t triangles);
    ~made_file_t();
    made_file_t(const made_file_t&) = delete;
    made_file_t& operator=(const made_file_t&) = delete;

    std::string path, saved_path;
    std::uint64_t triangles = 0;
    double megabytes = 0;

  private:
    std::string folder;
};

/// By the suffix of their kind.
using files_t = std::map<std::string_view, made_file_t>;

/// What the ways read.
files_t files_for(std::span<const way_t> ways, std::uint64_t triangles);

/// Of a load or a save, but for the peak, which is that of the process. The waits for the disk are counted
/// apart.
struct cost_t {
    double milliseconds = 0, processor_milliseconds = 0, fsync_milliseconds = 0, peak_mb = 0;
};

enum class task_t { load, save };

/// The least costs of each way in some runs. The ways take turns, so that a busy moment of the machine meets
/// all of them. A save is one of what was loaded, as a file of the same kind.
std::vector<cost_t> least_costs(std::span<const way_t> ways, const files_t& files, task_t task);
