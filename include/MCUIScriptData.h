// The script reference of a UI description ("root/script").
#pragma once
#include <afx.h>

class MCUIScriptData {
public:
    CString strFile;  // attribute "file"
};
