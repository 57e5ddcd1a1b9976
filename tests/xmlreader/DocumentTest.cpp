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
    for (wchar_t blank : {L'\r', L'\n', L'\t'})
        text.Remove(blank);
    return text;
}

HRESULT FindWindow(MCXMLReader& reader)
{
    IXMLDOMNodePtr window;
    return Access::FindNodeInDocument(reader, L"root/window", window);
}

}  // namespace

TEST(ReaderDocument, OpenCloseAndReopenAnOwnedDocument)
{
    MCXMLReader reader;
    EXPECT_EQ(E_UNEXPECTED, reader.Open(TestDataPath(L"xmlreader\\no-such-file.xml"), 0));
    IXMLDOMDocumentPtr created = Access::Document(reader);
    EXPECT_TRUE(created != nullptr) << "the document object is kept for reuse";
    EXPECT_EQ(E_UNEXPECTED, reader.Open(TestDataPath(L"xmlreader\\malformed.xml"), 0));
    EXPECT_FALSE(Access::IsOpen(reader));
    EXPECT_TRUE(reader.m_strError.IsEmpty()) << "a parse failure leaves the error text alone";
    EXPECT_TRUE(Access::Document(reader) == created);

    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0xDEADBEEF));
    EXPECT_TRUE(Access::IsOpen(reader));
    EXPECT_FALSE(Access::IsExternal(reader));
    EXPECT_EQ(S_OK, FindWindow(reader));
    EXPECT_EQ(S_OK, reader.Close());
    EXPECT_FALSE(Access::IsOpen(reader));
    EXPECT_TRUE(Access::Document(reader) == created) << "closing keeps the object, emptied";
    EXPECT_EQ(CString(L"<root/>"), DocumentXml(created));
    EXPECT_EQ(S_FALSE, FindWindow(reader));
    EXPECT_EQ(S_OK, reader.Close()) << "closing a closed reader is fine";
    EXPECT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    EXPECT_EQ(S_OK, FindWindow(reader));
}

TEST(ReaderDocument, AttachHandOutAndDetachDocuments)
{
    MCXMLReader reader;
    IXMLDOMDocumentPtr out;
    EXPECT_EQ(E_POINTER, reader.GetIXMLDOMDocument(out));
    EXPECT_EQ(E_POINTER, reader.SetIXMLDOMDocument(IXMLDOMDocumentPtr()));
    EXPECT_FALSE(Access::IsOpen(reader));

    IXMLDOMDocumentPtr document = MakeDocument(L"<root><window/></root>");
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
    EXPECT_TRUE(Access::IsOpen(reader) && Access::IsExternal(reader));
    EXPECT_EQ(S_OK, reader.GetIXMLDOMDocument(out));
    EXPECT_TRUE(out == document);
    EXPECT_EQ(S_OK, reader.Close());
    EXPECT_FALSE(Access::IsExternal(reader));
    EXPECT_TRUE(Access::IsOpen(reader)) << "m_bOpen stays set until the next Open";
    EXPECT_EQ(CString(L"<root><window/></root>"), DocumentXml(document)) << "an attached document is not emptied";
    EXPECT_EQ(S_OK, FindWindow(reader));

    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
    EXPECT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    EXPECT_FALSE(Access::IsExternal(reader)) << "opening a file loads into the attached object and owns it";
}

TEST(ReaderDocument, CopiesShareOneDocument)
{
    MCXMLReader reader, assigned;
    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    reader.m_strError = L"earlier";
    MCXMLReader copy(reader);
    EXPECT_TRUE(Access::Document(copy) == Access::Document(reader));
    EXPECT_TRUE(Access::IsOpen(copy));
    EXPECT_EQ(CString(L"earlier"), copy.m_strError);
    assigned = reader;
    EXPECT_EQ(S_OK, assigned.Close());
    EXPECT_EQ(S_FALSE, FindWindow(reader)) << "closing one copy empties the document the others see";
}

TEST(ReaderDocument, MissingDocumentsAndNullArgumentsAreEPointer)
{
    MCXMLReader reader;
    IXMLDOMNodePtr node;
    IXMLDOMNodeListPtr list;
    EXPECT_EQ(E_POINTER, Access::FindNodeInDocument(reader, L"root", node));
    EXPECT_FALSE(reader.m_strError.IsEmpty());
    reader.m_strError.Empty();
    EXPECT_EQ(E_POINTER, Access::FindNodesInDocument(reader, L"root", list));
    EXPECT_FALSE(reader.m_strError.IsEmpty());

    // Null arguments are refused before any query, without an error text.
    reader.m_strError.Empty();
    Attach(reader, L"<root a=''/>");
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
    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    IXMLDOMNodeListPtr list;
    EXPECT_EQ(S_OK, Access::FindNodesInDocument(reader, L"root/window/control", list));
    EXPECT_EQ(2, Length(list));
    EXPECT_EQ(S_FALSE, Access::FindNodesInDocument(reader, L"root/nothing/here", list));
    ASSERT_TRUE(list != nullptr) << "an empty list is still handed out";
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
    struct Case {
        const wchar_t* name;
        HRESULT hr;
        const wchar_t* value;
    } const cases[] = {{L"ids", S_OK, L"IDOK"}, {L"empty", S_OK, L""}, {L"IDS", S_FALSE, L""}};  // names are case-sensitive
    for (const Case& c : cases) {
        _bstr_t value(L"prefilled");
        EXPECT_EQ(c.hr, Access::FindAttributeInNode(reader, c.name, attributes, value)) << c.name;
        EXPECT_EQ(CString(c.value), CString(static_cast<const wchar_t*>(value))) << c.name;
    }
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
    const bool msxml4Disabled = wcsstr(overrides, L"msxml4=d") != NULL;
    MCXMLReader reader;
    ASSERT_EQ(S_OK, Access::Init(reader));
    ASSERT_TRUE(Access::Document(reader) != nullptr);
    EXPECT_EQ(msxml4Disabled, ::GetModuleHandleW(L"msxml4.dll") == nullptr) << "Msxml2.DOMDocument.4.0 is tried first";
    EXPECT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    EXPECT_EQ(S_OK, Access::Init(reader)) << "an existing document is kept";
}
