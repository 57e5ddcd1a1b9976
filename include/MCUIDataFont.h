// MCUIDataFont: the "font" element of a control, or one entry of the font schema.
// A font that is only a schema reference carries its name and nothing else.
#pragma once
#include <cstring>
#include "MCSkinTextStyle.h"

class MCUIDataFont {
public:
    bool bSchemaOnly;            // "schemaonly"
    CString strSchema;           // "schema"
    MCSkinTextStyle textStyle;   // child "textstyle"
    LOGFONTW logFont;            // child "logfont"; all zero, empty face name, by default

    MCUIDataFont() : bSchemaOnly(true) { std::memset(&logFont, 0, sizeof(logFont)); }
};
