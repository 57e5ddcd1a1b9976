// Enumerations and colour records produced by the UI description reader. The
// numeric values are part of the interface: applications store and compare them.
#pragma once
#include <windows.h>
#include <cstddef>

// Text effect of a skinned text ("texteffect").
enum MEFontEffect {
    MEFontEffectNone = 0,        // "no"
    MEFontEffectShadow = 1,      // "sh"
    MEFontEffectSoftShadow = 2,  // "ssh"
    MEFontEffectGlow = 3         // "gl"
};

// Text alignment ("textflags"): the sum of DT_CENTER/DT_RIGHT and DT_VCENTER/DT_BOTTOM.
enum MEFontFlags {
    MEFontFlagsTopLeft = 0,       // "tl"
    MEFontFlagsTopCenter = 1,     // "tc"
    MEFontFlagsTopRight = 2,      // "tr"
    MEFontFlagsMiddleLeft = 4,    // "cl"
    MEFontFlagsCenter = 5,        // "c"
    MEFontFlagsMiddleRight = 6,   // "cr"
    MEFontFlagsBottomLeft = 8,    // "bl"
    MEFontFlagsBottomCenter = 9,  // "bc"
    MEFontFlagsBottomRight = 10   // "br"
};

// Kind of a control ("type").
enum MEControlType {
    MEControlTypeWindow = 1,
    MEControlTypeSubWindow = 2,
    MEControlTypeButton = 3,
    MEControlTypeEdit = 4,
    MEControlTypeListBox = 5,
    MEControlTypeListView = 6,
    MEControlTypeCheckBox = 7,
    MEControlTypeRadioButton = 8,
    MEControlTypeSlider = 9,
    MEControlTypeComboBox = 10,
    MEControlTypeComboBoxEx = 11,
    MEControlTypeGroupBox = 12,
    MEControlTypeSmartEditBox = 13,
    MEControlTypeMenu = 14,
    MEControlTypeStatic = 15,
    MEControlTypeTabBar = 16,
    MEControlTypeStdTab = 17,
    MEControlTypeRichEdit = 18,
    MEControlTypeLinkControl = 19,
    MEControlTypeProgressBar = 20,
    MEControlTypeDayTimeControl = 21,
    MEControlTypeImageButton = 22,
    MEControlTypeBkgExEdit = 23,
    MEControlTypeBkgExCombo = 24
};

// Initial state of a control ("state").
enum MEControlState {
    MEControlStateNormal = 1,
    MEControlStateFocus = 2,
    MEControlStatePressed = 3,
    MEControlStateMouseOver = 4,
    MEControlStateDisabled = 5
};

// Whether a control is a window of its own ("windowless").
enum MEControlWindowType {
    MEControlWindowTypeWindowed = 1,
    MEControlWindowTypeWindowless = 2
};

// How a window may be resized ("resize").
enum MEControlResizeType {
    MEControlResizeWidth = 1,          // "w"
    MEControlResizeHeight = 2,         // "h"
    MEControlResizeWidthHeight = 3,    // "wh"
    MEControlResizeNone = 4            // "no"
};

// How a window may be moved ("move").
enum MEWindowMoveType {
    MEWindowMoveX = 1,     // "x"
    MEWindowMoveY = 2,     // "y"
    MEWindowMoveXY = 3,    // "xy"
    MEWindowMoveNone = 4   // "no"
};

// The section an image list comes from: "root/icons" or "root/cursors".
enum MEUIImageKind {
    MEUIImageKindIcon = 1,
    MEUIImageKindCursor = 2
};

#pragma pack(push, 1)
// A colour as three bytes in memory order blue, green, red.
struct MCSkinRGB {
    BYTE blue;
    BYTE green;
    BYTE red;
};

// A colour with alpha in the byte order of a little-endian 0xAARRGGBB word.
struct MCSkinARGB {
    BYTE blue;
    BYTE green;
    BYTE red;
    BYTE alpha;
};
#pragma pack(pop)

// The applications store both records as they lie in memory.
static_assert(sizeof(MCSkinRGB) == 3 && offsetof(MCSkinRGB, blue) == 0 && offsetof(MCSkinRGB, red) == 2,
              "MCSkinRGB is blue, green, red");
static_assert(sizeof(MCSkinARGB) == 4 && offsetof(MCSkinARGB, blue) == 0 && offsetof(MCSkinARGB, green) == 1 &&
                  offsetof(MCSkinARGB, red) == 2 && offsetof(MCSkinARGB, alpha) == 3,
              "MCSkinARGB is a little-endian 0xAARRGGBB word");
