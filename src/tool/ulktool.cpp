// The modeller's command-line companion: draws, checks, describes and converts scene files without a display.

#include <algorithm>
#include <array>
#include <iostream>
#include <string>
#include <vector>

#include "tool/commands.h"

namespace {

struct command_t {
    const char* name;
    int (*run)(ulktool::arguments_t);
    const char* usage;
};

constexpr std::array<command_t, 4> commands{{
    {"render", ulktool::render,
     "ulktool render SCENE PICTURE.png [--size WxH] [--view perspective|front|side|top] [--transparent]\n"
     "    Draws the frame of the view area as it is after opening SCENE, or one of its views.\n"
     "    The size is 1024x768 unless told otherwise. --transparent leaves the ground out.\n"},
    {"check", ulktool::check,
     "ulktool check FILE...\n"
     "    Reports what the reader says of each file, the signs that it was cut off (lines count\n"
     "    from 1), and which of its pictures are not shown or look wrong.\n"
     "    Exit status 1 if one does not load, or not with all its pictures.\n"},
    {"info", ulktool::info,
     "ulktool info FILE\n"
     "    Prints the models of a file with their counts, boxes and pictures.\n"},
    {"convert", ulktool::convert,
     "ulktool convert IN OUT\n"
     "    Loads IN and saves it as OUT, each in the format of its extension.\n"},
}};

void print_usage(std::ostream& out) {
    for (const command_t& command : commands)
        out << command.usage;
    out << "ulktool --help | --version\n"
           "    Every command knows these too.\n"
           "Exit status: 0 done, 1 failed, 2 wrong usage.\n";
}

void print_version() {
    std::cout << "ulktool " ULK_VERSION << std::endl;
}

bool has_word(const std::vector<std::string>& words, const char* word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    if (words.empty()) {
        print_usage(std::cerr);
        return ulktool::exit_usage;
    }
    const std::string name = words.front();
    words.erase(words.begin());
    for (const command_t& command : commands) {
        if (name != command.name)
            continue;
        if (has_word(words, "--help")) {
            std::cout << command.usage;
            return ulktool::exit_done;
        }
        if (has_word(words, "--version")) {
            print_version();
            return ulktool::exit_done;
        }
        return command.run(words);
    }
    if (name == "--help") {
        print_usage(std::cout);
        return ulktool::exit_done;
    }
    if (name == "--version") {
        print_version();
        return ulktool::exit_done;
    }
    std::cerr << "ulktool: unknown command: " << name << '\n';
    print_usage(std::cerr);
    return ulktool::exit_usage;
}
