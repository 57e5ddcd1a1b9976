// MCUIImageListData: one "imagelist" of a UI description ("root/icons/imagelist"
// or "root/cursors/imagelist"): where its strip of equal images comes from, how
// it is cut and masked, and the names of single images in it. The record carries
// what the description says; MCUIImageList makes it live.
#pragma once
#include <afx.h>
#include "MCXMLContainers.h"
#include "MCXMLTypes.h"
#include "MEImageEffect.h"
#include "MCUIImageData.h"

class MCUIImageListData {
public:
    typedef MCOrderedMap<CString, const wchar_t*, MCUIImageData, MCUIImageData&> Images;

    MEUIImageKind eKind;    // the section it stands in: icons or cursors
    CString strName;        // "name"
    CString strFile;        // "file": relative to the description's folder; wins over dwResID
    DWORD dwResID;          // "resid": a bitmap resource, 0 for none
    int nWidth;             // "width" of one image in pixels; 0 for square images
    int nInitial;           // "initial": images the list makes room for at first
    COLORREF crMask;        // "mask": colour of the transparent pixels
    MEImageEffect eEffect;  // "effect"
    Images images;          // children "image" by "id", in document order; the first of an id stays

    MCUIImageListData()
        : eKind(MEUIImageKindIcon), dwResID(0), nWidth(0), nInitial(0), crMask(RGB(255, 0, 255)),
          eEffect(ImageEffectNone)
    {
    }

private:
    MCUIImageListData(const MCUIImageListData&) = delete;
    MCUIImageListData& operator=(const MCUIImageListData&) = delete;
};
