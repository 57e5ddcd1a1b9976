// MCUIImageList: an image list of a UI description made live. The strip comes
// from the record's picture file (any format the picture holder reads, found
// relative to the description's folder) or, without a file, from its bitmap
// resource (looked up along the program's resource modules). It is cut into
// images of the record's width, each mirrored on its own when the effect says
// so (MCDC::Mirror: the images keep their places), and put into a 32-bit image
// list masked by the record's colour. Every named image of an icon list becomes
// an icon, of a cursor list a cursor with its hot spot.
//
// The object owns the image list, the icons and the cursors, and destroys them
// on Destroy, on the next Create and with itself.
#pragma once
#include <afxwin.h>
#include <afxtempl.h>
#include <commctrl.h>
#include "TesvorUtilExport.h"
#include "MCXMLTypes.h"

class MCUIImageListData;

class TESVORUTIL_API MCUIImageList {
public:
    MCUIImageList();
    ~MCUIImageList();

    // `description` is the description's file, or its folder (a folder that
    // exists, or a path ending in a backslash); null or empty for the current
    // folder. Results, after which the object is empty unless S_OK:
    //   E_INVALIDARG      neither file nor resource, a negative width or initial
    //                     count, or an image wider than the strip
    //   HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)           no such file
    //   HRESULT_FROM_WIN32(ERROR_INVALID_DATA)             a file that is no picture, or is cut short
    //   HRESULT_FROM_WIN32(ERROR_RESOURCE_NAME_NOT_FOUND)  no bitmap resource of that number
    //   HRESULT_FROM_WIN32(ERROR_INVALID_INDEX)            an image's index outside the strip
    //   E_FAIL            the system could not make the list, an icon or a cursor
    HRESULT Create(const MCUIImageListData& data, const wchar_t* description);
    void Destroy();

    // Null while empty. The handles stay the object's.
    HIMAGELIST GetImageList() const { return m_hImageList; }
    MEUIImageKind GetKind() const { return m_eKind; }
    // The image of that "id": an icon of an icon list, a cursor of a cursor
    // list; null for an unknown id or the other kind.
    HICON GetIcon(const wchar_t* id) const;
    HCURSOR GetCursor(const wchar_t* id) const;

private:
    MCUIImageList(const MCUIImageList&) = delete;
    MCUIImageList& operator=(const MCUIImageList&) = delete;

    HICON Find(const wchar_t* id, MEUIImageKind kind) const;

    HIMAGELIST m_hImageList;
    MEUIImageKind m_eKind;
    CMap<CString, const wchar_t*, HICON, HICON> m_images;  // icons or cursors, by "id"
};
