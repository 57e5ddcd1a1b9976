// MNSystemAutorityHelper: the administrator test and the logged-on user's name.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

namespace MNSystemAutorityHelper {

// Non-zero when the calling thread's user belongs to the local Administrators group.
TESVORUTIL_API int IsAdmin();
// The logged-on user's name; empty when it has 30 characters or more.
TESVORUTIL_API CString GetProfileName();

}  // namespace MNSystemAutorityHelper
