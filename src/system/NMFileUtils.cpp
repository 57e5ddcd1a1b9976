#include "NMFileUtils.h"

#include <shlobj.h>
#include <cstdlib>

namespace {

struct PathParts {
    wchar_t drive[3];
    wchar_t dir[260];
    wchar_t name[256];
    wchar_t ext[256];
};

bool SplitPath(const CString& fullPath, PathParts& parts)
{
    return ::_wsplitpath_s(fullPath, parts.drive, ARRAYSIZE(parts.drive), parts.dir, ARRAYSIZE(parts.dir),
                           parts.name, ARRAYSIZE(parts.name), parts.ext, ARRAYSIZE(parts.ext)) == 0;
}

CString WithoutLast(const CString& text) { return text.Left(text.GetLength() - 1); }

}  // namespace

namespace NMFileUtils {

bool GetModulePath(HINSTANCE module, CString& path)
{
    wchar_t buffer[MAX_PATH] = {};
    if (::GetModuleFileNameW(module, buffer, MAX_PATH) == 0)
        return false;
    path = buffer;
    return true;
}

bool ReturnPathExeFile(HINSTANCE module, CString& path, bool withoutBackslash)
{
    if (!GetModulePath(module, path))
        return false;
    int lastBackslash = path.ReverseFind(L'\\');
    if (lastBackslash != -1)
        path = path.Left(withoutBackslash ? lastBackslash : lastBackslash + 1);
    return true;
}

CString GetTempFolderPath()
{
    CString path;
    DWORD length = ::GetTempPathW(0, NULL);
    if (length == 0)
        return path;
    DWORD written = ::GetTempPathW(length, path.GetBuffer(static_cast<int>(length)));
    path.ReleaseBuffer(written < length ? static_cast<int>(written) : 0);
    return path;
}

bool ReturnFromFullPath(const CString& fullPath, CString& drive, CString& dir, CString& name, CString& ext)
{
    PathParts parts = {};
    SplitPath(fullPath, parts);
    drive = parts.drive;
    dir = parts.dir;
    name = parts.name;
    ext = parts.ext;
    return true;
}

CString ReturnFromFullPath(const CString& fullPath, BYTE selector)
{
    PathParts parts = {};
    if (!SplitPath(fullPath, parts))
        return CString();
    const CString drive(parts.drive), dir(parts.dir), name(parts.name), ext(parts.ext);
    switch (selector) {
    case 1: return drive;
    case 2: return dir;
    case 3: return name;
    case 4: return ext;
    case 10: return WithoutLast(drive);
    case 12: return drive + dir;
    case 23: return dir + name;
    case 34: return name + ext;
    case 40: return ext.Mid(1);  // the one variant that drops the first character
    case 120: return WithoutLast(drive + dir);
    case 123: return drive + dir + name;
    case 234: return dir + name + ext;
    default: return CString();
    }
}

void ValidatePath(CString& path)
{
    if (path.GetAllocLength() == 0)
        return;
    int length = path.GetLength();
    if (length == 0 || path[length - 1] != L'\\')
        path += L'\\';
}

bool SetAndValidatePath(wchar_t* const source, CString& path)
{
    path = source;
    if (path.IsEmpty())
        return false;
    ValidatePath(path);
    return true;
}

bool GetFilesByType(const CString& pattern, MCStringArrayImpl<CString, const CString&>& files)
{
    CFileFind finder;
    BOOL more = finder.FindFile(pattern);
    if (!more)
        return false;
    while (more) {
        more = finder.FindNextFile();
        files.Add(finder.GetFilePath());
    }
    return true;
}

HRESULT GetFolderPath(int folder, CString& path, bool create)
{
    wchar_t buffer[MAX_PATH] = {};
    HRESULT hr = ::SHGetFolderPathW(NULL, folder | (create ? CSIDL_FLAG_CREATE : 0), NULL, 0, buffer);
    if (hr == S_OK)
        path = buffer;
    return hr;
}

}  // namespace NMFileUtils
