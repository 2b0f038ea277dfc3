// The modeller's command-line companion: works on scene files from scripts, without a display.

#include <algorithm>
#include <array>
#include <iostream>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tool/command_line/command_line.h"
#include "tool/command_line/help.h"
#include "tool/commands/commands.h"
#include "tool/scenes/standard_streams.h"

namespace ulktool {

namespace {

/// In the order of the help.
constexpr std::array commands{&render_command,     &check_command, &info_command,
                              &convert_command,    &cut_command,   &fold_command,
                              &polygonize_command, &tidy_command,  &place_command};

void print_usage(std::ostream& out) {
    for (const command_t* const command : commands)
        print_summary(out, *command);
    out << "ulktool --help | --version\n"
           "    Every command knows these too; ulktool COMMAND --help explains its options.\n"
           "A file called - is the standard input or output stream, as scene text. Behind -- every word is "
           "a\n"
           "file. Exit status: 0 done, 1 failed, 2 wrong usage.\n";
}

void print_version() {
    std::cout << "ulktool " ULK_VERSION << '\n';
}

int run_command(const command_t& command, std::span<const std::string> words) {
    try {
        const command_line_t line(command, words);
        if (line.wants_version())
            print_version();
        else if (line.wants_help())
            print_help(std::cout, command);
        else
            return command.run(line);
        return exit_done;
    } catch (const usage_error_t& error) {
        std::cerr << "ulktool " << command.name << ": " << error.what() << "; see ulktool " << command.name
                  << " --help" << std::endl;
        return exit_usage;
    } catch (const std::bad_alloc&) {
        std::cerr << "ulktool " << command.name << ": out of memory" << std::endl;
        return exit_failed;
    }
}

int run(std::span<const std::string> words) {
    if (words.empty()) {
        print_usage(std::cerr);
        return exit_usage;
    }
    const std::string& name = words.front();
    const auto command =
        std::ranges::find_if(commands, [&name](const command_t* row) { return name == row->name; });
    if (command != commands.end())
        return run_command(**command, words.subspan(1));
    if (name == "--help" || name == "-h") {
        print_usage(std::cout);
        return exit_done;
    }
    if (name == "--version") {
        print_version();
        return exit_done;
    }
    std::cerr << "ulktool: " << name << ": there is no such command; see ulktool --help" << std::endl;
    return exit_usage;
}

}  // namespace

}  // namespace ulktool

int main(int argc, char** argv) {
    ulktool::prepare_standard_streams();
    const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    const int status = ulktool::run(words);
    if (!ulktool::finish_standard_output())
        return ulktool::exit_failed;
    return status;
}
