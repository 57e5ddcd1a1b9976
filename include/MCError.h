// MCError: a copyable error record holding one error text. The UI description
// reader derives from it and keeps the text of the last error it caught there.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCError {
public:
    MCError();
    MCError(const MCError& other);
    MCError& operator=(const MCError& other);
    virtual ~MCError();

    CString m_strError;
};
