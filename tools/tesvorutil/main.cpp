// tesvorutil: runs the library's services from the command line. Each
// subcommand registers itself from its own file; this file only dispatches.
#include <afx.h>
#include <vector>
#include "Commands.h"
#include "Output.h"

namespace tesvorutil {
namespace {

std::vector<Command>& CommandTable()
{
    static std::vector<Command> table;  // filled by static initialisers of other files
    return table;
}

const Command* FindCommand(const wchar_t* name)
{
    if (name == NULL)
        return NULL;
    for (const Command& command : CommandTable()) {
        if (wcscmp(command.name, name) == 0)
            return &command;
    }
    return NULL;
}

bool IsHelpRequest(const wchar_t* name)
{
    return wcscmp(name, L"help") == 0 || wcscmp(name, L"--help") == 0 || wcscmp(name, L"-h") == 0 ||
           wcscmp(name, L"/?") == 0;
}

int PrintHelp()
{
    WriteOut(L"usage: tesvorutil COMMAND [ARGUMENTS...]\n\ncommands:\n");
    for (const Command& command : CommandTable()) {
        CString synopsis;
        synopsis.Format(L"%s %s", command.name, command.usage);
        PrintOut(L"  %-32s %s\n", static_cast<const wchar_t*>(synopsis), command.summary);
    }
    PrintOut(L"  %-32s %s\n", L"help [COMMAND]", L"show this list, or the usage of one command");
    WriteOut(L"\nexit code: 0 when every input is valid, 1 otherwise, 2 on a usage error\n");
    return ExitOk;
}

int RunHelp(int argc, wchar_t** argv)
{
    if (argc == 0)
        return PrintHelp();
    const Command* command = argc == 1 ? FindCommand(argv[0]) : NULL;
    if (command == NULL)
        return UsageError(NULL);
    PrintOut(L"usage: tesvorutil %s %s\n  %s\n", command->name, command->usage, command->summary);
    return ExitOk;
}

}  // namespace

void RegisterCommand(const Command& command) { CommandTable().push_back(command); }

int UsageError(const wchar_t* commandName)
{
    if (const Command* command = FindCommand(commandName)) {
        PrintErr(L"usage: tesvorutil %s %s\n", command->name, command->usage);
    } else {
        WriteErr(L"usage: tesvorutil COMMAND [ARGUMENTS...]\n"
                 L"Run 'tesvorutil help' for the list of commands.\n");
    }
    return ExitUsage;
}

}  // namespace tesvorutil

int wmain(int argc, wchar_t** argv)
{
    using namespace tesvorutil;
    if (argc < 2)
        return UsageError(NULL);
    const wchar_t* name = argv[1];
    if (IsHelpRequest(name))
        return RunHelp(argc - 2, argv + 2);
    const Command* command = FindCommand(name);
    if (command == NULL) {
        PrintErr(L"tesvorutil: unknown command '%s'\n", name);
        return UsageError(NULL);
    }
    try {
        return command->run(argc - 2, argv + 2);
    } catch (CException* e) {
        wchar_t text[512] = L"";
        if (!e->GetErrorMessage(text, 512))
            lstrcpynW(text, L"unexpected failure", 512);
        e->Delete();
        PrintErr(L"tesvorutil %s: %s\n", name, text);
        return ExitInvalid;
    }
}
