#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <streambuf>
#include <string>

#include "app/editor/ulkedit.h"
#include "support/faults/faults.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

namespace ulk_test {

/// Takes what is written to a stream, without memory of its own: a message must not be what runs out of it.
class kept_words_t : public std::streambuf {
  public:
    explicit kept_words_t(std::ostream& from);
    ~kept_words_t() override;
    kept_words_t(const kept_words_t&) = delete;
    kept_words_t& operator=(const kept_words_t&) = delete;

    std::string text() const { return {pbase(), pptr()}; }

  private:
    std::ostream& stream;
    std::streambuf* original;
    std::array<char, 65536> room{};
};

/// All that a user can see or save of a scene.
struct scene_state_t {
    std::string
        models;        ///< their tables, buffers, names and settings, the environment, and the steps of undo
    std::string maps;  ///< which maps are loaded
    libutils::rgba_picture_t picture;
    bool operator==(const scene_state_t&) const = default;
};

/// An editor in which commands are made to fail at each of their operations in turn.
class fault_loop : public gl_test {
  public:
    /// What is run. `prepare` makes the scene from nothing. `command` returns whether it has worked; one
    /// without a result returns nothing, and its state tells.
    struct run_t {
        std::function<void()> prepare;
        std::function<std::optional<bool>()> command;
    };

    /// Fails the command at each operation, on a fresh scene each time. Each time the scene is as before, and
    /// the result says so or a word on the standard error stream, or as after; and the command then works
    /// when it is given again. Two things may be missing after all, with a word about each: a map whose
    /// picture could not be read, and the fit of the views.
    /// Returns the number of operations.
    std::uint64_t fail_everywhere(const fault_t& fault, const run_t& run);
    /// The same for what a shortage of memory brings about.
    void run_out_of_memory_everywhere(const run_t& run);

  protected:
    void SetUp() override;

    /// An editor with the models of a text and no texture that was loaded before.
    void open(const std::string& text);
    bool open_file(const std::string& path);

    scene_state_t state();
    ulk3d::model_entry_t& entry(std::size_t index);

    temporary_folder_t folder;
    std::optional<render_target_t> target;
    ulk3d::ulkedit_t editor{"ulkedit"};

  private:
    void fail_once(const fault_t& fault, std::uint64_t number, const run_t& run, const scene_state_t& before,
                   const scene_state_t& after);
};

}  // namespace ulk_test
