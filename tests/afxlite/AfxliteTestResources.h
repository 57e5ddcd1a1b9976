// String resources of afxlite_tests, shared by the .rc file and the tests.
#pragma once
#define IDS_AFX_GREETING   0x2000
#define IDS_AFX_LAST_IN_BLOCK 0x200F  // the last string of the greeting's block
#define IDS_AFX_LONG       0x2010  // longer than the framework's 256-character buffers
#define IDS_AFX_MISSING    0x2005  // in the greeting's block, but not defined
