// String tables, free data and the script reference of a description.
#include "ReaderBuild.h"
#include "TesvorFunctions.h"
#include <memory>

HRESULT MCXMLReader::GetScriptData(MCUIScriptData& data)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodePtr node;
        HRESULT found = FindNodeInDocument(ElementPath({MNUIName::root, MNUIName::script}), node);
        if (found != S_OK)
            return found;
        return BuildMCUIScriptDataFromNode(node, data);
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::BuildMCUIScriptDataFromNode(const IXMLDOMNodePtr& node, MCUIScriptData& data)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        IXMLDOMNamedNodeMapPtr attributes;
        HRESULT listed = GetNamedNodeMap(node, attributes);
        if (listed != S_OK)
            return FAILED(listed) ? listed : S_OK;
        HRESULT read = CreatePropertyFromAttribute(attributes, MNUIName::file, data.strFile);
        return FAILED(read) ? read : S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::GetStringTableMap(MCOrderedMap<CString, const wchar_t*, CString, CString&>& table)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodeListPtr entries;
        HRESULT found = FindNodesInDocument(ElementPath({MNUIName::root, MNUIName::str_table, MNUIName::entry}), entries);
        if (found != S_OK)
            return found;
        for (long i = 0, count = NodeCount(entries); i < count; ++i) {
            CString id, text;
            HRESULT read = ReadEntryTexts(NodeAt(entries, i), MNUIName::id, MNUIName::text, id, text);
            if (FAILED(read))
                return read;
            if (read != S_OK)
                continue;
            if (table.PLookup(id) != NULL) {
                DropDuplicateNotice(L"GetStringTableMap - Duplicated id for element " + text +
                                    L" was found in string table");
                continue;
            }
            table.SetAt(id, text);
        }
        return S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::GetStringTableMapByID(MCMap<DWORD, DWORD, CString, CString&>& table)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodeListPtr entries;
        HRESULT found = FindNodesInDocument(ElementPath({MNUIName::root, MNUIName::str_table_id, MNUIName::entry}), entries);
        if (found != S_OK)
            return found;
        for (long i = 0, count = NodeCount(entries); i < count; ++i) {
            IXMLDOMNamedNodeMapPtr attributes;
            HRESULT read = GetNamedNodeMap(NodeAt(entries, i), attributes);
            if (FAILED(read))
                return read;
            if (read != S_OK)
                continue;
            // An entry without "id" is skipped; one whose "id" is not a number
            // ends the table with the number reader's result.
            _bstr_t idText;
            read = FindAttributeInNode(MNUIName::id, attributes, idText);
            if (read != S_OK) {
                if (FAILED(read))
                    return read;
                continue;
            }
            DWORD id = 0;
            read = CreatePropertyFromAttribute(attributes, MNUIName::id, id);
            if (read != S_OK)
                return read;
            CString text;
            read = CreatePropertyFromAttribute(attributes, MNUIName::text, text);
            if (read != S_OK) {
                if (FAILED(read))
                    return read;
                continue;
            }
            if (table.PLookup(id) != NULL) {
                // The same wording as the text-keyed table, prefix included.
                DropDuplicateNotice(L"GetStringTableMap - Duplicated id for element " + text +
                                    L" was found in string table");
                continue;
            }
            table.SetAt(id, text);
        }
        return S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::GetFreedataTableNodeBySectionName(const CString& name, IXMLDOMNodePtr& node)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodeListPtr sections;
        HRESULT result = FindNodesInDocument(ElementPath({MNUIName::root, MNUIName::freedata, MNUIName::section}), sections);
        if (result != S_OK)
            return result;
        // With no match the result is that of the last name read, and `node`
        // stays as it was.
        for (long i = 0, count = NodeCount(sections); i < count; ++i) {
            IXMLDOMNodePtr section = NodeAt(sections, i);
            IXMLDOMNamedNodeMapPtr attributes;
            result = GetNamedNodeMap(section, attributes);
            if (FAILED(result))
                return result;
            if (result != S_OK)
                continue;
            CString sectionName;
            result = CreatePropertyFromAttribute(attributes, MNUIName::name, sectionName);
            if (FAILED(result))
                return result;
            if (wcscmp(sectionName, name) == 0) {
                node = section;
                break;
            }
        }
        return result;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::ReadFreedataEntries(const IXMLDOMNodePtr& section,
                                         MCOrderedMap<CString, const wchar_t*, CString, CString&>& table,
                                         const wchar_t* duplicatePrefix)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        IXMLDOMNodeListPtr entries;
        HRESULT found = FindNodesInNode(MNUIName::entry, section, entries);
        if (found != S_OK)
            return found;
        for (long i = 0, count = NodeCount(entries); i < count; ++i) {
            CString name, value;
            HRESULT read = ReadEntryTexts(NodeAt(entries, i), MNUIName::name, MNUIName::value, name, value);
            if (FAILED(read))
                return read;
            if (read != S_OK)
                continue;
            if (table.PLookup(name) != NULL) {
                DropDuplicateNotice(duplicatePrefix + name + L" was found in freedata table");
                continue;
            }
            table.SetAt(name, value);
        }
        return S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::GetFreedataTableMapBySectionName(
    const CString& name, MCOrderedMap<CString, const wchar_t*, CString, CString&>& table)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodePtr freedata;
        HRESULT result = FindNodeInDocument(ElementPath({MNUIName::root, MNUIName::freedata}), freedata);
        if (result != S_OK)
            return result;
        IXMLDOMNodeListPtr sections;
        result = FindNodesInNode(MNUIName::section, freedata, sections);
        if (result != S_OK)
            return result;
        for (long i = 0, count = NodeCount(sections); i < count; ++i) {
            IXMLDOMNodePtr section = NodeAt(sections, i);
            IXMLDOMNamedNodeMapPtr attributes;
            result = GetNamedNodeMap(section, attributes);
            if (FAILED(result))
                return result;
            if (result != S_OK)
                continue;
            CString sectionName;
            result = CreatePropertyFromAttribute(attributes, MNUIName::name, sectionName);
            if (FAILED(result))
                return result;
            if (result == S_OK && wcscmp(sectionName, name) == 0)
                return ReadFreedataEntries(section, table,
                                           L"GetFreedataBySectionName - Duplicated name for element ");
        }
        // No section of that name: nothing found, the table stays as it was.
        return S_FALSE;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::GetAllFreedataSectionTables(
    MCOrderedMap<CString, const wchar_t*, MCOrderedMap<CString, const wchar_t*, CString, CString&>*,
                 MCOrderedMap<CString, const wchar_t*, CString, CString&>*&>& sections)
{
    typedef MCOrderedMap<CString, const wchar_t*, CString, CString&> Section;
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodeListPtr nodes;
        HRESULT found = FindNodesInDocument(ElementPath({MNUIName::root, MNUIName::freedata, MNUIName::section}), nodes);
        if (found != S_OK)
            return found;
        for (long i = 0, count = NodeCount(nodes); i < count; ++i) {
            IXMLDOMNodePtr node = NodeAt(nodes, i);
            // A section without a name is kept under the empty name.
            CString name;
            IXMLDOMNamedNodeMapPtr attributes;
            HRESULT read = GetNamedNodeMap(node, attributes);
            if (FAILED(read))
                return read;
            if (read == S_OK) {
                read = CreatePropertyFromAttribute(attributes, MNUIName::name, name);
                if (FAILED(read))
                    return read;
            }
            // The first section of a name stays, as everywhere in the reader.
            if (sections.PLookup(name) != NULL)
                continue;
            std::unique_ptr<Section> section(new (std::nothrow) Section);
            if (!section)
                return E_OUTOFMEMORY;
            read = ReadFreedataEntries(node, *section,
                                       L"GetAllFreedataSectionTables - Duplicated name for element ");
            if (FAILED(read))
                return read;
            Section* owned = section.release();
            sections.SetAt(name, owned);
        }
        return S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::ReadEntryTexts(const IXMLDOMNodePtr& entry, const _bstr_t& keyName,
                                    const _bstr_t& valueName, CString& key, CString& value)
{
    IXMLDOMNamedNodeMapPtr attributes;
    HRESULT read = GetNamedNodeMap(entry, attributes);
    if (read != S_OK)
        return read;
    read = CreatePropertyFromAttribute(attributes, keyName, key);
    if (read != S_OK)
        return read;
    return CreatePropertyFromAttribute(attributes, valueName, value);
}
