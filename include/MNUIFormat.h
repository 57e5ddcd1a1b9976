// MNUIFormat: the description of the XML user-interface format that the reader
// reads: its elements as a tree under "root", each element's attributes in the
// order the reader reads them, each value's syntax, default and meaning, and the
// keyword tables. The reader resolves keywords from these tables; the linter,
// the schema and docs/format.md are checked against the same description, so a
// keyword or attribute added here reaches all of them.
//
// Everything here is constant data that lives as long as the module.
#pragma once
#include <windows.h>
#include "TesvorUtilExport.h"

// How an attribute's text becomes a value. Numbers are read with the C
// runtime's wide scan: leading blanks are skipped and trailing text ignored.
enum MEUIValueSyntax {
    UISyntaxText,           // any text
    UISyntaxFaceName,       // a typeface name of at most LF_FACESIZE - 1 characters; a longer one is ignored
    UISyntaxFlag,           // "1" is true; any other text, "true" included, is false
    UISyntaxUnsigned,       // "%u": a 32-bit unsigned number; a minus sign wraps
    UISyntaxByte,           // "%u", at most 255
    UISyntaxSignedByte,     // "%d", -128 to 128 (128 is stored as -128)
    UISyntaxSigned,         // "%d": a 32-bit signed number
    UISyntaxSkinRGB,        // "r,g,b", each at most 255
    UISyntaxSkinARGB,       // "r,g,b,a", each at most 255; alpha comes last
    UISyntaxColour,         // "r,g,b" as a COLORREF
    UISyntaxRect,           // "%i,%i,%i,%i": left, top, right, bottom
    UISyntaxRectEx,         // "%i,%i,%i,%i": x, y, width, height
    UISyntaxKeyword,        // one keyword of the attribute's table
    UISyntaxAnchorLetters,  // two letters (horizontal, vertical) or four (left, top, right, bottom)
    UISyntaxAnchorNumbers   // four numbers 0..100 (left, top, right, bottom), blanks or commas between
};

enum MEUIAttributeFlags {
    UIAttributeNone = 0,
    // Not read when the element's "skinphobjpath" is set: the skin object places it.
    UIAttributeIgnoredUnderSkinPath = 0x1,
    // Keys its element in a table: of several elements with the same value the
    // first stays and the others are dropped.
    UIAttributeKey = 0x2,
    // Names another element by its key: the element of the same name whose
    // attribute of this name is a key (a control's or a font's "schema").
    UIAttributeReference = 0x4,
    // Keys and references count within one value of this attribute: the reader
    // keeps one table per value (the control schemas, one table per type).
    UIAttributeKeyScope = 0x8,
    // When not empty, the attributes flagged UIAttributeIgnoredUnderSkinPath are not read.
    UIAttributeSkinPath = 0x10,
    // Read after the attribute listed before it into the same field: when both
    // are given and this one is acceptable, this one counts.
    UIAttributeReplacesPrevious = 0x20,
    // Read only when the attribute listed before it is absent.
    UIAttributeOnlyWithoutPrevious = 0x40,
    // An element without it is skipped.
    UIAttributeRequired = 0x80,
    // A value that is not acceptable ends the reading of the element's table:
    // that element and the ones after it are lost.
    UIAttributeUnacceptableEndsTable = 0x100,
    // Tells the element apart from its siblings for the program (a control's
    // "ids" and "idv"); the reader keeps siblings with the same value.
    UIAttributeIdentifier = 0x200,
    // When exactly "1", the element's children are not read.
    UIAttributeSkipsChildren = 0x400
};

// The keyword tables, by what they resolve.
enum MEUIKeywordTableID {
    UIKeywordsEffect,        // "texteffect"
    UIKeywordsAlignment,     // "textflags"
    UIKeywordsWeight,
    UIKeywordsCharset,
    UIKeywordsPrecision,     // "outprecision" and "clipprecision"
    UIKeywordsQuality,
    UIKeywordsPitch,
    UIKeywordsFamily,
    UIKeywordsControlType,
    UIKeywordsControlState,
    UIKeywordsResize,
    UIKeywordsMove,
    UIKeywordsImageEffect,   // "effect" of an image list
    UIKeywordTableCount
};

struct MDUIKeyword {
    const wchar_t* text;
    long value;
};

struct MDUIKeywordTable {
    const wchar_t* name;          // names the table in docs and in the schema, e.g. "controltype"
    const MDUIKeyword* keywords;  // in the reader's comparison order: the first equal one counts
    int count;
    bool acceptsNumber;           // when no keyword matches, a "%u" number is taken (font weight)
};

struct MDUIAttribute {
    const wchar_t* name;
    MEUIValueSyntax syntax;
    const MDUIKeywordTable* keywords;  // for UISyntaxKeyword, else null
    const wchar_t* defaultValue;       // what the record holds when the attribute is absent
    const wchar_t* meaning;
    DWORD flags;                       // MEUIAttributeFlags
};

struct MDUIElement {
    const wchar_t* name;
    const wchar_t* meaning;
    const MDUIElement* base;            // an element whose attributes are read first (the window reads a control's);
                                        // a base without a name is only such a run of attributes
    const MDUIAttribute* attributes;    // in reading order
    int attributeCount;
    const MDUIElement* const* children;
    int childCount;
    bool repeats;                       // more than one may stand under the parent
};

namespace MNUIFormat {

// The document element and, through its children, the whole format.
TESVORUTIL_API const MDUIElement& GetRoot();

// A keyword table; every id below UIKeywordTableCount has one.
TESVORUTIL_API const MDUIKeywordTable& GetKeywordTable(MEUIKeywordTableID id);

// The child element of that name, or null.
TESVORUTIL_API const MDUIElement* FindChild(const MDUIElement& parent, const wchar_t* name);
// The attribute of that name, the base element's included, or null.
TESVORUTIL_API const MDUIAttribute* FindAttribute(const MDUIElement& element, const wchar_t* name);
// The keyword of a table that `text` equals exactly, or null.
TESVORUTIL_API const MDUIKeyword* FindKeyword(const MDUIKeywordTable& table, const wchar_t* text);

// A syntax's short name ("flag", "rectex", ...) and how a value of it is
// written, for messages and docs ("1 (true) or 0", "x,y,width,height", ...).
TESVORUTIL_API const wchar_t* GetSyntaxName(MEUIValueSyntax syntax);
TESVORUTIL_API const wchar_t* GetSyntaxText(MEUIValueSyntax syntax);

// An attribute flag's short name ("key", "skinpath", ...); empty for a value
// that is not a single flag.
TESVORUTIL_API const wchar_t* GetFlagName(MEUIAttributeFlags flag);

}  // namespace MNUIFormat
