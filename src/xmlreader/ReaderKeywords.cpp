// Keyword resolvers: the fixed lower-case keywords of a description turned into
// numbers and enumerations. Matching is exact: case- and length-sensitive.
#include "MCXMLReader.h"
#include <initializer_list>
#include <vector>

namespace {

// The keywords of one resolver in comparison order, held as BSTRs from module
// load to module unload.
class KeywordTable {
public:
    struct Keyword {
        const wchar_t* text;
        long value;
    };

    KeywordTable(std::initializer_list<Keyword> keywords)
    {
        m_entries.reserve(keywords.size());
        for (const Keyword& keyword : keywords)
            m_entries.push_back(Entry{_bstr_t(keyword.text), keyword.value});
    }

    bool Find(const _bstr_t& value, long& result) const
    {
        const wchar_t* text = value;
        unsigned int length = value.length();
        for (const Entry& entry : m_entries) {
            if (entry.text.length() == length &&
                (length == 0 || wmemcmp(static_cast<const wchar_t*>(entry.text), text, length) == 0)) {
                result = entry.value;
                return true;
            }
        }
        return false;
    }

private:
    struct Entry {
        _bstr_t text;
        long value;
    };
    std::vector<Entry> m_entries;
};

struct ReaderKeywords {
    KeywordTable fontEffects{{L"no", MEFontEffectNone}, {L"sh", MEFontEffectShadow},
                             {L"ssh", MEFontEffectSoftShadow}, {L"gl", MEFontEffectGlow}};
    KeywordTable fontFlags{{L"tl", MEFontFlagsTopLeft},     {L"tc", MEFontFlagsTopCenter},
                           {L"tr", MEFontFlagsTopRight},    {L"cl", MEFontFlagsMiddleLeft},
                           {L"c", MEFontFlagsCenter},       {L"cr", MEFontFlagsMiddleRight},
                           {L"bl", MEFontFlagsBottomLeft},  {L"bc", MEFontFlagsBottomCenter},
                           {L"br", MEFontFlagsBottomRight}};
    KeywordTable weights{{L"dontcare", FW_DONTCARE},     {L"thin", FW_THIN},
                         {L"extralight", FW_EXTRALIGHT}, {L"ultralight", FW_ULTRALIGHT},
                         {L"light", FW_LIGHT},           {L"normal", FW_NORMAL},
                         {L"regular", FW_REGULAR},       {L"medium", FW_MEDIUM},
                         {L"semibold", FW_SEMIBOLD},     {L"demibold", FW_DEMIBOLD},
                         {L"bold", FW_BOLD},             {L"extrabold", FW_EXTRABOLD},
                         {L"ultrabold", FW_ULTRABOLD},   {L"heavy", FW_HEAVY},
                         {L"black", FW_BLACK}};
    // "chinesbig5" is the keyword as descriptions spell it.
    KeywordTable charsets{{L"ansi", ANSI_CHARSET},           {L"baltic", BALTIC_CHARSET},
                          {L"chinesbig5", CHINESEBIG5_CHARSET}, {L"default", DEFAULT_CHARSET},
                          {L"easteurope", EASTEUROPE_CHARSET}, {L"gb2312", GB2312_CHARSET},
                          {L"greek", GREEK_CHARSET},         {L"hangul", HANGUL_CHARSET},
                          {L"mac", MAC_CHARSET},             {L"oem", OEM_CHARSET},
                          {L"russian", RUSSIAN_CHARSET},     {L"shiftjis", SHIFTJIS_CHARSET},
                          {L"symbol", SYMBOL_CHARSET},       {L"turkish", TURKISH_CHARSET},
                          {L"vietnamese", VIETNAMESE_CHARSET}, {L"johab", JOHAB_CHARSET},
                          {L"arabic", ARABIC_CHARSET},       {L"hebrew", HEBREW_CHARSET},
                          {L"thai", THAI_CHARSET}};
    // Output and clipping precisions share this one table.
    KeywordTable precisions{{L"character", OUT_CHARACTER_PRECIS}, {L"default", OUT_DEFAULT_PRECIS},
                            {L"device", OUT_DEVICE_PRECIS},       {L"outline", OUT_OUTLINE_PRECIS},
                            {L"only", OUT_PS_ONLY_PRECIS},        {L"raster", OUT_RASTER_PRECIS},
                            {L"string", OUT_STRING_PRECIS},       {L"stroke", OUT_STROKE_PRECIS},
                            {L"ttonly", OUT_TT_ONLY_PRECIS},      {L"tt", OUT_TT_PRECIS}};
    KeywordTable qualities{{L"antialiased", ANTIALIASED_QUALITY}, {L"default", DEFAULT_QUALITY},
                           {L"draft", DRAFT_QUALITY},             {L"nonantialiased", NONANTIALIASED_QUALITY},
                           {L"proof", PROOF_QUALITY}};
    // Built with the others but not part of the quality table: descriptions
    // saying "cleartype" get the font's own quality.
    _bstr_t clearType{L"cleartype"};
    KeywordTable pitches{{L"default", DEFAULT_PITCH}, {L"fixed", FIXED_PITCH}, {L"variable", VARIABLE_PITCH}};
    KeywordTable families{{L"decorative", FF_DECORATIVE}, {L"dontcare", FF_DONTCARE}, {L"modern", FF_MODERN},
                          {L"roman", FF_ROMAN},           {L"script", FF_SCRIPT},     {L"swiss", FF_SWISS}};
    KeywordTable controlTypes{{L"window", MEControlTypeWindow},
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
    KeywordTable controlStates{{L"normal", MEControlStateNormal},     {L"focus", MEControlStateFocus},
                               {L"pressed", MEControlStatePressed},   {L"mouseover", MEControlStateMouseOver},
                               {L"disabled", MEControlStateDisabled}};
    KeywordTable resizeTypes{{L"w", MEControlResizeWidth}, {L"h", MEControlResizeHeight},
                             {L"wh", MEControlResizeWidthHeight}, {L"no", MEControlResizeNone}};
    KeywordTable moveTypes{{L"x", MEWindowMoveX}, {L"y", MEWindowMoveY}, {L"xy", MEWindowMoveXY},
                           {L"no", MEWindowMoveNone}};
};

// Built when the module loads, freed when it unloads.
const ReaderKeywords g_keywords;

template <class T>
HRESULT Resolve(const KeywordTable& table, const _bstr_t& value, T& out)
{
    long found = 0;
    if (!table.Find(value, found))
        return S_FALSE;
    out = static_cast<T>(found);
    return S_OK;
}

}  // namespace

HRESULT MCXMLReader::ResolveFontEffectFromAttribute(const _bstr_t& value, MEFontEffect& out)
{
    return Resolve(g_keywords.fontEffects, value, out);
}

HRESULT MCXMLReader::ResolveFontFlagsFromAttribute(const _bstr_t& value, MEFontFlags& out)
{
    return Resolve(g_keywords.fontFlags, value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontWeightFromAttribute(const _bstr_t& value, long& out)
{
    if (Resolve(g_keywords.weights, value, out) == S_OK)
        return S_OK;
    // Any number is taken as a weight, unchecked.
    const wchar_t* text = value;
    unsigned int weight = 0;
    if (AfxCrtSwscanf(text != NULL ? text : L"", L"%u", &weight) != 1)
        return S_FALSE;
    out = static_cast<long>(weight);
    return S_OK;
}

HRESULT MCXMLReader::ResolveFontLogFontCharsetFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords.charsets, value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontPrecisionFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords.precisions, value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontQualityFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords.qualities, value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontPitchFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords.pitches, value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontFamilyFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords.families, value, out);
}

HRESULT MCXMLReader::ResolveControlTypeFromAttribute(const _bstr_t& value, MEControlType& out)
{
    return Resolve(g_keywords.controlTypes, value, out);
}

HRESULT MCXMLReader::ResolveControlStateFromAttribute(const _bstr_t& value, MEControlState& out)
{
    return Resolve(g_keywords.controlStates, value, out);
}

HRESULT MCXMLReader::ResolveControlResizeTypeFromAttribute(const _bstr_t& value, MEControlResizeType& out)
{
    return Resolve(g_keywords.resizeTypes, value, out);
}

HRESULT MCXMLReader::ResolveWindowMoveTypeFromAttribute(const _bstr_t& value, MEWindowMoveType& out)
{
    return Resolve(g_keywords.moveTypes, value, out);
}

HRESULT MCXMLReader::ResolveControlWindowTypeFromValue(bool flag, MEControlWindowType& out)
{
    out = flag ? MEControlWindowTypeWindowless : MEControlWindowTypeWindowed;
    return S_OK;
}
