// MCUIFooterData: the "footer" element of a dialog window.
#pragma once
#include <afx.h>

class MCUIFooterData {
public:
    CString strStatus;   // "status"
    DWORD dwStatusID;    // "statusid"

    MCUIFooterData() : dwStatusID(0) {}
};
