// Keyword resolvers: the fixed lower-case keywords of a description turned into
// numbers and enumerations. Matching is exact: case- and length-sensitive.
#include "MCXMLReader.h"
#include "MNUIFormat.h"
#include <vector>

namespace {

// The keywords of one table of the format description in comparison order,
// held as BSTRs from module load to module unload.
class KeywordTable {
public:
    explicit KeywordTable(const MDUIKeywordTable& table)
    {
        m_entries.reserve(table.count);
        for (int i = 0; i < table.count; ++i)
            m_entries.push_back(Entry{_bstr_t(table.keywords[i].text), table.keywords[i].value});
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

class ReaderKeywords {
public:
    ReaderKeywords()
    {
        m_tables.reserve(UIKeywordTableCount);
        for (int id = 0; id < UIKeywordTableCount; ++id)
            m_tables.emplace_back(MNUIFormat::GetKeywordTable(static_cast<MEUIKeywordTableID>(id)));
    }
    const KeywordTable& operator[](MEUIKeywordTableID id) const { return m_tables[id]; }

private:
    std::vector<KeywordTable> m_tables;
    // Built with the others but never compared: descriptions saying "cleartype"
    // get the font's own quality.
    _bstr_t m_clearType{L"cleartype"};
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
    return Resolve(g_keywords[UIKeywordsEffect], value, out);
}

HRESULT MCXMLReader::ResolveFontFlagsFromAttribute(const _bstr_t& value, MEFontFlags& out)
{
    return Resolve(g_keywords[UIKeywordsAlignment], value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontWeightFromAttribute(const _bstr_t& value, long& out)
{
    if (Resolve(g_keywords[UIKeywordsWeight], value, out) == S_OK)
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
    return Resolve(g_keywords[UIKeywordsCharset], value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontPrecisionFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords[UIKeywordsPrecision], value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontQualityFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords[UIKeywordsQuality], value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontPitchFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords[UIKeywordsPitch], value, out);
}

HRESULT MCXMLReader::ResolveFontLogFontFamilyFromAttribute(const _bstr_t& value, BYTE& out)
{
    return Resolve(g_keywords[UIKeywordsFamily], value, out);
}

HRESULT MCXMLReader::ResolveControlTypeFromAttribute(const _bstr_t& value, MEControlType& out)
{
    return Resolve(g_keywords[UIKeywordsControlType], value, out);
}

HRESULT MCXMLReader::ResolveControlStateFromAttribute(const _bstr_t& value, MEControlState& out)
{
    return Resolve(g_keywords[UIKeywordsControlState], value, out);
}

HRESULT MCXMLReader::ResolveControlResizeTypeFromAttribute(const _bstr_t& value, MEControlResizeType& out)
{
    return Resolve(g_keywords[UIKeywordsResize], value, out);
}

HRESULT MCXMLReader::ResolveWindowMoveTypeFromAttribute(const _bstr_t& value, MEWindowMoveType& out)
{
    return Resolve(g_keywords[UIKeywordsMove], value, out);
}

HRESULT MCXMLReader::ResolveControlWindowTypeFromValue(bool flag, MEControlWindowType& out)
{
    out = flag ? MEControlWindowTypeWindowless : MEControlWindowTypeWindowed;
    return S_OK;
}

HRESULT MCXMLReader::ResolveImageEffectFromAttribute(const _bstr_t& value, MEImageEffect& out)
{
    return Resolve(g_keywords[UIKeywordsImageEffect], value, out);
}
