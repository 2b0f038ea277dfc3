#pragma once

#include <span>
#include <string>

/// The commands of ulktool. Each takes the words after its name and returns the exit status. Wrong usage
/// gives a line on the standard error stream.
namespace ulktool {

enum exit_status_t : int {
    exit_done = 0,
    exit_failed = 1,
    exit_usage = 2,
};

using arguments_t = std::span<const std::string>;

/// Draws the frame of the view area, or one of its views, and saves it as a PNG picture.
[[nodiscard]] int render(arguments_t arguments);
/// Prints the reader's messages about each file, the signs that it was cut off, and what is wrong with its
/// pictures, to the standard output stream. Fails if a file does not load, or not with all its pictures.
[[nodiscard]] int check(arguments_t arguments);
/// Prints the models of a file to the standard output stream: kinds, counts, boxes and pictures.
[[nodiscard]] int info(arguments_t arguments);
/// Loads one file and saves it as another, each in the format of its extension.
[[nodiscard]] int convert(arguments_t arguments);

}  // namespace ulktool
