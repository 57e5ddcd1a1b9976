// Resource identifiers of the window test program.
#pragma once
#define IDB_HELPER_STRIP 201
#define IDD_TEST 300
#define IDC_EDIT 101        // subclassed as CEdit
#define IDC_PLAIN_EDIT 102  // no wrapper object
#define IDC_CHECK 103
#define IDC_COMBO 104       // long items, few: no scroll bar
#define IDC_COMBO_MANY 105  // long items, many, a short list: a scroll bar
#define IDC_COMBO_EMPTY 106
#define IDC_STATIC_TEXT 107
#define IDC_BUTTON 108
#define IDC_MISSING 999
