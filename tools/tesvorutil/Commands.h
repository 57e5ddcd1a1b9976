// Subcommands of the tesvorutil program register themselves, so that each lives
// in its own file and main.cpp only dispatches.
#pragma once
#include <cstdio>

namespace tesvorutil {

// Exit codes shared by every subcommand.
enum ExitCode { ExitOk = 0, ExitInvalid = 1, ExitUsage = 2 };

struct Command {
    const wchar_t* name;     // as typed on the command line
    const wchar_t* usage;    // arguments, for the help text, e.g. L"ADDRESS..."
    const wchar_t* summary;  // one line for the help text
    int (*run)(int argc, wchar_t** argv);  // arguments after the command name
};

// Adds a command to the table; commands are listed in registration order.
void RegisterCommand(const Command& command);

// Prints the usage of one command to stderr and returns ExitUsage.
int UsageError(const wchar_t* commandName);

}  // namespace tesvorutil

// Registers a command at start-up: TESVOR_REGISTER_COMMAND(checkEmail, {L"check-email", ...});
#define TESVOR_REGISTER_COMMAND(id, ...)                                           \
    namespace {                                                                    \
    const bool registered_##id = (tesvorutil::RegisterCommand(__VA_ARGS__), true); \
    }
