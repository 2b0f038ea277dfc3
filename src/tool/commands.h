#pragma once

#include <span>
#include <string>

/// The commands of ulktool. Each takes the words behind its name and returns the exit status.
namespace ulktool {

enum exit_status_t : int {
    exit_done = 0,
    exit_failed = 1,
    exit_usage = 2,
};

using arguments_t = std::span<const std::string>;

/// Draws the frame of the view area, or one of its views, into a PNG picture.
int render(arguments_t arguments);
/// Reports what the reader says of each file, and what is wrong with its pictures.
int check(arguments_t arguments);
/// Prints the models of a file: kinds, counts, boxes and pictures.
int info(arguments_t arguments);
/// Loads one file and saves it as another, each by its extension.
int convert(arguments_t arguments);

}  // namespace ulktool
