// A control whose element cannot be read, in the middle of a window's controls.
// MSXML does not fail on a well-formed document, so the test makes it: the
// element interface's get_attributes is replaced, for as long as the test runs,
// by one that refuses elements carrying a "fault" attribute.
#include "ReaderTestAccess.h"
#include "MCUIWindowData.h"
#include "VtableSlotPatch.h"

namespace {

// Position of get_attributes in IXMLDOMNode's table: IUnknown (3), IDispatch (4),
// then get_nodeName .. get_nextSibling (10).
const size_t kGetAttributesSlot = 17;

typedef HRESULT(WINAPI* GetAttributesFn)(IXMLDOMNode*, IXMLDOMNamedNodeMap**);
GetAttributesFn g_original = nullptr;

HRESULT WINAPI RefuseMarkedElements(IXMLDOMNode* node, IXMLDOMNamedNodeMap** attributes)
{
    const HRESULT hr = g_original(node, attributes);
    if (FAILED(hr) || *attributes == nullptr)
        return hr;
    IXMLDOMNode* marker = nullptr;
    (*attributes)->getNamedItem(_bstr_t(L"fault"), &marker);
    if (marker == nullptr)
        return hr;
    marker->Release();
    (*attributes)->Release();
    *attributes = nullptr;
    return E_ACCESSDENIED;
}

TEST(FailingControl, EndsTheWindowAndKeepsTheControlsBuiltBeforeIt)
{
    IXMLDOMDocumentPtr document = MakeDocument(
        L"<root><window skinform=\"form\">"
        L"<control ids=\"first\"/><control ids=\"second\"/>"
        L"<control ids=\"broken\" fault=\"1\"/><control ids=\"after\"/>"
        L"<footer status=\"never read\"/>"
        L"</window></root>");
    ASSERT_TRUE(document);
    IXMLDOMNodePtr broken;
    ASSERT_EQ(S_OK, document->selectSingleNode(_bstr_t(L"root/window/control[@fault]"), &broken));

    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
    MCUIWindowData window;
    window.arrControls.Add(new MCUIDataControl);
    window.arrControls[0]->strIDS = L"held before";
    HRESULT hr;
    {
        VtableSlotPatch patch(broken, kGetAttributesSlot, reinterpret_cast<void*>(&RefuseMarkedElements));
        g_original = reinterpret_cast<GetAttributesFn>(patch.Original());
        hr = reader.GetDialogData(window);
    }

    EXPECT_EQ(E_ACCESSDENIED, hr);
    EXPECT_FALSE(reader.m_strError.IsEmpty()) << "the DOM error's message is kept";
    ASSERT_EQ(3, window.arrControls.GetSize());
    EXPECT_EQ(L"held before", window.arrControls[0]->strIDS);
    EXPECT_EQ(L"first", window.arrControls[1]->strIDS);
    EXPECT_EQ(L"second", window.arrControls[2]->strIDS);
    EXPECT_EQ(L"form", window.strSkinForm) << "the window's own fields come first";
    EXPECT_TRUE(window.footer.strStatus.IsEmpty()) << "nothing after the failing control is read";

    // With the element readable again the same document builds completely.
    MCUIWindowData again;
    EXPECT_EQ(S_OK, reader.GetDialogData(again));
    EXPECT_EQ(4, again.arrControls.GetSize());
}

}  // namespace
