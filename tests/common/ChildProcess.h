// A program next to the test program, run with its standard output on a pipe
// that the test reads line by line.
#pragma once
#include <string>
#include "TestSupport.h"
#include "frame/Owners.h"

class ChildProcess {
public:
    ChildProcess(const wchar_t* program, const std::wstring& arguments)
    {
        std::wstring commandLine = L"\"" + std::wstring(ProgramFolderPath(program).GetString()) + L"\" " + arguments;
        SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), NULL, TRUE};
        UniqueHandle writeEnd;
        if (!::CreatePipe(m_output.put(), writeEnd.put(), &inheritable, 0))
            return;
        ::SetHandleInformation(m_output.get(), HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
        startup.hStdOutput = writeEnd.get();
        startup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
        PROCESS_INFORMATION info = {};
        if (::CreateProcessW(NULL, &commandLine[0], NULL, NULL, TRUE, 0, NULL, NULL, &startup, &info))
            m_process.reset(info.hProcess);
        UniqueHandle unusedThread(info.hThread);
    }
    ~ChildProcess()
    {
        // A program that is about to end gets the time to do so cleanly.
        if (m_process && Wait(5000) == STILL_ACTIVE)
            ::TerminateProcess(m_process.get(), 99);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The next line of its output without its end; empty at the end of the output.
    std::string ReadLine()
    {
        std::string line;
        char c;
        DWORD read = 0;
        while (m_process && ::ReadFile(m_output.get(), &c, 1, &read, NULL) && read == 1 && c != '\n')
            if (c != '\r')
                line += c;
        return line;
    }
    // The exit code, or STILL_ACTIVE when it does not end in time.
    DWORD Wait(DWORD milliseconds = 30000)
    {
        DWORD code = STILL_ACTIVE;
        if (::WaitForSingleObject(m_process.get(), milliseconds) == WAIT_OBJECT_0)
            ::GetExitCodeProcess(m_process.get(), &code);
        return code;
    }
    void Kill()
    {
        ::TerminateProcess(m_process.get(), 99);
        Wait();
    }

private:
    UniqueHandle m_process;
    UniqueHandle m_output;
};
