// The preview's picture: the window and its controls printed (WM_PRINT) into an
// off-screen surface, then written as PNG by the platform's imaging codecs.
#include "DialogPreview.h"
#include <atlbase.h>
#include <wincodec.h>
#include <memory>
#include <vector>

namespace preview {
namespace {

// The borders that a window's styles give it. WM_PRINT on Wine leaves the
// non-client area out, so they are drawn here (scroll bars are not).
void DrawBorders(HWND window, HDC dc, CRect rect)
{
    if ((::GetWindowLongPtrW(window, GWL_STYLE) & WS_BORDER) != 0) {
        ::FrameRect(dc, &rect, ::GetSysColorBrush(COLOR_WINDOWFRAME));
        rect.DeflateRect(1, 1);
    }
    const LONG_PTR exStyle = ::GetWindowLongPtrW(window, GWL_EXSTYLE);
    if ((exStyle & WS_EX_CLIENTEDGE) != 0)
        ::DrawEdge(dc, &rect, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    if ((exStyle & WS_EX_STATICEDGE) != 0)
        ::DrawEdge(dc, &rect, BDR_SUNKENOUTER, BF_RECT | BF_ADJUST);
}

// Surfaces to print client areas into, one for each depth of the window tree, as
// large as the dialog and made once: controls clip their painting to their own
// rectangle in device units, so each is printed at a surface's origin.
class Scratch {
public:
    Scratch(HDC reference, CSize size) : m_reference(reference), m_size(size) {}

    HDC At(size_t depth)
    {
        while (m_surfaces.size() <= depth)
            m_surfaces.push_back(std::make_unique<MCDC>(m_reference, m_size.cx, m_size.cy));
        return m_surfaces[depth]->GetSafeHdc();
    }

private:
    HDC m_reference;
    CSize m_size;
    std::vector<std::unique_ptr<MCDC>> m_surfaces;
};

// Prints a window onto `target` at `position`, over what is already there, then
// its visible children, bottom of the z-order first (`children` false: it has none).
void PrintWindowTree(HWND window, HDC target, POINT position, Scratch& scratch, size_t depth, bool children)
{
    CRect bounds, client;
    ::GetWindowRect(window, &bounds);
    ::GetClientRect(window, &client);
    POINT clientOrigin = {0, 0};
    ::ClientToScreen(window, &clientOrigin);
    const POINT inset = {clientOrigin.x - bounds.left, clientOrigin.y - bounds.top};
    const POINT clientPosition = {position.x + inset.x, position.y + inset.y};

    if (inset.x != 0 || inset.y != 0)
        DrawBorders(window, target, CRect(position, bounds.Size()));
    HDC inside = scratch.At(depth);
    ::BitBlt(inside, 0, 0, client.Width(), client.Height(), target, clientPosition.x, clientPosition.y, SRCCOPY);
    const int saved = ::SaveDC(inside);
    ::IntersectClipRect(inside, 0, 0, client.Width(), client.Height());
    ::SendMessageW(window, WM_PRINT, reinterpret_cast<WPARAM>(inside), PRF_CLIENT | PRF_ERASEBKGND);
    ::RestoreDC(inside, saved);
    HWND top = children ? ::GetWindow(window, GW_CHILD) : nullptr;
    for (HWND child = top != nullptr ? ::GetWindow(top, GW_HWNDLAST) : nullptr; child != nullptr;
         child = ::GetWindow(child, GW_HWNDPREV)) {
        if ((::GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) == 0)
            continue;
        CRect childBounds;
        ::GetWindowRect(child, &childBounds);
        PrintWindowTree(child, inside, {childBounds.left - clientOrigin.x, childBounds.top - clientOrigin.y}, scratch,
                        depth + 1, true);
    }
    ::BitBlt(target, clientPosition.x, clientPosition.y, client.Width(), client.Height(), inside, 0, 0, SRCCOPY);
}

// A control's rectangle in its parent's client area.
CRect RectInParent(HWND control)
{
    CRect rect;
    ::GetWindowRect(control, &rect);
    ::MapWindowPoints(nullptr, ::GetParent(control), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

// Each control's frame and identifier, for checking a layout.
void DrawOutlines(const PreviewWindow& window, HDC dc)
{
    CBrush frame;
    frame.CreateSolidBrush(RGB(255, 0, 160));
    LOGFONTW small = {};
    small.lfHeight = -9;
    lstrcpynW(small.lfFaceName, L"Tahoma", LF_FACESIZE);
    CFont font;
    font.CreateFontIndirect(&small);
    HGDIOBJ oldFont = ::SelectObject(dc, font);
    ::SetBkColor(dc, RGB(255, 0, 160));
    ::SetTextColor(dc, RGB(255, 255, 255));
    ::SetBkMode(dc, OPAQUE);
    const DialogModel& model = window.Model();
    for (size_t i = 0; i < model.controls.size(); ++i) {
        const CRect rect = RectInParent(window.ControlWindow(i));
        ::FrameRect(dc, &rect, frame);
        const MCUIDataControl& record = *model.controls[i].record;
        CString label = record.strIDS;
        if (label.IsEmpty())
            label.Format(L"%lu", record.dwIDV);
        ::TextOutW(dc, rect.left + 1, rect.top + 1, label, label.GetLength());
    }
    ::SelectObject(dc, oldFont);
}

// Writes the surface's picture as a 24-bit PNG file.
HRESULT WritePng(MCDC& surface, const wchar_t* path)
{
    const int width = surface.GetWidth();
    const int height = surface.GetHeight();
    const UINT stride = static_cast<UINT>((width * 3 + 3) & ~3);
    std::vector<BYTE> pixels(static_cast<size_t>(stride) * static_cast<size_t>(height));
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down rows, as the encoder takes them
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    if (::GetDIBits(surface.GetSafeHdc(), surface.GetBitmap(), 0, static_cast<UINT>(height), pixels.data(), &info,
                    DIB_RGB_COLORS) != height)
        return E_FAIL;

    CComPtr<IWICImagingFactory> factory;
    CComPtr<IWICStream> stream;
    CComPtr<IWICBitmapEncoder> encoder;
    CComPtr<IWICBitmapFrameEncode> frame;
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    HRESULT hr = ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory));
    if (SUCCEEDED(hr))
        hr = factory->CreateStream(&stream);
    if (SUCCEEDED(hr))
        hr = stream->InitializeFromFilename(path, GENERIC_WRITE);
    if (SUCCEEDED(hr))
        hr = factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder);
    if (SUCCEEDED(hr))
        hr = encoder->Initialize(stream, WICBitmapEncoderNoCache);
    if (SUCCEEDED(hr))
        hr = encoder->CreateNewFrame(&frame, nullptr);
    if (SUCCEEDED(hr))
        hr = frame->Initialize(nullptr);
    if (SUCCEEDED(hr))
        hr = frame->SetSize(static_cast<UINT>(width), static_cast<UINT>(height));
    if (SUCCEEDED(hr))
        hr = frame->SetPixelFormat(&format);
    if (SUCCEEDED(hr) && format != GUID_WICPixelFormat24bppBGR)
        hr = WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT;
    if (SUCCEEDED(hr))
        hr = frame->WritePixels(static_cast<UINT>(height), stride, static_cast<UINT>(pixels.size()), pixels.data());
    if (SUCCEEDED(hr))
        hr = frame->Commit();
    if (SUCCEEDED(hr))
        hr = encoder->Commit();
    return hr;
}

}  // namespace

bool RenderPng(const PreviewWindow& window, const wchar_t* path, bool outline, CString& error)
{
    CRect client;
    ::GetClientRect(window.Handle(), &client);
    MCDC surface(client.Width(), client.Height());
    if (surface.GetBitmap() == nullptr) {
        error.Format(L"no surface of %d x %d pixels can be made", client.Width(), client.Height());
        return false;
    }
    // Only the client area, as the program draws the dialog (without this system's
    // frame); the controls in document order, a later one over an earlier one, each
    // as the window shows it, whether shown yet or not.
    ::SendMessageW(window.Handle(), WM_PRINT, reinterpret_cast<WPARAM>(surface.GetSafeHdc()), PRF_ERASEBKGND);
    Scratch scratch(surface.GetSafeHdc(), client.Size());
    for (size_t i = 0; i < window.Model().controls.size(); ++i) {
        HWND control = window.ControlWindow(i);
        if (window.IsShown(i))
            PrintWindowTree(control, surface.GetSafeHdc(), RectInParent(control).TopLeft(), scratch, 0,
                            window.MayHaveChildren(i));
    }
    if (outline)
        DrawOutlines(window, surface.GetSafeHdc());
    const HRESULT hr = WritePng(surface, path);
    if (FAILED(hr)) {
        error.Format(L"cannot write %s (0x%08lX)", path, static_cast<unsigned long>(hr));
        return false;
    }
    return true;
}

}  // namespace preview
