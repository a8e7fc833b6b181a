#include "Process.h"

namespace velmo {

Process::Process(std::vector<std::string> arguments)
    : commandLine(CommandLineText(arguments, environment.currentDirectory, files))
{}

} // namespace velmo
