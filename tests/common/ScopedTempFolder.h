// A folder of the test's own under the temporary folder, removed with what the test made in it.
#pragma once
#include <afx.h>
#include <vector>
#include "NMFileUtils.h"

class ScopedTempFolder {
public:
    ScopedTempFolder()
    {
        m_root.Format(L"%sTesvorTest%lu", NMFileUtils::GetTempFolderPath().GetString(), ::GetCurrentProcessId());
        ::CreateDirectoryW(m_root, NULL);
    }
    ~ScopedTempFolder()
    {
        for (auto it = m_made.rbegin(); it != m_made.rend(); ++it)
            if (!::DeleteFileW(*it))
                ::RemoveDirectoryW(*it);
        ::RemoveDirectoryW(m_root);
    }
    ScopedTempFolder(const ScopedTempFolder&) = delete;
    ScopedTempFolder& operator=(const ScopedTempFolder&) = delete;

    CString Path(const wchar_t* relative) const { return m_root + L"\\" + relative; }
    // Makes an empty file, or a folder when the name ends in a backslash; its full path.
    CString Make(const wchar_t* relative)
    {
        CString path = Path(relative);
        if (path.Right(1) == L"\\") {
            path.Delete(path.GetLength() - 1);
            ::CreateDirectoryW(path, NULL);
        } else {
            CFile().Open(path, CFile::modeCreate | CFile::modeWrite);  // closed again with the temporary
        }
        m_made.push_back(path);
        return path;
    }

private:
    CString m_root;
    std::vector<CString> m_made;
};
