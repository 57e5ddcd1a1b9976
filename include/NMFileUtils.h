// NMFileUtils: module, temporary and special folder paths, and the splitting
// of a full path into drive, directory, name and extension.
#pragma once
#include <afx.h>
#include "MCStringArrayImpl.h"
#include "TesvorUtilExport.h"

namespace NMFileUtils {

// Full path of the module's file (up to MAX_PATH characters).
TESVORUTIL_API bool GetModulePath(HINSTANCE module, CString& path);
// The module's folder, with its trailing backslash unless withoutBackslash.
TESVORUTIL_API bool ReturnPathExeFile(HINSTANCE module, CString& path, bool withoutBackslash);
// The system's temporary folder, ending in a backslash; empty when unknown.
TESVORUTIL_API CString GetTempFolderPath();

// The four parts as the runtime splits them: the directory keeps its
// backslashes, the extension its dot. Always true.
TESVORUTIL_API bool ReturnFromFullPath(const CString& fullPath, CString& drive, CString& dir, CString& name,
                                       CString& ext);
// Parts joined by selector: its decimal digits name the parts (1 drive,
// 2 directory, 3 name, 4 extension) and a 0 drops a separator:
//   1 drive, 2 dir, 3 name, 4 ext (with its dot), 10 the drive letter alone,
//   12 drive+dir, 23 dir+name, 34 name+ext, 40 ext without its dot,
//   120 drive+dir without the trailing backslash, 123 drive+dir+name,
//   234 dir+name+ext; any other selector gives an empty string, as does a
//   path the runtime cannot split.
TESVORUTIL_API CString ReturnFromFullPath(const CString& fullPath, BYTE selector);

// Appends a backslash unless the path ends in one; a string that was never
// given storage stays empty.
TESVORUTIL_API void ValidatePath(CString& path);
// path = source, then ValidatePath; false (and no backslash) when source is empty.
TESVORUTIL_API bool SetAndValidatePath(wchar_t* const source, CString& path);

// Appends the full path of every match of pattern (folders and the dot
// entries included) to files, in the order the system finds them; false when
// nothing matches.
TESVORUTIL_API bool GetFilesByType(const CString& pattern, MCStringArrayImpl<CString, const CString&>& files);

// SHGetFolderPathW of a CSIDL folder, created when asked; path changes only on S_OK.
TESVORUTIL_API HRESULT GetFolderPath(int folder, CString& path, bool create);

}  // namespace NMFileUtils
