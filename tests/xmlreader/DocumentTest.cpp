// Document access and node queries against Wine's MSXML.
#include "ReaderTestAccess.h"

typedef MCXMLReaderTestAccess Access;

namespace {

long Length(const IXMLDOMNodeListPtr& list)
{
    long length = -1;
    EXPECT_EQ(S_OK, list->get_length(&length));
    return length;
}

CString DocumentXml(const IXMLDOMDocumentPtr& document)
{
    BSTR xml = NULL;
    EXPECT_EQ(S_OK, document->get_xml(&xml));
    CString text(xml);
    ::SysFreeString(xml);
    text.Remove(L'\r');
    text.Remove(L'\n');
    text.Remove(L'\t');
    return text;
}

}  // namespace

TEST(ReaderDocument, FailedOpenLeavesReaderClosedAndReusable)
{
    MCXMLReader reader;
    EXPECT_EQ(E_UNEXPECTED, reader.Open(TestDataPath(L"xmlreader\\no-such-file.xml"), 0));
    EXPECT_FALSE(Access::IsOpen(reader));
    IXMLDOMDocumentPtr created = Access::Document(reader);
    EXPECT_TRUE(created ) << "the document object is kept for reuse";

    EXPECT_EQ(E_UNEXPECTED, reader.Open(TestDataPath(L"xmlreader\\malformed.xml"), 0));
    EXPECT_FALSE(Access::IsOpen(reader));
    EXPECT_TRUE(reader.m_strError.IsEmpty()) << "a parse failure leaves the error text alone";
    EXPECT_TRUE(Access::Document(reader) == created);

    EXPECT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0xDEADBEEF));
    EXPECT_TRUE(Access::IsOpen(reader));
    EXPECT_FALSE(Access::IsExternal(reader));
    IXMLDOMNodePtr window;
    EXPECT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/window", window));
}

TEST(ReaderDocument, CloseEmptiesAnOwnedDocumentAndKeepsTheObject)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0));
    IXMLDOMDocumentPtr document = Access::Document(reader);
    EXPECT_EQ(S_OK, reader.Close());
    EXPECT_FALSE(Access::IsOpen(reader));
    EXPECT_TRUE(Access::Document(reader) == document);
    EXPECT_EQ(CString(L"<root/>"), DocumentXml(document));
    IXMLDOMNodePtr window;
    EXPECT_EQ(S_FALSE, Access::FindNodeInDocument(reader, L"root/window", window));
    EXPECT_TRUE(window == nullptr);
    EXPECT_EQ(S_OK, reader.Close()) << "closing a closed reader is fine";

    EXPECT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0));
    EXPECT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/window", window));
}

TEST(ReaderDocument, CloseDetachesAnAttachedDocumentWithoutEmptyingIt)
{
    IXMLDOMDocumentPtr document = MakeDocument(L"<root><window/></root>");
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
    EXPECT_TRUE(Access::IsOpen(reader));
    EXPECT_TRUE(Access::IsExternal(reader));
    EXPECT_EQ(S_OK, reader.Close());
    EXPECT_FALSE(Access::IsExternal(reader));
    EXPECT_TRUE(Access::IsOpen(reader)) << "m_bOpen stays set until the next Open";
    EXPECT_EQ(CString(L"<root><window/></root>"), DocumentXml(document));
    IXMLDOMNodePtr window;
    EXPECT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/window", window));
}

TEST(ReaderDocument, AttachAndHandOutDocuments)
{
    MCXMLReader reader;
    IXMLDOMDocumentPtr out;
    EXPECT_EQ(E_POINTER, reader.GetIXMLDOMDocument(out));
    EXPECT_EQ(E_POINTER, reader.SetIXMLDOMDocument(IXMLDOMDocumentPtr()));
    EXPECT_FALSE(Access::IsOpen(reader));

    IXMLDOMDocumentPtr document = MakeDocument(L"<root/>");
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
    EXPECT_EQ(S_OK, reader.GetIXMLDOMDocument(out));
    EXPECT_TRUE(out == document);

    // Opening a file afterwards loads into the attached object and owns it again.
    EXPECT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0));
    EXPECT_FALSE(Access::IsExternal(reader));
}

TEST(ReaderDocument, CopiesShareOneDocument)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0));
    reader.m_strError = L"earlier";
    MCXMLReader copy(reader);
    EXPECT_TRUE(Access::Document(copy) == Access::Document(reader));
    EXPECT_TRUE(Access::IsOpen(copy));
    EXPECT_EQ(CString(L"earlier"), copy.m_strError);

    MCXMLReader assigned;
    assigned = reader;
    EXPECT_EQ(S_OK, assigned.Close());
    IXMLDOMNodePtr window;
    EXPECT_EQ(S_FALSE, Access::FindNodeInDocument(reader, L"root/window", window))
        << "closing one copy empties the document the others see";
}

TEST(ReaderDocument, QueriesWithoutDocumentFailWithEPointer)
{
    MCXMLReader reader;
    IXMLDOMNodePtr node;
    IXMLDOMNodeListPtr list;
    EXPECT_EQ(E_POINTER, Access::FindNodeInDocument(reader, L"root", node));
    EXPECT_FALSE(reader.m_strError.IsEmpty());
    reader.m_strError.Empty();
    EXPECT_EQ(E_POINTER, Access::FindNodesInDocument(reader, L"root", list));
    EXPECT_FALSE(reader.m_strError.IsEmpty());
}

TEST(ReaderDocument, NullArgumentsGiveEPointerWithoutErrorText)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(MakeDocument(L"<root a=''/>")));
    IXMLDOMNodePtr node;
    IXMLDOMNodeListPtr list;
    IXMLDOMNamedNodeMapPtr attributes;
    _bstr_t value(L"untouched");
    EXPECT_EQ(E_POINTER, Access::FindNodeInNode(reader, L"x", IXMLDOMNodePtr(), node));
    EXPECT_EQ(E_POINTER, Access::FindNodesInNode(reader, L"x", IXMLDOMNodePtr(), list));
    EXPECT_EQ(E_POINTER, Access::GetNamedNodeMap(reader, IXMLDOMNodePtr(), attributes));
    EXPECT_EQ(E_POINTER, Access::FindAttributeInNode(reader, L"a", IXMLDOMNamedNodeMapPtr(), value));
    EXPECT_EQ(CString(L"untouched"), CString(static_cast<const wchar_t*>(value)));
    EXPECT_TRUE(reader.m_strError.IsEmpty());
}

TEST(ReaderDocument, NodeQueries)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0));

    IXMLDOMNodeListPtr list;
    EXPECT_EQ(S_OK, Access::FindNodesInDocument(reader, L"root/window/control", list));
    EXPECT_EQ(2, Length(list));
    EXPECT_EQ(S_FALSE, Access::FindNodesInDocument(reader, L"root/nothing/here", list));
    ASSERT_TRUE(list ) << "an empty list is still handed out";
    EXPECT_EQ(0, Length(list));

    IXMLDOMNodePtr window, control, missing;
    ASSERT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/window", window));
    EXPECT_EQ(S_OK, Access::FindNodeInNode(reader, L"control", window, control));
    EXPECT_EQ(S_FALSE, Access::FindNodeInNode(reader, L"footer", window, missing));
    EXPECT_TRUE(missing == nullptr);
    EXPECT_EQ(S_OK, Access::FindNodesInNode(reader, L"control", window, list));
    EXPECT_EQ(2, Length(list));
    EXPECT_EQ(S_FALSE, Access::FindNodesInNode(reader, L"footer", window, list));

    IXMLDOMNamedNodeMapPtr attributes;
    ASSERT_EQ(S_OK, Access::GetNamedNodeMap(reader, control, attributes));
    _bstr_t value(L"prefilled");
    EXPECT_EQ(S_OK, Access::FindAttributeInNode(reader, L"ids", attributes, value));
    EXPECT_EQ(CString(L"IDOK"), CString(static_cast<const wchar_t*>(value)));
    value = L"prefilled";
    EXPECT_EQ(S_OK, Access::FindAttributeInNode(reader, L"empty", attributes, value));
    EXPECT_EQ(0u, value.length());
    value = L"prefilled";
    EXPECT_EQ(S_FALSE, Access::FindAttributeInNode(reader, L"IDS", attributes, value)) << "names are case-sensitive";
    EXPECT_EQ(0u, value.length());

    IXMLDOMNodePtr str_table;
    ASSERT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root/str_table", str_table));
    EXPECT_EQ(S_FALSE, Access::GetNamedNodeMap(reader, str_table, attributes));
}

// Run twice by ctest: once as is, once with msxml4 disabled through
// WINEDLLOVERRIDES, where the reader must fall back to "Msxml2.DOMDocument".
TEST(ReaderProgId, InitPrefersMsxml4AndFallsBack)
{
    wchar_t overrides[512] = L"";
    ::GetEnvironmentVariableW(L"WINEDLLOVERRIDES", overrides, 512);
    bool msxml4Disabled = wcsstr(overrides, L"msxml4=d") != NULL;

    MCXMLReader reader;
    ASSERT_EQ(S_OK, Access::Init(reader));
    ASSERT_TRUE(Access::Document(reader) );
    if (msxml4Disabled)
        EXPECT_TRUE(::GetModuleHandleW(L"msxml4.dll") == nullptr);
    else
        EXPECT_TRUE(::GetModuleHandleW(L"msxml4.dll") ) << "Msxml2.DOMDocument.4.0 is tried first";
    EXPECT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0));
    EXPECT_EQ(S_OK, Access::Init(reader)) << "an existing document is kept";
}
