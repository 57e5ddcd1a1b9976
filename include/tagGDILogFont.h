// tagGDILogFont: the font record of the UI descriptions and the applications'
// skins: an owned BSTR face name followed by LOGFONTW's numeric fields in order.
#pragma once
#include <windows.h>
#include <oleauto.h>

struct tagGDILogFont {
    BSTR bstrFaceName;  // owned by the record; freed with SysFreeString by its owner
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
};
typedef tagGDILogFont MDGDILOGFONT;
