// MCUIFooterData: the "footer" element of a dialog window.
#pragma once
#include <afx.h>

struct MCUIFooterData {
    CString strStatus;   // "status"
    DWORD dwStatusID;    // "statusid"

    MCUIFooterData() : dwStatusID(0) {}
};
