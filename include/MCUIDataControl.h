// MCUIDataControl: one "control" element of a UI description (and the control
// part of the window itself, and one entry of a controls schema). The record
// carries what the description says; it creates no window.
#pragma once
#include <afxwin.h>
#include "MCUIDataFont.h"

class MCUIDataControl {
public:
    MEControlType eType;              // "type"
    CString strSchema;                // "schema"
    CString strIDS;                   // "ids"
    CString strSkinObjName;           // "skinobjname"
    bool bActualSize;                 // "actualsize"
    DWORD dwIDV;                      // "idv"
    MEControlWindowType eWindowType;  // "windowless": 1 windowed, 2 windowless
    bool bEnabled;                    // "enabled"
    CString strToolTip;               // "tooltip"
    DWORD dwToolTipID;                // "tooltipid"
    MEControlState eState;            // "state"
    MCUIDataFont font;                // child "font"
    CString strText;                  // "text"
    DWORD dwTextID;                   // "textid"
    CRect rcRect;                     // "rect", then "rectex"
    bool bVisible;                    // "visible"
    CString strSkinPhObjPath;         // "skinphobjpath"; when set, anchors and limits are not read
    CRect rcAnchors;                  // "anchorss" or "anchorsv": percentages 0..100
    long nCxMin;                      // "cxmin"
    long nCyMin;                      // "cymin"
    long nCxMax;                      // "cxmax"
    long nCyMax;                      // "cymax"
    bool bAutoSkin;                   // "autoskin"
    DWORD dwSt;                       // "st", carried to the consumer unchanged
    DWORD dwStEx;                     // "stex", likewise
    CString strAdditional;            // "additional"
    DWORD dwReserved;                 // not read from the description

    MCUIDataControl()
        : eType(static_cast<MEControlType>(1)), bActualSize(false), dwIDV(0),
          eWindowType(static_cast<MEControlWindowType>(1)), bEnabled(true), dwToolTipID(0),
          eState(static_cast<MEControlState>(1)), dwTextID(0), rcRect(0, 0, 0, 0),
          bVisible(true), rcAnchors(0, 0, 0, 0), nCxMin(0), nCyMin(0), nCxMax(0), nCyMax(0),
          bAutoSkin(true), dwSt(0), dwStEx(0), dwReserved(0)
    {
    }
};
