// MUIUtils: the small helpers the applications' dialogs call again and again:
// child controls by identifier, class tests, unit conversions, font copies,
// combo-box drop width, rectangle conversions, strings, numbers and error texts.
//
// Helpers that take a parent and a control identifier never throw and never
// crash on a bad window: they report failure only through their result
// (0, -1, false, an empty string or an empty rectangle).
//
// Several names are also Win32 names (SetWindowTextW, GetWindowTextW,
// CreateFontW, ShowWindow, GetLastError); call them qualified, MUIUtils::...
#pragma once
#include <afxwin.h>
#include "tagGDILogFont.h"
#include "TesvorUtilExport.h"

class CWnd;
class CFont;
class CImageList;

namespace MUIUtils {

// Child controls by identifier; a null parent or a missing control does nothing.
TESVORUTIL_API void EnableWindow(CWnd* pParent, UINT nID, BOOL bEnable);
TESVORUTIL_API BOOL IsWindowEnabled(CWnd* pParent, UINT nID);
TESVORUTIL_API void ShowWindow(CWnd* pParent, UINT nID, BOOL bShow);
TESVORUTIL_API void SetFocus(CWnd* pParent, UINT nID);
TESVORUTIL_API void SetWindowTextW(CWnd* pParent, UINT nID, const wchar_t* pszText);
TESVORUTIL_API void SetWindowTextW(CWnd* pParent, UINT nID, int nValue);
TESVORUTIL_API CString GetWindowTextW(CWnd* pParent, UINT nID);
TESVORUTIL_API int GetWindowTextInt(CWnd* pParent, UINT nID);
TESVORUTIL_API void SetButtonCheck(CWnd* pParent, UINT nID, int nCheck);
// 1 for BST_CHECKED, 0 for any other state (indeterminate included), -1 on failure.
TESVORUTIL_API int GetButtonCheck(CWnd* pParent, UINT nID);
// Only for a control whose CWnd is a CEdit (a subclassed edit); false otherwise.
TESVORUTIL_API bool SetEditTextLength(CWnd* pParent, UINT nID, int nMax);
// The control's window rectangle on the screen, or in the parent's client
// coordinates with bClient; empty when a window is missing.
TESVORUTIL_API CRect GetWinRect(CWnd* pParent, UINT nID, bool bClient);
TESVORUTIL_API CRect GetWinRect(CWnd* pParent, CWnd* pChild, bool bClient);
TESVORUTIL_API CPoint GetWinPointByID(CWnd* pParent, UINT nID, bool bClient);

// Class tests. The first window recognised by name caches its class atom; the
// name test reads only six characters, so a first "ButtonX" passes as a button.
TESVORUTIL_API BOOL IsButton(HWND hWnd);
TESVORUTIL_API BOOL IsDialog(HWND hWnd);
// A button styled push, default push or owner-drawn.
TESVORUTIL_API BOOL IsPushButton(HWND hWnd);
// 1 without change for a window that is already visible: it is never hidden here.
TESVORUTIL_API BOOL ShowWindow(HWND hWnd, int nCmdShow);
// True for a BSTR of non-zero length.
TESVORUTIL_API bool IsValidID(wchar_t* const bstrID);

// Units. Pixel conversions use the screen's resolution (MM_TWIPS on a memory DC);
// twips to points truncates toward zero.
TESVORUTIL_API int PointsToTwips(int nPoints);
TESVORUTIL_API int TwipsToPoints(int nTwips);
TESVORUTIL_API int PixelsToTwips(int nPixels);
TESVORUTIL_API int TwipsToPixels(int nTwips);

// Copies lf into out. A face name already present in out is kept as it is.
TESVORUTIL_API void LOGFONTtoMDGDILOGFONT(const LOGFONTW& lf, tagGDILogFont& out);
// Replaces font's font with an independent copy of hFont.
TESVORUTIL_API bool CreateFontW(HFONT hFont, CFont& font);

// Widens the drop-down list of combo box nID to its longest item (plus a scroll
// bar when the items overflow the list); never narrows it.
TESVORUTIL_API void AjustComboboxDropWidth(CWnd* pParent, DWORD nID);

// prc is relative to the window's top-left corner; converted to the parent's
// client coordinates, or to coordinates relative to the parent's window rectangle.
TESVORUTIL_API BOOL WindowToParentClient(HWND hWnd, RECT* prc);
TESVORUTIL_API BOOL WindowToParentWindow(HWND hWnd, RECT* prc);

TESVORUTIL_API bool CompareStrings(const CString& strA, const CString& strB, bool bCaseSensitive);
TESVORUTIL_API int FindStr(CString strText, CString strFind, bool bCaseSensitive);
TESVORUTIL_API CString NumberToString(long nNumber);
TESVORUTIL_API long StringToNumber(const wchar_t* psz);
TESVORUTIL_API int ConvertStringToInt(const CString& str);
TESVORUTIL_API CString ReplicateChar(wchar_t ch, int nCount);
TESVORUTIL_API CString ReplicateSpaces(int nCount);
TESVORUTIL_API CString GetStringFromCLSID(GUID* pCLSID, bool bRemoveBraces);

// The system's text for the thread's last error, or "Error = <code> ".
TESVORUTIL_API CString GetLastError();
// The system's text for hr, or an empty string.
TESVORUTIL_API CString GetComError(HRESULT hr);

// A 32-bit masked image list from a bitmap strip of images cx wide.
TESVORUTIL_API BOOL CreateValidImageList(CImageList& il, UINT nBitmapID, int cx, COLORREF crMask);

}  // namespace MUIUtils
