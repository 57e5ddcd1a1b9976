// MCUserNames: the strings a user is known by, and the one to show in a given
// place, picked by a fixed order of preference.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

// The kind of identifier a user typed to log in.
enum MELoginIDType {
    LoginIDUnknown = 0,
    LoginIDVLRNumber = 1,
    LoginIDEmail = 2,
    LoginIDTesvor = 3,
};

class TESVORUTIL_API MCUserNames {
public:
    MCUserNames();
    MCUserNames(const MCUserNames& other);
    MCUserNames& operator=(const MCUserNames& other);
    ~MCUserNames();

    // True when the identifier ends with "#ext", in any case: the name comes
    // from an external identity and is not one the user chose.
    bool IsExternalID(CString strID);

    // A display name the user chose; else first and last name; else the
    // nickname; else the identifier.
    CString FormatFullName();
    // The display name (external ones included); else the nickname; else the identifier.
    CString FormatDisplayName();
    // The nickname; else the login alias; else the identifier.
    CString FormatDisplayNameForLogin();

    CString m_strDisplayName;  // may carry the suffix "#ext"
    CString m_strID;
    CString m_strNickname;
    CString m_strFirstName;
    CString m_strLastName;
    CString m_strLoginAlias;
};
