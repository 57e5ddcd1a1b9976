// The description of the UI format: keyword tables and the element tree. The
// reader's builders read exactly these attributes in exactly this order (a test
// watches the reader's lookups and compares them with this table).
#include "MNUIFormat.h"
#include "MNUIName.h"
#include "MCXMLTypes.h"
#include "MEImageEffect.h"
#include <cwchar>

namespace {

namespace N = MNUIName;

template <class T, int Count>
constexpr int CountOf(T (&)[Count])
{
    return Count;
}

// Keyword tables, in the reader's comparison order.

const MDUIKeyword kEffects[] = {{L"no", MEFontEffectNone}, {L"sh", MEFontEffectShadow},
                                {L"ssh", MEFontEffectSoftShadow}, {L"gl", MEFontEffectGlow}};
const MDUIKeyword kAlignments[] = {{L"tl", MEFontFlagsTopLeft},    {L"tc", MEFontFlagsTopCenter},
                                   {L"tr", MEFontFlagsTopRight},   {L"cl", MEFontFlagsMiddleLeft},
                                   {L"c", MEFontFlagsCenter},      {L"cr", MEFontFlagsMiddleRight},
                                   {L"bl", MEFontFlagsBottomLeft}, {L"bc", MEFontFlagsBottomCenter},
                                   {L"br", MEFontFlagsBottomRight}};
const MDUIKeyword kWeights[] = {{L"dontcare", FW_DONTCARE},     {L"thin", FW_THIN},
                                {L"extralight", FW_EXTRALIGHT}, {L"ultralight", FW_ULTRALIGHT},
                                {L"light", FW_LIGHT},           {L"normal", FW_NORMAL},
                                {L"regular", FW_REGULAR},       {L"medium", FW_MEDIUM},
                                {L"semibold", FW_SEMIBOLD},     {L"demibold", FW_DEMIBOLD},
                                {L"bold", FW_BOLD},             {L"extrabold", FW_EXTRABOLD},
                                {L"ultrabold", FW_ULTRABOLD},   {L"heavy", FW_HEAVY},
                                {L"black", FW_BLACK}};
// "chinesbig5" is the keyword as descriptions spell it.
const MDUIKeyword kCharsets[] = {{L"ansi", ANSI_CHARSET},             {L"baltic", BALTIC_CHARSET},
                                 {L"chinesbig5", CHINESEBIG5_CHARSET}, {L"default", DEFAULT_CHARSET},
                                 {L"easteurope", EASTEUROPE_CHARSET}, {L"gb2312", GB2312_CHARSET},
                                 {L"greek", GREEK_CHARSET},           {L"hangul", HANGUL_CHARSET},
                                 {L"mac", MAC_CHARSET},               {L"oem", OEM_CHARSET},
                                 {L"russian", RUSSIAN_CHARSET},       {L"shiftjis", SHIFTJIS_CHARSET},
                                 {L"symbol", SYMBOL_CHARSET},         {L"turkish", TURKISH_CHARSET},
                                 {L"vietnamese", VIETNAMESE_CHARSET}, {L"johab", JOHAB_CHARSET},
                                 {L"arabic", ARABIC_CHARSET},         {L"hebrew", HEBREW_CHARSET},
                                 {L"thai", THAI_CHARSET}};
// Output and clipping precisions share this one table.
const MDUIKeyword kPrecisions[] = {{L"character", OUT_CHARACTER_PRECIS}, {L"default", OUT_DEFAULT_PRECIS},
                                   {L"device", OUT_DEVICE_PRECIS},       {L"outline", OUT_OUTLINE_PRECIS},
                                   {L"only", OUT_PS_ONLY_PRECIS},        {L"raster", OUT_RASTER_PRECIS},
                                   {L"string", OUT_STRING_PRECIS},       {L"stroke", OUT_STROKE_PRECIS},
                                   {L"ttonly", OUT_TT_ONLY_PRECIS},      {L"tt", OUT_TT_PRECIS}};
// "cleartype" is not among the qualities: a description saying it keeps the
// font's quality as it was.
const MDUIKeyword kQualities[] = {{L"antialiased", ANTIALIASED_QUALITY}, {L"default", DEFAULT_QUALITY},
                                  {L"draft", DRAFT_QUALITY},
                                  {L"nonantialiased", NONANTIALIASED_QUALITY},
                                  {L"proof", PROOF_QUALITY}};
const MDUIKeyword kPitches[] = {{L"default", DEFAULT_PITCH}, {L"fixed", FIXED_PITCH},
                                {L"variable", VARIABLE_PITCH}};
const MDUIKeyword kFamilies[] = {{L"decorative", FF_DECORATIVE}, {L"dontcare", FF_DONTCARE},
                                 {L"modern", FF_MODERN},         {L"roman", FF_ROMAN},
                                 {L"script", FF_SCRIPT},         {L"swiss", FF_SWISS}};
const MDUIKeyword kControlTypes[] = {{L"window", MEControlTypeWindow},
                                     {L"subwindow", MEControlTypeSubWindow},
                                     {L"button", MEControlTypeButton},
                                     {L"edit", MEControlTypeEdit},
                                     {L"listbox", MEControlTypeListBox},
                                     {L"listview", MEControlTypeListView},
                                     {L"checkbox", MEControlTypeCheckBox},
                                     {L"radiobutton", MEControlTypeRadioButton},
                                     {L"slider", MEControlTypeSlider},
                                     {L"combobox", MEControlTypeComboBox},
                                     {L"comboboxex", MEControlTypeComboBoxEx},
                                     {L"groupbox", MEControlTypeGroupBox},
                                     {L"smarteditbox", MEControlTypeSmartEditBox},
                                     {L"menu", MEControlTypeMenu},
                                     {L"static", MEControlTypeStatic},
                                     {L"tabbar", MEControlTypeTabBar},
                                     {L"stdtab", MEControlTypeStdTab},
                                     {L"richedit", MEControlTypeRichEdit},
                                     {L"linkcontrol", MEControlTypeLinkControl},
                                     {L"progressbar", MEControlTypeProgressBar},
                                     {L"daytimecontrol", MEControlTypeDayTimeControl},
                                     {L"imagebutton", MEControlTypeImageButton},
                                     {L"bkgexedit", MEControlTypeBkgExEdit},
                                     {L"bkgexcombo", MEControlTypeBkgExCombo}};
const MDUIKeyword kControlStates[] = {{L"normal", MEControlStateNormal},
                                      {L"focus", MEControlStateFocus},
                                      {L"pressed", MEControlStatePressed},
                                      {L"mouseover", MEControlStateMouseOver},
                                      {L"disabled", MEControlStateDisabled}};
const MDUIKeyword kResizeTypes[] = {{L"w", MEControlResizeWidth}, {L"h", MEControlResizeHeight},
                                    {L"wh", MEControlResizeWidthHeight}, {L"no", MEControlResizeNone}};
const MDUIKeyword kMoveTypes[] = {{L"x", MEWindowMoveX}, {L"y", MEWindowMoveY}, {L"xy", MEWindowMoveXY},
                                  {L"no", MEWindowMoveNone}};
const MDUIKeyword kImageEffects[] = {{L"none", ImageEffectNone}, {L"mirror", ImageEffectMirror}};

#define KEYWORD_TABLE(name, keywords, acceptsNumber) {name, keywords, CountOf(keywords), acceptsNumber}
const MDUIKeywordTable kEffectTable = KEYWORD_TABLE(L"effect", kEffects, false);
const MDUIKeywordTable kAlignmentTable = KEYWORD_TABLE(L"alignment", kAlignments, false);
const MDUIKeywordTable kWeightTable = KEYWORD_TABLE(L"weight", kWeights, true);
const MDUIKeywordTable kCharsetTable = KEYWORD_TABLE(L"charset", kCharsets, false);
const MDUIKeywordTable kPrecisionTable = KEYWORD_TABLE(L"precision", kPrecisions, false);
const MDUIKeywordTable kQualityTable = KEYWORD_TABLE(L"quality", kQualities, false);
const MDUIKeywordTable kPitchTable = KEYWORD_TABLE(L"pitch", kPitches, false);
const MDUIKeywordTable kFamilyTable = KEYWORD_TABLE(L"family", kFamilies, false);
const MDUIKeywordTable kControlTypeTable = KEYWORD_TABLE(L"controltype", kControlTypes, false);
const MDUIKeywordTable kControlStateTable = KEYWORD_TABLE(L"controlstate", kControlStates, false);
const MDUIKeywordTable kResizeTable = KEYWORD_TABLE(L"resize", kResizeTypes, false);
const MDUIKeywordTable kMoveTable = KEYWORD_TABLE(L"move", kMoveTypes, false);
const MDUIKeywordTable kImageEffectTable = KEYWORD_TABLE(L"imageeffect", kImageEffects, false);
#undef KEYWORD_TABLE

// In the order of MEUIKeywordTableID.
const MDUIKeywordTable* const kKeywordTables[] = {
    &kEffectTable,      &kAlignmentTable,    &kWeightTable, &kCharsetTable, &kPrecisionTable,
    &kQualityTable,     &kPitchTable,        &kFamilyTable, &kControlTypeTable,
    &kControlStateTable, &kResizeTable,      &kMoveTable,   &kImageEffectTable};
static_assert(CountOf(kKeywordTables) == UIKeywordTableCount, "one keyword table per MEUIKeywordTableID");

// Attributes, in the order the reader reads them.

const DWORD kSkinPathIgnores = UIAttributeIgnoredUnderSkinPath;

// A control's "schema" comes first and stands apart: a window's control names a
// control schema with it, and a control of the controls schema is kept under it.
const MDUIAttribute kControlSchemaReference[] = {
    {N::schema, UISyntaxText, nullptr, L"",
     L"name of a control schema of the same type that the program applies to this control", UIAttributeReference},
};
const MDUIAttribute kControlSchemaName[] = {
    {N::schema, UISyntaxText, nullptr, L"", L"name of the schema; the first control of a name and type stays",
     UIAttributeKey},
};

const MDUIAttribute kControlAttributes[] = {
    {N::ids, UISyntaxText, nullptr, L"", L"identifier of the control as text", UIAttributeIdentifier},
    {N::idv, UISyntaxUnsigned, nullptr, L"0", L"identifier of the control as a number", UIAttributeIdentifier},
    {N::enabled, UISyntaxFlag, nullptr, L"1", L"initially enabled", 0},
    {N::tooltip, UISyntaxText, nullptr, L"", L"tooltip text", 0},
    {N::tooltipid, UISyntaxUnsigned, nullptr, L"0", L"number of the tooltip text in the number-keyed string table", 0},
    {N::text, UISyntaxText, nullptr, L"", L"caption text", 0},
    {N::textid, UISyntaxUnsigned, nullptr, L"0", L"number of the caption text in the number-keyed string table", 0},
    {N::rect, UISyntaxRect, nullptr, L"0,0,0,0", L"position and size as left, top, right, bottom", 0},
    {N::rectex, UISyntaxRectEx, nullptr, L"0,0,0,0",
     L"position and size as x, y, width, height; read after \"rect\" and wins over it", UIAttributeReplacesPrevious},
    {N::visible, UISyntaxFlag, nullptr, L"1", L"initially visible", 0},
    {N::st, UISyntaxUnsigned, nullptr, L"0", L"style bits, carried to the program unchanged", 0},
    {N::stex, UISyntaxUnsigned, nullptr, L"0", L"extended style bits, carried to the program unchanged", 0},
    {N::skinobjname, UISyntaxText, nullptr, L"", L"name of the control's skin object", 0},
    {N::actualsize, UISyntaxFlag, nullptr, L"0", L"the skin object keeps its actual size", 0},
    {N::type, UISyntaxKeyword, &kControlTypeTable, L"window", L"the kind of control; control schemas are kept per type",
     UIAttributeKeyScope},
    {N::state, UISyntaxKeyword, &kControlStateTable, L"normal", L"initial state", 0},
    {N::windowless, UISyntaxFlag, nullptr, L"0", L"the control is drawn by its parent and has no window of its own", 0},
    {N::autoskin, UISyntaxFlag, nullptr, L"1", L"the skin is applied automatically", 0},
    {N::skinphobjpath, UISyntaxText, nullptr, L"",
     L"path of a skin object that places the control; when set, anchors and size limits are not read",
     UIAttributeSkinPath},
    {N::anchorss, UISyntaxAnchorLetters, nullptr, L"0,0,0,0",
     L"anchors as letters: l/c/r horizontally, t/c/b vertically", kSkinPathIgnores},
    {N::anchorsv, UISyntaxAnchorNumbers, nullptr, L"0,0,0,0",
     L"anchors as percentages; read only when \"anchorss\" is absent",
     kSkinPathIgnores | UIAttributeOnlyWithoutPrevious},
    {N::cxmin, UISyntaxSigned, nullptr, L"0", L"minimum width", kSkinPathIgnores},
    {N::cymin, UISyntaxSigned, nullptr, L"0", L"minimum height", kSkinPathIgnores},
    {N::cxmax, UISyntaxSigned, nullptr, L"0", L"maximum width", kSkinPathIgnores},
    {N::cymax, UISyntaxSigned, nullptr, L"0", L"maximum height", kSkinPathIgnores},
    {N::additional, UISyntaxText, nullptr, L"", L"free text for the program", 0},
};

const MDUIAttribute kWindowAttributes[] = {
    {N::skinform, UISyntaxText, nullptr, L"", L"name of the window's skin form", 0},
    {N::move, UISyntaxKeyword, &kMoveTable, L"x", L"how the window may be moved", 0},
    {N::resize, UISyntaxKeyword, &kResizeTable, L"w", L"how the window may be resized", 0},
};

const MDUIAttribute kFooterAttributes[] = {
    {N::status, UISyntaxText, nullptr, L"", L"status text", 0},
    {N::statusid, UISyntaxUnsigned, nullptr, L"0", L"number of the status text in the number-keyed string table", 0},
};

const MDUIAttribute kFontAttributes[] = {
    {N::schema, UISyntaxText, nullptr, L"", L"name of a font schema", UIAttributeReference},
    {N::schemaonly, UISyntaxFlag, nullptr, L"1",
     L"the font is only a schema reference; only an explicit \"1\" skips the children", UIAttributeSkipsChildren},
};

const MDUIAttribute kTextStyleAttributes[] = {
    {N::ellipsis, UISyntaxFlag, nullptr, L"0", L"text that does not fit ends with an ellipsis", 0},
    {N::righttoleft, UISyntaxFlag, nullptr, L"0", L"right-to-left reading order", 0},
    {N::argbeffectcolor, UISyntaxSkinARGB, nullptr, L"0,0,0,0", L"colour of the text effect, with alpha", 0},
    {N::rgbtextcolor, UISyntaxSkinRGB, nullptr, L"0,0,0", L"text colour", 0},
    {N::textflags, UISyntaxKeyword, &kAlignmentTable, L"tl", L"text alignment", 0},
    {N::texteffect, UISyntaxKeyword, &kEffectTable, L"no", L"text effect", 0},
};

const MDUIAttribute kLogFontAttributes[] = {
    {N::height, UISyntaxSigned, nullptr, L"0", L"font height (LOGFONT lfHeight)", 0},
    {N::width, UISyntaxSigned, nullptr, L"0", L"average character width", 0},
    {N::escapement, UISyntaxSigned, nullptr, L"0", L"escapement in tenths of a degree", 0},
    {N::orientation, UISyntaxSigned, nullptr, L"0", L"orientation in tenths of a degree", 0},
    {N::italic, UISyntaxByte, nullptr, L"0", L"italic when not 0", 0},
    {N::underline, UISyntaxByte, nullptr, L"0", L"underlined when not 0", 0},
    {N::strikeout, UISyntaxByte, nullptr, L"0", L"struck out when not 0", 0},
    {N::facename, UISyntaxFaceName, nullptr, L"",
     L"typeface name, at most 31 characters; a longer name is ignored", 0},
    {N::weight, UISyntaxKeyword, &kWeightTable, L"dontcare", L"weight, as a keyword or a number", 0},
    {N::charset, UISyntaxKeyword, &kCharsetTable, L"ansi", L"character set", 0},
    {N::outprecision, UISyntaxKeyword, &kPrecisionTable, L"default", L"output precision", 0},
    {N::clipprecision, UISyntaxKeyword, &kPrecisionTable, L"default",
     L"clipping precision, from the output precision table", 0},
    {N::quality, UISyntaxKeyword, &kQualityTable, L"default", L"output quality", 0},
    {N::pitch, UISyntaxKeyword, &kPitchTable, L"default",
     L"pitch; with \"family\" it always replaces the font's pitch and family", 0},
    {N::family, UISyntaxKeyword, &kFamilyTable, L"dontcare", L"font family", 0},
};

const MDUIAttribute kSchemaFontAttributes[] = {
    {N::schema, UISyntaxText, nullptr, L"", L"name of the schema; the first font of a name stays", UIAttributeKey},
    {N::schemaonly, UISyntaxFlag, nullptr, L"1",
     L"the font is only a schema reference; only an explicit \"1\" skips the children", UIAttributeSkipsChildren},
};

const MDUIAttribute kScriptAttributes[] = {
    {N::file, UISyntaxText, nullptr, L"", L"file name of the script", 0},
};

const MDUIAttribute kStringEntryAttributes[] = {
    {N::id, UISyntaxText, nullptr, L"", L"key of the string; the first entry of a key stays",
     UIAttributeKey | UIAttributeRequired},
    {N::text, UISyntaxText, nullptr, L"", L"the string; an entry without it is skipped", UIAttributeRequired},
};

const MDUIAttribute kNumberedStringEntryAttributes[] = {
    {N::id, UISyntaxUnsigned, nullptr, L"",
     L"number of the string; the first entry of a number stays, and a text that is no number ends the table",
     UIAttributeKey | UIAttributeRequired | UIAttributeUnacceptableEndsTable},
    {N::text, UISyntaxText, nullptr, L"", L"the string; an entry without it is skipped", UIAttributeRequired},
};

const MDUIAttribute kSectionAttributes[] = {
    {N::name, UISyntaxText, nullptr, L"", L"name of the section; the first section of a name stays", UIAttributeKey},
};

const MDUIAttribute kFreedataEntryAttributes[] = {
    {N::name, UISyntaxText, nullptr, L"", L"name of the value; the first entry of a name stays",
     UIAttributeKey | UIAttributeRequired},
    {N::value, UISyntaxText, nullptr, L"", L"the value; an entry without it is skipped", UIAttributeRequired},
};

const MDUIAttribute kImageListAttributes[] = {
    {N::name, UISyntaxText, nullptr, L"", L"name of the image list; the first list of a name stays", UIAttributeKey},
    {N::file, UISyntaxText, nullptr, L"",
     L"picture file holding the strip of images side by side (BMP, GIF, JPEG, icon), relative to the "
     L"description's folder; wins over \"resid\"", 0},
    {N::resid, UISyntaxUnsigned, nullptr, L"0",
     L"number of a bitmap resource holding the strip, looked up along the program's resource modules; "
     L"used when \"file\" is absent, 0 for none", 0},
    {N::width, UISyntaxSigned, nullptr, L"0",
     L"width of one image in pixels, the height being the strip's; 0 makes square images", 0},
    {N::initial, UISyntaxSigned, nullptr, L"0", L"number of images the list makes room for at first", 0},
    {N::mask, UISyntaxColour, nullptr, L"255,0,255", L"colour of the strip's transparent pixels", 0},
    {N::effect, UISyntaxKeyword, &kImageEffectTable, L"none",
     L"what is done to every image before it goes into the list; images keep their places", 0},
};

const MDUIAttribute kIconImageAttributes[] = {
    {N::id, UISyntaxText, nullptr, L"",
     L"name of the icon; the first image of a name stays, and an image without it is skipped",
     UIAttributeKey | UIAttributeRequired},
    {N::index, UISyntaxSigned, nullptr, L"0", L"position of the image in the strip, from 0", 0},
};

const MDUIAttribute kCursorImageAttributes[] = {
    {N::id, UISyntaxText, nullptr, L"",
     L"name of the cursor; the first image of a name stays, and an image without it is skipped",
     UIAttributeKey | UIAttributeRequired},
    {N::index, UISyntaxSigned, nullptr, L"0", L"position of the image in the strip, from 0", 0},
    {N::hotx, UISyntaxSigned, nullptr, L"0", L"the cursor's hot spot, pixels from the image's left edge", 0},
    {N::hoty, UISyntaxSigned, nullptr, L"0", L"the cursor's hot spot, pixels from the image's top edge", 0},
};

// Elements, leaves first.

#define ELEMENT(name, meaning, base, attributes, children, repeats) \
    {name, meaning, base, attributes, CountOf(attributes), children, CountOf(children), repeats}
#define LEAF(name, meaning, attributes, repeats) {name, meaning, nullptr, attributes, CountOf(attributes), nullptr, 0, repeats}
#define GROUP(name, meaning, children) {name, meaning, nullptr, nullptr, 0, children, CountOf(children), false}

const MDUIElement kTextStyle = LEAF(N::textstyle, L"how the text is drawn", kTextStyleAttributes, false);
const MDUIElement kLogFont = LEAF(N::logfont, L"the platform's logical font", kLogFontAttributes, false);
const MDUIElement* const kFontChildren[] = {&kTextStyle, &kLogFont};
const MDUIElement kFont = ELEMENT(N::font, L"the font of a control", nullptr, kFontAttributes, kFontChildren, false);
const MDUIElement kSchemaFont =
    ELEMENT(N::font, L"a named font schema", nullptr, kSchemaFontAttributes, kFontChildren, true);

const MDUIElement* const kControlChildren[] = {&kFont};
// Parts without a name: the attributes a control starts with.
const MDUIElement kControlHead = LEAF(L"", L"a control's schema reference", kControlSchemaReference, false);
const MDUIElement kControl =
    ELEMENT(N::control, L"one control of the window", &kControlHead, kControlAttributes, kControlChildren, true);
const MDUIElement kSchemaControlHead = LEAF(L"", L"a control schema's name", kControlSchemaName, false);
const MDUIElement kSchemaControl = ELEMENT(N::control, L"a named control schema", &kSchemaControlHead,
                                           kControlAttributes, kControlChildren, true);
const MDUIElement kFooter = LEAF(N::footer, L"the window's footer", kFooterAttributes, false);
const MDUIElement* const kWindowChildren[] = {&kControl, &kFooter, &kFont};
const MDUIElement kWindow = ELEMENT(N::window, L"the dialog window; its own attributes follow a control's",
                                    &kControl, kWindowAttributes, kWindowChildren, false);

const MDUIElement* const kFontSchemaChildren[] = {&kSchemaFont};
const MDUIElement kFontSchema = GROUP(N::fontschema, L"named fonts", kFontSchemaChildren);
const MDUIElement* const kControlsSchemaChildren[] = {&kSchemaControl};
const MDUIElement kControlsSchema = GROUP(N::controlsschema, L"named controls, by \"schema\"", kControlsSchemaChildren);

const MDUIElement kStringEntry = LEAF(N::entry, L"one string", kStringEntryAttributes, true);
const MDUIElement* const kStringTableChildren[] = {&kStringEntry};
const MDUIElement kStringTable = GROUP(N::str_table, L"strings keyed by text", kStringTableChildren);
const MDUIElement kNumberedStringEntry = LEAF(N::entry, L"one string", kNumberedStringEntryAttributes, true);
const MDUIElement* const kNumberedStringTableChildren[] = {&kNumberedStringEntry};
const MDUIElement kNumberedStringTable =
    GROUP(N::str_table_id, L"strings keyed by number", kNumberedStringTableChildren);

const MDUIElement kFreedataEntry = LEAF(N::entry, L"one named value", kFreedataEntryAttributes, true);
const MDUIElement* const kSectionChildren[] = {&kFreedataEntry};
const MDUIElement kSection =
    ELEMENT(N::section, L"a named table of values", nullptr, kSectionAttributes, kSectionChildren, true);
const MDUIElement* const kFreedataChildren[] = {&kSection};
const MDUIElement kFreedata = GROUP(N::freedata, L"the program's own settings", kFreedataChildren);

const MDUIElement kScript = LEAF(N::script, L"the script reference", kScriptAttributes, false);

const MDUIElement kIconImage = LEAF(N::image, L"one named icon of the strip", kIconImageAttributes, true);
const MDUIElement* const kIconListChildren[] = {&kIconImage};
const MDUIElement kIconList =
    ELEMENT(N::imagelist, L"a strip of icons", nullptr, kImageListAttributes, kIconListChildren, true);
const MDUIElement* const kIconsChildren[] = {&kIconList};
const MDUIElement kIcons = GROUP(N::icons, L"image lists of icons", kIconsChildren);

const MDUIElement kCursorImage = LEAF(N::image, L"one named cursor of the strip", kCursorImageAttributes, true);
const MDUIElement* const kCursorListChildren[] = {&kCursorImage};
const MDUIElement kCursorList =
    ELEMENT(N::imagelist, L"a strip of cursors", nullptr, kImageListAttributes, kCursorListChildren, true);
const MDUIElement* const kCursorsChildren[] = {&kCursorList};
const MDUIElement kCursors = GROUP(N::cursors, L"image lists of cursors", kCursorsChildren);

const MDUIElement* const kRootChildren[] = {&kWindow,    &kFontSchema, &kControlsSchema, &kStringTable,
                                            &kNumberedStringTable, &kFreedata, &kScript, &kIcons, &kCursors};
const MDUIElement kRoot = GROUP(N::root, L"the document element", kRootChildren);

#undef ELEMENT
#undef LEAF
#undef GROUP

}  // namespace

namespace MNUIFormat {

const MDUIElement& GetRoot() { return kRoot; }

const MDUIKeywordTable& GetKeywordTable(MEUIKeywordTableID id)
{
    // An id out of range is a programming error; it gets a table all the same.
    return *kKeywordTables[id >= 0 && id < UIKeywordTableCount ? id : 0];
}

const MDUIElement* FindChild(const MDUIElement& parent, const wchar_t* name)
{
    if (name == nullptr)
        return nullptr;
    for (int i = 0; i < parent.childCount; ++i) {
        if (wcscmp(parent.children[i]->name, name) == 0)
            return parent.children[i];
    }
    return nullptr;
}

const MDUIAttribute* FindAttribute(const MDUIElement& element, const wchar_t* name)
{
    if (name == nullptr)
        return nullptr;
    if (element.base != nullptr) {
        if (const MDUIAttribute* inherited = FindAttribute(*element.base, name))
            return inherited;
    }
    for (int i = 0; i < element.attributeCount; ++i) {
        if (wcscmp(element.attributes[i].name, name) == 0)
            return &element.attributes[i];
    }
    return nullptr;
}

const MDUIKeyword* FindKeyword(const MDUIKeywordTable& table, const wchar_t* text)
{
    if (text == nullptr)
        return nullptr;
    for (int i = 0; i < table.count; ++i) {
        if (wcscmp(table.keywords[i].text, text) == 0)
            return &table.keywords[i];
    }
    return nullptr;
}

namespace {

struct SyntaxWords {
    const wchar_t* name;
    const wchar_t* text;
};

SyntaxWords WordsFor(MEUIValueSyntax syntax)
{
    switch (syntax) {
    case UISyntaxText: return {L"text", L"text"};
    case UISyntaxFaceName: return {L"facename", L"typeface name of at most 31 characters"};
    case UISyntaxFlag: return {L"flag", L"1 (true) or 0"};
    case UISyntaxUnsigned: return {L"unsigned", L"unsigned number"};
    case UISyntaxByte: return {L"byte", L"number 0..255"};
    case UISyntaxSignedByte: return {L"signedbyte", L"number -128..128"};
    case UISyntaxSigned: return {L"signed", L"number"};
    case UISyntaxSkinRGB: return {L"skinrgb", L"r,g,b"};
    case UISyntaxSkinARGB: return {L"skinargb", L"r,g,b,a"};
    case UISyntaxColour: return {L"colour", L"r,g,b"};
    case UISyntaxRect: return {L"rect", L"left,top,right,bottom"};
    case UISyntaxRectEx: return {L"rectex", L"x,y,width,height"};
    case UISyntaxKeyword: return {L"keyword", L"keyword"};
    case UISyntaxAnchorLetters: return {L"anchorletters", L"two or four letters"};
    case UISyntaxAnchorNumbers: return {L"anchornumbers", L"four numbers 0..100"};
    }
    return {L"", L""};
}

}  // namespace

const wchar_t* GetSyntaxName(MEUIValueSyntax syntax) { return WordsFor(syntax).name; }
const wchar_t* GetSyntaxText(MEUIValueSyntax syntax) { return WordsFor(syntax).text; }

const wchar_t* GetFlagName(MEUIAttributeFlags flag)
{
    switch (flag) {
    case UIAttributeNone: break;
    case UIAttributeIgnoredUnderSkinPath: return L"ignoredUnderSkinPath";
    case UIAttributeKey: return L"key";
    case UIAttributeReference: return L"reference";
    case UIAttributeKeyScope: return L"keyScope";
    case UIAttributeSkinPath: return L"skinPath";
    case UIAttributeReplacesPrevious: return L"replacesPrevious";
    case UIAttributeOnlyWithoutPrevious: return L"onlyWithoutPrevious";
    case UIAttributeRequired: return L"required";
    case UIAttributeUnacceptableEndsTable: return L"unacceptableEndsTable";
    case UIAttributeIdentifier: return L"identifier";
    case UIAttributeSkipsChildren: return L"skipsChildren";
    }
    return L"";
}

}  // namespace MNUIFormat
