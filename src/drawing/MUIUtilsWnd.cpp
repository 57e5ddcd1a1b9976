// MUIUtils: the helpers that work through afxlite windows, contexts, fonts and
// image lists.
#include "MUIUtils.h"
#include <afxcmn.h>
#include <cwchar>
#include <cstdlib>
#include "frame/FaultGuard.h"
#include "frame/Owners.h"

namespace {

// The dialogs call these helpers with parents and identifiers of every kind,
// including windows that are already gone; a helper reports failure by its
// result and never takes the application down. Both kinds of failure are caught:
// C++ exceptions here, machine faults by the fault guard.
template <class Body>
bool RunGuarded(Body&& body)
{
    try {
        return RunWithFaultGuard(body);
    } catch (...) {
        return false;
    }
}

CWnd* FindControl(CWnd* pParent, UINT nID) { return pParent == NULL ? NULL : pParent->GetDlgItem(nID); }

// The point (n, 0) converted between device pixels and twips on a screen-compatible
// memory context.
int ConvertThroughTwips(int n, BOOL(WINAPI* convert)(HDC, LPPOINT, int))
{
    CDC dc;
    if (!dc.CreateCompatibleDC(NULL))
        return 0;
    int oldMode = ::SetMapMode(dc, MM_TWIPS);
    POINT pt = {n, 0};
    convert(dc, &pt, 1);
    ::SetMapMode(dc, oldMode);
    return pt.x;
}

}  // namespace

namespace MUIUtils {

void EnableWindow(CWnd* pParent, UINT nID, BOOL bEnable)
{
    RunGuarded([&] {
        if (CWnd* pControl = FindControl(pParent, nID))
            pControl->EnableWindow(bEnable);
    });
}

BOOL IsWindowEnabled(CWnd* pParent, UINT nID)
{
    BOOL bEnabled = FALSE;
    RunGuarded([&] {
        if (CWnd* pControl = FindControl(pParent, nID))
            bEnabled = pControl->IsWindowEnabled();
    });
    return bEnabled;
}

void ShowWindow(CWnd* pParent, UINT nID, BOOL bShow)
{
    RunGuarded([&] {
        if (CWnd* pControl = FindControl(pParent, nID))
            pControl->ShowWindow(bShow ? SW_SHOW : SW_HIDE);
    });
}

void SetFocus(CWnd* pParent, UINT nID)
{
    RunGuarded([&] {
        if (CWnd* pControl = FindControl(pParent, nID))
            pControl->SetFocus();
    });
}

void SetWindowTextW(CWnd* pParent, UINT nID, const wchar_t* pszText)
{
    RunGuarded([&] {
        if (CWnd* pControl = FindControl(pParent, nID))
            pControl->SetWindowText(pszText);
    });
}

void SetWindowTextW(CWnd* pParent, UINT nID, int nValue)
{
    CString text;
    text.Format(L"%d", nValue);
    SetWindowTextW(pParent, nID, text);
}

CString GetWindowTextW(CWnd* pParent, UINT nID)
{
    CString text;
    if (!RunGuarded([&] {
            if (CWnd* pControl = FindControl(pParent, nID))
                pControl->GetWindowText(text);
        }))
        return CString();
    return text;
}

int GetWindowTextInt(CWnd* pParent, UINT nID) { return _wtoi(GetWindowTextW(pParent, nID)); }

void SetButtonCheck(CWnd* pParent, UINT nID, int nCheck)
{
    RunGuarded([&] {
        if (CWnd* pControl = FindControl(pParent, nID))
            pControl->SendMessage(BM_SETCHECK, nCheck);
    });
}

int GetButtonCheck(CWnd* pParent, UINT nID)
{
    int nCheck = -1;
    RunGuarded([&] {
        if (CWnd* pControl = FindControl(pParent, nID))
            nCheck = pControl->SendMessage(BM_GETCHECK) == BST_CHECKED ? 1 : 0;
    });
    return nCheck;
}

bool SetEditTextLength(CWnd* pParent, UINT nID, int nMax)
{
    bool bDone = false;
    RunGuarded([&] {
        CWnd* pControl = FindControl(pParent, nID);
        if (pControl != NULL && pControl->IsKindOf(RUNTIME_CLASS(CEdit))) {
            pControl->SendMessage(EM_LIMITTEXT, nMax);
            bDone = true;
        }
    });
    return bDone;
}

CRect GetWinRect(CWnd* pParent, UINT nID, bool bClient)
{
    CRect rc;
    if (pParent == NULL)
        return rc;
    if (!RunGuarded([&] { rc = GetWinRect(pParent, pParent->GetDlgItem(nID), bClient); }))
        return CRect();
    return rc;
}

CRect GetWinRect(CWnd* pParent, CWnd* pChild, bool bClient)
{
    CRect rc;
    if (pParent == NULL || pChild == NULL)
        return rc;
    if (!RunGuarded([&] {
            pChild->GetWindowRect(&rc);
            if (bClient)
                pParent->ScreenToClient(&rc);
        }))
        return CRect();
    return rc;
}

CPoint GetWinPointByID(CWnd* pParent, UINT nID, bool bClient)
{
    return GetWinRect(pParent, nID, bClient).TopLeft();
}

int PixelsToTwips(int nPixels) { return ConvertThroughTwips(nPixels, ::DPtoLP); }

int TwipsToPixels(int nTwips) { return ConvertThroughTwips(nTwips, ::LPtoDP); }

bool CreateFontW(HFONT hFont, CFont& font)
{
    font.DeleteObject();
    LOGFONTW lf;
    if (::GetObjectW(hFont, sizeof(lf), &lf) != sizeof(lf))
        return false;
    return font.CreateFontIndirect(&lf) != FALSE;
}

void AjustComboboxDropWidth(CWnd* pParent, DWORD nID)
{
    RunGuarded([&] {
        CWnd* pControl = FindControl(pParent, nID);
        if (pControl == NULL)
            return;
        // The framework's usual view of a control through its class's wrappers;
        // they only send messages.
        CComboBox* pCombo = static_cast<CComboBox*>(pControl);
        CRect rcCombo;
        pCombo->GetWindowRect(&rcCombo);
        pCombo->SetDroppedWidth(rcCombo.Width());

        int nCount = pCombo->GetCount();
        if (nCount <= 0)
            return;

        int nTextWidth = 0;
        {
            UniqueWindowDC dc(pCombo->GetSafeHwnd());
            CFont* pFont = pCombo->GetFont();
            // Without a font of its own the control draws with the context's default.
            UniqueSelectObject font(dc.get(), pFont != NULL ? pFont->GetSafeHandle() : NULL);
            CString item;
            for (int i = 0; i < nCount; ++i) {
                pCombo->GetLBText(i, item);
                SIZE size = {0, 0};
                ::GetTextExtentPoint32W(dc.get(), item, item.GetLength(), &size);
                if (size.cx > nTextWidth)
                    nTextWidth = size.cx;
            }
        }

        int nWidth = nTextWidth + 2 * ::GetSystemMetrics(SM_CXEDGE);

        CRect rcDropped;
        pCombo->GetDroppedControlRect(&rcDropped);
        int nSelectionHeight = pCombo->GetItemHeight(-1);
        int nItemHeight = pCombo->GetItemHeight(0);
        int nRoom = rcDropped.Height() - 2 * ::GetSystemMetrics(SM_CYEDGE) - nSelectionHeight;
        if (nRoom <= nItemHeight * nCount)
            nWidth += ::GetSystemMetrics(SM_CXVSCROLL);

        if (pCombo->GetDroppedWidth() < nWidth)
            pCombo->SetDroppedWidth(nWidth);
    });
}

BOOL CreateValidImageList(CImageList& il, UINT nBitmapID, int cx, COLORREF crMask)
{
    IMAGEINFO info;
    {
        // Made only to learn the height of the strip's images.
        CImageList probe;
        probe.Create(nBitmapID, cx, 0, 0);
        if (!::ImageList_GetImageInfo(probe.GetSafeHandle(), 0, &info))
            return FALSE;
    }
    il.Create(cx, info.rcImage.bottom, ILC_COLOR32 | ILC_MASK, 0, 1);
    LPCTSTR lpszName = MAKEINTRESOURCE(nBitmapID);
    CBitmap bitmap;
    bitmap.Attach(::LoadBitmapW(AfxFindResourceHandle(lpszName, RT_BITMAP), lpszName));
    return il.Add(&bitmap, crMask) != -1;
}

}  // namespace MUIUtils
