// A child program of the test suite, started from build/bin with its standard
// output on a pipe that the test reads line by line.
#pragma once
#include <windows.h>
#include <map>
#include <string>

// Full path of a program next to the running test program.
inline std::wstring ProgramPath(const wchar_t* fileName)
{
    wchar_t path[MAX_PATH];
    DWORD length = ::GetModuleFileNameW(NULL, path, MAX_PATH);
    std::wstring directory(path, length);
    return directory.substr(0, directory.find_last_of(L'\\') + 1) + fileName;
}

class ChildProcess {
public:
    ChildProcess() : m_process(NULL), m_output(NULL) {}
    ~ChildProcess()
    {
        if (m_process) {
            // A program that is about to end gets the time to do so cleanly.
            if (::WaitForSingleObject(m_process, 5000) == WAIT_TIMEOUT)
                ::TerminateProcess(m_process, 99);
            ::CloseHandle(m_process);
        }
        if (m_output)
            ::CloseHandle(m_output);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool Start(const wchar_t* program, const std::wstring& arguments)
    {
        SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), NULL, TRUE};
        HANDLE writeEnd = NULL;
        if (!::CreatePipe(&m_output, &writeEnd, &inheritable, 0))
            return false;
        ::SetHandleInformation(m_output, HANDLE_FLAG_INHERIT, 0);
        std::wstring commandLine = L"\"" + ProgramPath(program) + L"\" " + arguments;
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
        startup.hStdOutput = writeEnd;
        startup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
        PROCESS_INFORMATION info = {};
        BOOL started = ::CreateProcessW(NULL, &commandLine[0], NULL, NULL, TRUE, 0, NULL, NULL,
                                        &startup, &info);
        ::CloseHandle(writeEnd);
        if (!started)
            return false;
        ::CloseHandle(info.hThread);
        m_process = info.hProcess;
        return true;
    }

    // One line without its end; false at the end of the output.
    bool ReadLine(std::string& line)
    {
        line.clear();
        char c;
        DWORD read = 0;
        while (::ReadFile(m_output, &c, 1, &read, NULL) && read == 1) {
            if (c == '\n')
                return true;
            if (c != '\r')
                line += c;
        }
        return !line.empty();
    }

    // Every remaining "key=value" line.
    std::map<std::string, std::string> ReadValues()
    {
        std::map<std::string, std::string> values;
        std::string line;
        while (ReadLine(line)) {
            size_t equals = line.find('=');
            if (equals != std::string::npos)
                values[line.substr(0, equals)] = line.substr(equals + 1);
        }
        return values;
    }

    // The exit code, or STILL_ACTIVE when it does not end in time.
    DWORD Wait(DWORD milliseconds = 30000)
    {
        DWORD code = STILL_ACTIVE;
        if (::WaitForSingleObject(m_process, milliseconds) == WAIT_OBJECT_0)
            ::GetExitCodeProcess(m_process, &code);
        return code;
    }

    void Kill() { ::TerminateProcess(m_process, 99); ::WaitForSingleObject(m_process, 30000); }

private:
    HANDLE m_process;
    HANDLE m_output;
};
