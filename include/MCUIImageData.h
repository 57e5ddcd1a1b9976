// MCUIImageData: one "image" of an image list in a UI description: a single
// image of the list's strip, named for the program.
#pragma once
#include <afx.h>

class MCUIImageData {
public:
    CString strID;  // "id"
    int nIndex;     // "index": position in the strip, from 0
    int nHotX;      // "hotx": a cursor's hot spot, pixels from the image's left edge (cursor lists only)
    int nHotY;      // "hoty": pixels from the image's top edge (cursor lists only)

    MCUIImageData() : nIndex(0), nHotX(0), nHotY(0) {}
};
