// MUIUtils: class tests, rectangles, strings, numbers and error texts. The helpers
// that work through afxlite windows and graphics objects are in MUIUtilsWnd.cpp.
#include "MUIUtils.h"
#include "TesvorFunctions.h"
#include "frame/Owners.h"
#include <cwchar>
#include <cstdlib>

namespace {

ATOM g_buttonAtom = 0;
ATOM g_dialogAtom = 0;

ATOM ClassAtomOf(HWND hWnd) { return static_cast<ATOM>(::GetClassLongPtrW(hWnd, GCW_ATOM)); }

// Once a window of the class has been recognised by name, its atom decides. The
// name buffer holds six characters, so the first test accepts any class whose
// name merely starts with the wanted one; the applications live with that.
BOOL IsOfCachedClass(HWND hWnd, const wchar_t* className, ATOM& cachedAtom)
{
    if (cachedAtom != 0)
        return ClassAtomOf(hWnd) == cachedAtom;
    wchar_t name[7] = L"";
    if (::GetClassNameW(hWnd, name, 7) == 0)
        return FALSE;
    // Window class names are case-insensitive.
    if (_wcsicmp(name, className) != 0)
        return FALSE;
    cachedAtom = ClassAtomOf(hWnd);
    return TRUE;
}

// The system's text for a code; null when it has none.
UniqueHLocal<wchar_t> SystemMessage(DWORD flags, DWORD code)
{
    UniqueHLocal<wchar_t> text;
    ::FormatMessageW(flags | FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, NULL, code,
                     MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<LPWSTR>(text.put()), 0, NULL);
    return text;
}

}  // namespace

namespace MUIUtils {

BOOL IsButton(HWND hWnd) { return IsOfCachedClass(hWnd, L"Button", g_buttonAtom); }

BOOL IsDialog(HWND hWnd) { return IsOfCachedClass(hWnd, L"#32770", g_dialogAtom); }

BOOL IsPushButton(HWND hWnd)
{
    if (!IsButton(hWnd))
        return FALSE;
    LONG type = static_cast<LONG>(::GetWindowLongPtrW(hWnd, GWL_STYLE)) & 0x0F;
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON || type == BS_OWNERDRAW;
}

BOOL ShowWindow(HWND hWnd, int nCmdShow)
{
    if (!::IsWindow(hWnd))
        return FALSE;
    if (::IsWindowVisible(hWnd))
        return TRUE;
    return ::ShowWindow(hWnd, nCmdShow);
}

bool IsValidID(wchar_t* const bstrID) { return ::SysStringLen(bstrID) != 0; }

int PointsToTwips(int nPoints) { return nPoints * 20; }

int TwipsToPoints(int nTwips) { return nTwips / 20; }

void LOGFONTtoMDGDILOGFONT(const LOGFONTW& lf, tagGDILogFont& out)
{
    // A face name the record already has is the caller's choice and stays.
    if (out.bstrFaceName == NULL) {
        out.bstrFaceName = ::SysAllocString(lf.lfFaceName);
        if (out.bstrFaceName == NULL)
            return;
    }
    out.lfHeight = lf.lfHeight;
    out.lfWidth = lf.lfWidth;
    out.lfEscapement = lf.lfEscapement;
    out.lfOrientation = lf.lfOrientation;
    out.lfWeight = lf.lfWeight;
    out.lfItalic = lf.lfItalic;
    out.lfUnderline = lf.lfUnderline;
    out.lfStrikeOut = lf.lfStrikeOut;
    out.lfCharSet = lf.lfCharSet;
    out.lfOutPrecision = lf.lfOutPrecision;
    out.lfClipPrecision = lf.lfClipPrecision;
    out.lfQuality = lf.lfQuality;
    out.lfPitchAndFamily = lf.lfPitchAndFamily;
}

BOOL WindowToParentClient(HWND hWnd, RECT* prc)
{
    RECT rcWindow;
    if (prc == NULL || !::GetWindowRect(hWnd, &rcWindow))
        return FALSE;
    HWND hParent = ::GetAncestor(hWnd, GA_PARENT);
    if (hParent == NULL)
        return TRUE;
    ::OffsetRect(prc, rcWindow.left, rcWindow.top);
    POINT* corners = reinterpret_cast<POINT*>(prc);
    ::ScreenToClient(hParent, &corners[0]);
    ::ScreenToClient(hParent, &corners[1]);
    return TRUE;
}

BOOL WindowToParentWindow(HWND hWnd, RECT* prc)
{
    RECT rcWindow, rcParent;
    if (prc == NULL || !::GetWindowRect(hWnd, &rcWindow) ||
        !::GetWindowRect(::GetAncestor(hWnd, GA_PARENT), &rcParent))
        return FALSE;
    ::OffsetRect(prc, rcWindow.left - rcParent.left, rcWindow.top - rcParent.top);
    return TRUE;
}

bool CompareStrings(const CString& strA, const CString& strB, bool bCaseSensitive)
{
    return (bCaseSensitive ? wcscmp(strA, strB) : _wcsicmp(strA, strB)) == 0;
}

int FindStr(CString strText, CString strFind, bool bCaseSensitive)
{
    if (!bCaseSensitive) {
        strText.MakeUpper();
        strFind.MakeUpper();
    }
    return strText.Find(strFind);
}

CString NumberToString(long nNumber)
{
    CString str;
    str.Format(L"%d", static_cast<int>(nNumber));
    return str;
}

long StringToNumber(const wchar_t* psz)
{
    if (psz == NULL)
        return 0;
    return static_cast<long>(wcstoul(psz, NULL, 10));
}

int ConvertStringToInt(const CString& str) { return _wtoi(str); }

CString ReplicateChar(wchar_t ch, int nCount)
{
    if (nCount < 1)
        return CString();
    return CString(ch, nCount);
}

CString ReplicateSpaces(int nCount) { return ReplicateChar(L' ', nCount); }

CString GetStringFromCLSID(GUID* pCLSID, bool bRemoveBraces)
{
    if (pCLSID == NULL)
        return CString();
    UniqueCoTaskMem<wchar_t> text;
    if (MFailed(::StringFromCLSID(*pCLSID, text.put()), L"GetStringFromCLSID", __LINE__))
        return CString();
    CString str(text.get());
    if (bRemoveBraces) {
        if (str.Find(L'{') >= 0)
            str = str.Mid(1);
        if (str.Find(L'}') >= 0)
            str = str.Left(str.GetLength() - 1);
    }
    return str;
}

CString GetLastError()
{
    DWORD code = ::GetLastError();
    UniqueHLocal<wchar_t> message = SystemMessage(FORMAT_MESSAGE_IGNORE_INSERTS, code);
    if (message)
        return CString(message.get());
    CString str;
    str.Format(L"Error = %d ", static_cast<int>(code));
    return str;
}

CString GetComError(HRESULT hr)
{
    // Unlike GetLastError, inserts are not ignored here.
    UniqueHLocal<wchar_t> message = SystemMessage(0, static_cast<DWORD>(hr));
    return message ? CString(message.get()) : CString();
}

}  // namespace MUIUtils
