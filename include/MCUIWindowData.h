// MCUIWindowData: a dialog window of a UI description: its own control part, its
// controls, skin form, move and resize behaviour and footer.
//
// Ownership: arrControls holds records allocated by the reader. The window record
// owns them and deletes each one in its destructor; a caller never deletes them
// itself. A copy of the window record gets copies of the controls.
#pragma once
#include "MCUIDataControl.h"
#include "MCUIFooterData.h"
#include "MCXMLContainers.h"
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCUIWindowData : public MCUIDataControl {
public:
    MCUIWindowData();
    MCUIWindowData(const MCUIWindowData& other);
    MCUIWindowData& operator=(const MCUIWindowData& other);
    ~MCUIWindowData();

    // Deletes every control record and empties the array.
    void RemoveAllControls();

    MCArray<MCUIDataControl*> arrControls;   // "root/window/control", document order
    CString strSkinForm;                     // "skinform"
    MEWindowMoveType eMoveType;              // "move"
    MEControlResizeType eResizeType;         // "resize"
    MCUIFooterData footer;                   // child "footer"
};
