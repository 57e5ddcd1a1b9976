// Document access and node queries against Wine's MSXML.
#include "ReaderTestAccess.h"

namespace {

CString DocumentXml(const IXMLDOMDocumentPtr& document)
{
    _bstr_t xml;
    EXPECT_EQ(S_OK, document->get_xml(xml.GetAddress()));
    CString text(static_cast<const wchar_t*>(xml));
    for (wchar_t blank : {L'\r', L'\n', L'\t'})
        text.Remove(blank);
    return text;
}

// The length of a node list (-1 for none).
long Length(const IXMLDOMNodeListPtr& list)
{
    long length = -1;
    return list != nullptr && list->get_length(&length) == S_OK ? length : -1;
}

}  // namespace

TEST(ReaderDocument, OpenCloseReopenAttachAndCopy)
{
    MCXMLReader reader, attached, assigned;
    EXPECT_EQ(E_UNEXPECTED, reader.Open(TestDataPath(L"xmlreader\\no-such-file.xml"), 0));
    IXMLDOMDocumentPtr created = Access::Document(reader), out;  // kept, and reused by the next Open
    IXMLDOMNodePtr window;
    EXPECT_EQ(E_UNEXPECTED, reader.Open(TestDataPath(L"xmlreader\\malformed.xml"), 0));
    EXPECT_FALSE(Access::IsOpen(reader));
    EXPECT_TRUE(reader.m_strError.IsEmpty()) << "a parse failure leaves the error text alone";
    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0xDEADBEEF));
    EXPECT_TRUE(Access::IsOpen(reader) && !Access::IsExternal(reader) && Access::Document(reader) == created);
    EXPECT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/window", window));
    reader.m_strError = L"earlier";
    MCXMLReader copy(reader);  // copies share one document
    EXPECT_TRUE(Access::Document(copy) == created && Access::IsOpen(copy) && copy.m_strError == L"earlier");
    EXPECT_EQ(S_OK, copy.Close());
    EXPECT_FALSE(Access::IsOpen(copy));
    EXPECT_EQ(CString(L"<root/>"), DocumentXml(created)) << "closing empties the document and keeps the object";
    EXPECT_EQ(S_FALSE, Access::FindNodeInDocument(reader, L"root/window", window)) << "the other copies see it emptied";
    EXPECT_EQ(S_OK, copy.Close()) << "closing a closed reader is fine";
    EXPECT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    assigned = reader;
    EXPECT_TRUE(Access::Document(assigned) == created && Access::IsOpen(assigned));
    EXPECT_EQ(CString(L"earlier"), assigned.m_strError) << "the error record is assigned too";

    EXPECT_EQ(E_POINTER, attached.GetIXMLDOMDocument(out));
    EXPECT_EQ(E_POINTER, attached.SetIXMLDOMDocument(IXMLDOMDocumentPtr()));
    EXPECT_FALSE(Access::IsOpen(attached));
    IXMLDOMDocumentPtr document = MakeDocument(L"<root><window/></root>");
    ASSERT_EQ(S_OK, attached.SetIXMLDOMDocument(document));
    EXPECT_TRUE(Access::IsOpen(attached) && Access::IsExternal(attached));
    EXPECT_EQ(S_OK, attached.GetIXMLDOMDocument(out));
    EXPECT_TRUE(out == document);
    EXPECT_EQ(S_OK, attached.Close());
    EXPECT_FALSE(Access::IsExternal(attached));
    EXPECT_TRUE(Access::IsOpen(attached)) << "m_bOpen stays set until the next Open";
    EXPECT_EQ(CString(L"<root><window/></root>"), DocumentXml(document)) << "an attached document is not emptied";
    ASSERT_EQ(S_OK, attached.SetIXMLDOMDocument(document));
    EXPECT_EQ(S_OK, attached.Open(GoldenPath(L"description.xml"), 0));
    EXPECT_FALSE(Access::IsExternal(attached)) << "opening a file loads into the attached object and owns it";
}

TEST(ReaderDocument, NodeQueriesAndTheirEPointers)
{
    MCXMLReader reader;
    IXMLDOMNodePtr window, control, missing;
    IXMLDOMNodeListPtr list;
    IXMLDOMNamedNodeMapPtr attributes;
    EXPECT_EQ(E_POINTER, Access::FindNodeInDocument(reader, L"root", window)) << "no document";
    EXPECT_FALSE(reader.m_strError.IsEmpty());
    reader.m_strError.Empty();
    EXPECT_EQ(E_POINTER, Access::FindNodesInDocument(reader, L"root", list));
    EXPECT_FALSE(reader.m_strError.IsEmpty());

    reader.m_strError.Empty();
    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    _bstr_t value(L"untouched");  // null arguments are refused before any query, without an error text
    const HRESULT refused[] = {Access::FindNodeInNode(reader, L"x", IXMLDOMNodePtr(), missing),
                               Access::FindNodesInNode(reader, L"x", IXMLDOMNodePtr(), list),
                               Access::GetNamedNodeMap(reader, IXMLDOMNodePtr(), attributes),
                               Access::FindAttributeInNode(reader, L"a", IXMLDOMNamedNodeMapPtr(), value)};
    for (HRESULT hr : refused)
        EXPECT_EQ(E_POINTER, hr);
    EXPECT_EQ(CString(L"untouched"), CString(static_cast<const wchar_t*>(value)));
    EXPECT_TRUE(reader.m_strError.IsEmpty());

    EXPECT_EQ(S_OK, Access::FindNodesInDocument(reader, L"root/window/control", list));
    EXPECT_EQ(2, Length(list));
    EXPECT_EQ(S_FALSE, Access::FindNodesInDocument(reader, L"root/nothing/here", list));
    EXPECT_EQ(0, Length(list)) << "an empty list is still handed out";
    ASSERT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/window", window));
    EXPECT_EQ(S_OK, Access::FindNodeInNode(reader, L"control", window, control));
    EXPECT_EQ(S_FALSE, Access::FindNodeInNode(reader, L"footer", window, missing));
    EXPECT_TRUE(missing == nullptr);
    EXPECT_EQ(S_OK, Access::FindNodesInNode(reader, L"control", window, list));
    EXPECT_EQ(2, Length(list));
    EXPECT_EQ(S_FALSE, Access::FindNodesInNode(reader, L"footer", window, list));

    IXMLDOMNodePtr stringTable;
    ASSERT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/str_table", stringTable));
    EXPECT_EQ(S_FALSE, Access::GetNamedNodeMap(reader, stringTable, attributes));
}

// Run twice by ctest: once as is, once with msxml4 disabled through
// WINEDLLOVERRIDES, where the reader must fall back to "Msxml2.DOMDocument".
TEST(ReaderProgId, InitPrefersMsxml4AndFallsBack)
{
    wchar_t overrides[512] = L"";
    ::GetEnvironmentVariableW(L"WINEDLLOVERRIDES", overrides, 512);
    MCXMLReader reader;
    ASSERT_EQ(S_OK, Access::Init(reader));
    ASSERT_TRUE(Access::Document(reader) != nullptr);
    EXPECT_EQ(wcsstr(overrides, L"msxml4=d") != NULL, ::GetModuleHandleW(L"msxml4.dll") == nullptr)
        << "Msxml2.DOMDocument.4.0 is tried first";
    EXPECT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    EXPECT_EQ(S_OK, Access::Init(reader)) << "an existing document is kept";
}
