#include "TesvorFunctions.h"
#include <Corvel.h>
#include <memory>

namespace {

// Traces are bounded here rather than trusted: a text that would not fit is cut
// at the last character that does.
const int kTraceBufferLength = 2048;

// The ANSI code page of the calling thread. CP_THREAD_ACP is refused by systems
// that predate it; then the thread locale names its code page, and the system
// code page stands in when even that is unknown.
UINT ThreadAnsiCodePage()
{
    CPINFO info;
    if (::GetCPInfo(CP_THREAD_ACP, &info))
        return CP_THREAD_ACP;
    wchar_t digits[8] = L"";
    if (::GetLocaleInfoW(::GetThreadLocale(), LOCALE_IDEFAULTANSICODEPAGE, digits, 8) > 0) {
        UINT codePage = wcstoul(digits, NULL, 10);
        if (codePage != 0 && ::IsValidCodePage(codePage))
            return codePage;
    }
    return CP_ACP;
}

// The channel names a trace source: text, or a string resource of the module chain.
std::unique_ptr<char[]> NarrowChannel(const wchar_t* channel)
{
    CString wide(channel);  // a resource identifier loads; null stays empty
    UINT codePage = ThreadAnsiCodePage();
    int bytes = wide.IsEmpty() ? 0
                               : ::WideCharToMultiByte(codePage, 0, wide, wide.GetLength(), NULL, 0, NULL, NULL);
    std::unique_ptr<char[]> narrow(new (std::nothrow) char[bytes > 0 ? bytes + 1 : 1]);
    if (!narrow)
        AfxThrowMemoryException();
    if (bytes > 0)
        ::WideCharToMultiByte(codePage, 0, wide, wide.GetLength(), narrow.get(), bytes, NULL, NULL);
    narrow[bytes > 0 ? bytes : 0] = '\0';
    return narrow;
}

}  // namespace

bool MFailed(HRESULT hr, const wchar_t*, UINT) { return hr < 0; }

short UVLRGetSoftErrCode(HRESULT hr)
{
    if ((static_cast<DWORD>(hr) & 0x20000000) == 0)
        return 0x7FFF;
    return static_cast<short>(static_cast<DWORD>(hr) & 0xFFFF);
}

void UVLRDebugOutputEx(const wchar_t* channel, const wchar_t* format, ...)
{
    wchar_t text[kTraceBufferLength];
    va_list args;
    va_start(args, format);
    int length = format != NULL ? AfxCrtVsnwprintf(text, kTraceBufferLength - 1, format, args) : 0;
    va_end(args);
    text[length >= 0 ? length : kTraceBufferLength - 1] = L'\0';

    // The text goes on as the format, so Corvel formats it once more.
    MDebugTrace(NarrowChannel(channel).get(), text);
}

void UVLRDebugOutput(const wchar_t*, ...) {}

CString UGetComError(HRESULT) { return CString(); }
