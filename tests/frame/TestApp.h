// The test program's application object: it records framework message boxes
// instead of showing them (a real one would wait for a click forever).
#pragma once
#include <afxwin.h>
#include <vector>

struct MessageBoxCall {
    CString text;
    UINT type;
    UINT helpId;
};

class TestApp : public CWinApp {
public:
    int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt) override
    {
        calls.push_back({CString(lpszPrompt), nType, nIDPrompt});
        return IDOK;
    }
    std::vector<MessageBoxCall> calls;
};

TestApp& TheTestApp();
