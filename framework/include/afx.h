// afxlite: core of the MFC-compatible framework subset (objects, strings,
// exceptions, validity checks, files).
#pragma once
#include "afxlite_config.h"
#include "afxlite_object.h"
#include "afxlite_string.h"
#include "afxlite_except.h"
#include "afxlite_file.h"
#include "afxlite_filefind.h"

typedef struct __POSITION { } *POSITION;
#define BEFORE_START_POSITION ((POSITION)-1L)

// True when the pointer is a readable string of nLength characters (-1: up to its terminator).
AFXLITE_API BOOL AFXAPI AfxIsValidString(LPCWSTR psz, int nLength = -1);
AFXLITE_API BOOL AFXAPI AfxIsValidString(LPCSTR psz, int nLength = -1);
// True when nBytes at p are readable (and writable when bReadWrite is set).
AFXLITE_API BOOL AFXAPI AfxIsValidAddress(const void* p, UINT_PTR nBytes, BOOL bReadWrite = TRUE);
