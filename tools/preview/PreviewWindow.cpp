// The preview window: each described control becomes the standard control of its
// type (or a labelled box for the types only a skin can draw), and the window lays
// them out by their anchors and size limits whenever its size changes.
#include "DialogPreview.h"
#include <MNUIFormat.h>
#include <commctrl.h>
#include <richedit.h>
#include <cstring>

namespace preview {
namespace {

const wchar_t kWindowClass[] = L"TesvorPreviewWindow";
const wchar_t kBoxClass[] = L"TesvorPreviewBox";
// The fonts kept realized, at most: a surface each, which a description of many
// fonts must not spend all of the process's drawing objects on.
const size_t kHeldFonts = 256;
// Room for the largest window the preview builds, frame included.
const int kMaxTrack = kMaxSide + 256;

// How a described control type is built: a standard window class with its styles,
// or (class null) a labelled box. `parent`: the class may make child windows of its
// own (a list view's header, a tab's arrows), which a picture then prints too.
struct ControlKind {
    MEControlType type;
    const wchar_t* windowClass;
    DWORD style;
    DWORD exStyle;
    bool parent;
};

const ControlKind kKinds[] = {
    {MEControlTypeButton, L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP, 0, false},
    {MEControlTypeEdit, L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, false},
    {MEControlTypeListBox, L"LISTBOX", LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, false},
    {MEControlTypeListView, WC_LISTVIEWW, LVS_LIST | WS_TABSTOP, WS_EX_CLIENTEDGE, true},
    {MEControlTypeCheckBox, L"BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP, 0, false},
    {MEControlTypeRadioButton, L"BUTTON", BS_AUTORADIOBUTTON | WS_TABSTOP, 0, false},
    {MEControlTypeSlider, TRACKBAR_CLASSW, TBS_AUTOTICKS | WS_TABSTOP, 0, false},
    // The described height is the dropped list's, exactly: no rounding to whole items.
    // The list is a pop-up window, not a child.
    {MEControlTypeComboBox, L"COMBOBOX", CBS_DROPDOWNLIST | CBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP, 0, false},
    {MEControlTypeComboBoxEx, WC_COMBOBOXEXW, CBS_DROPDOWNLIST | WS_TABSTOP, 0, true},
    {MEControlTypeGroupBox, L"BUTTON", BS_GROUPBOX, 0, false},
    {MEControlTypeStatic, L"STATIC", SS_LEFT, 0, false},
    {MEControlTypeStdTab, WC_TABCONTROLW, WS_TABSTOP, 0, true},
    {MEControlTypeRichEdit, RICHEDIT_CLASSW, ES_MULTILINE | WS_TABSTOP, WS_EX_CLIENTEDGE, true},
    {MEControlTypeLinkControl, WC_LINK, WS_TABSTOP, 0, false},
    {MEControlTypeProgressBar, PROGRESS_CLASSW, 0, 0, false},
    {MEControlTypeDayTimeControl, DATETIMEPICK_CLASSW, WS_TABSTOP, 0, true},
    {MEControlTypeImageButton, L"BUTTON", BS_PUSHBUTTON | BS_BITMAP | WS_TABSTOP, 0, false},
};

const ControlKind* KindOf(MEControlType type)
{
    for (const ControlKind& kind : kKinds) {
        if (kind.type == type)
            return &kind;
    }
    return nullptr;
}

// An edge moves by its anchor's percentage of the size change.
int MovedEdge(int edge, LONG anchor, int change) { return edge + ::MulDiv(change, anchor, 100); }

int Clamp(int value, long minimum, long maximum)
{
    if (maximum > 0 && value > maximum)
        value = maximum;
    if (minimum > 0 && value < minimum)
        value = minimum;
    return value;
}

// The labelled box of a skin-only control: its frame and its text (or identifier),
// painted alike on the screen and into a picture.
void PaintBox(HWND box, HDC dc)
{
    RECT rect;
    ::GetClientRect(box, &rect);
    // Made without throwing: this runs inside a window procedure.
    CBrush fill, frame;
    if (fill.CreateSolidBrush(RGB(226, 232, 240)))
        ::FillRect(dc, &rect, fill);
    if (frame.CreateSolidBrush(RGB(112, 128, 144)))
        ::FrameRect(dc, &rect, frame);

    wchar_t label[256] = L"";
    ::GetWindowTextW(box, label, 256);
    HGDIOBJ oldFont = ::SelectObject(dc, reinterpret_cast<HFONT>(::GetWindowLongPtrW(box, 0)));
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, RGB(48, 64, 80));
    ::InflateRect(&rect, -2, -2);
    ::DrawTextW(dc, label, -1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    ::SelectObject(dc, oldFont);
}

LRESULT CALLBACK BoxProc(HWND box, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        HDC dc = ::BeginPaint(box, &paint);
        PaintBox(box, dc);
        ::EndPaint(box, &paint);
        return 0;
    }
    case WM_PRINTCLIENT:
        PaintBox(box, reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_SETFONT:
        ::SetWindowLongPtrW(box, 0, static_cast<LONG_PTR>(wParam));
        return 0;
    case WM_GETFONT:
        return ::GetWindowLongPtrW(box, 0);
    }
    return ::DefWindowProcW(box, message, wParam, lParam);
}

// Window classes and common controls, once per process.
bool RegisterClasses()
{
    static const bool registered = [] {
        INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_LINK_CLASS |
                                                               ICC_USEREX_CLASSES | ICC_STANDARD_CLASSES};
        ::InitCommonControlsEx(&controls);
        ::LoadLibraryW(L"riched20.dll");  // registers the rich edit class; kept for the process

        WNDCLASSEXW windowClass = {};
        windowClass.cbSize = sizeof(windowClass);
        windowClass.lpfnWndProc = BoxProc;
        windowClass.cbWndExtra = sizeof(HFONT);
        windowClass.hInstance = ::GetModuleHandleW(nullptr);
        windowClass.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
        windowClass.lpszClassName = kBoxClass;
        if (!::RegisterClassExW(&windowClass))
            return false;
        windowClass.lpfnWndProc = PreviewWindow::WindowProc;
        windowClass.cbWndExtra = 0;
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        windowClass.lpszClassName = kWindowClass;
        return ::RegisterClassExW(&windowClass) != 0;
    }();
    return registered;
}

// What a control shows beyond its caption: the caption as a list's item or a
// tab's label, a fixed date so that pictures compare, a half-filled bar.
void FillContent(HWND window, MEControlType type, const CString& text)
{
    LPARAM item = reinterpret_cast<LPARAM>(static_cast<const wchar_t*>(text));
    switch (type) {
    case MEControlTypeListBox:
        if (!text.IsEmpty())
            ::SendMessageW(window, LB_ADDSTRING, 0, item);
        break;
    case MEControlTypeComboBox:
        if (!text.IsEmpty()) {
            ::SendMessageW(window, CB_ADDSTRING, 0, item);
            ::SendMessageW(window, CB_SETCURSEL, 0, 0);
        }
        break;
    case MEControlTypeListView:
        if (!text.IsEmpty()) {
            LVITEMW row = {};
            row.mask = LVIF_TEXT;
            row.pszText = const_cast<wchar_t*>(static_cast<const wchar_t*>(text));
            ::SendMessageW(window, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row));
        }
        break;
    case MEControlTypeStdTab: {
        TCITEMW tab = {};
        tab.mask = TCIF_TEXT;
        tab.pszText = const_cast<wchar_t*>(text.IsEmpty() ? L" " : static_cast<const wchar_t*>(text));
        ::SendMessageW(window, TCM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&tab));
        break;
    }
    case MEControlTypeDayTimeControl: {
        SYSTEMTIME date = {2000, 1, 6, 1, 12, 0, 0, 0};
        ::SendMessageW(window, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&date));
        break;
    }
    case MEControlTypeProgressBar:
        ::SendMessageW(window, PBM_SETPOS, 50, 0);
        break;
    default:
        break;
    }
}

}  // namespace

CString TypeName(MEControlType type)
{
    const MDUIKeywordTable& types = MNUIFormat::GetKeywordTable(UIKeywordsControlType);
    for (int i = 0; i < types.count; ++i) {
        if (types.keywords[i].value == type)
            return types.keywords[i].text;
    }
    return CString();
}

CSize ClampToLimits(CSize size, const MCUIDataControl& limits)
{
    return CSize(Clamp(size.cx, limits.nCxMin, limits.nCxMax), Clamp(size.cy, limits.nCyMin, limits.nCyMax));
}

CRect LayoutRect(const MCUIDataControl& control, CSize natural, CSize size)
{
    const CRect& rc = control.rcRect;
    const CRect& anchors = control.rcAnchors;
    const int dx = size.cx - natural.cx;
    const int dy = size.cy - natural.cy;
    const CRect moved(MovedEdge(rc.left, anchors.left, dx), MovedEdge(rc.top, anchors.top, dy),
                      MovedEdge(rc.right, anchors.right, dx), MovedEdge(rc.bottom, anchors.bottom, dy));
    const CSize limited = ClampToLimits(moved.Size(), control);
    return CRect(moved.left, moved.top, moved.left + limited.cx, moved.top + limited.cy);
}

PreviewWindow::PreviewWindow() = default;

PreviewWindow::~PreviewWindow() = default;

bool PreviewWindow::Create(const DialogModel& model, CString& error)
{
    const CSize natural = model.NaturalSize();
    if (!CheckSize(natural, error))
        return false;
    if (!RegisterClasses()) {
        error = L"the preview's window classes cannot be registered";
        return false;
    }
    m_model = &model;
    m_window.reset(::CreateWindowExW(0, kWindowClass, model.frame.text, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                     CW_USEDEFAULT, CW_USEDEFAULT, 0, 0, nullptr, nullptr,
                                     ::GetModuleHandleW(nullptr), this));
    if (!m_window) {
        error = L"the preview window cannot be created";
        return false;
    }
    // Sized before the controls exist, so that they are placed once.
    const CSize size = Resize(natural);
    m_controls.reserve(model.controls.size());
    for (const PreviewControl& control : model.controls) {
        HWND child = CreateControl(control, LayoutRect(*control.record, natural, size));
        if (child == nullptr) {
            error.Format(L"%s: the control cannot be created", static_cast<const wchar_t*>(control.record->strIDS));
            return false;
        }
        m_controls.push_back(child);
    }
    return true;
}

HWND PreviewWindow::CreateControl(const PreviewControl& control, CRect rect)
{
    const MCUIDataControl& record = *control.record;
    const ControlKind* kind = KindOf(record.eType);
    HBITMAP picture = record.eType == MEControlTypeImageButton ? m_model->PictureOf(control) : nullptr;
    if (record.eType == MEControlTypeImageButton && picture == nullptr)
        kind = nullptr;

    // Hidden until the window is shown (see Show), so that building draws nothing.
    DWORD style = WS_CHILD | (kind != nullptr ? kind->style : 0);
    if (!record.bEnabled || record.eState == MEControlStateDisabled)
        style |= WS_DISABLED;
    if (record.eType == MEControlTypeSlider && rect.Height() > rect.Width())
        style |= TBS_VERT;
    if (record.eType == MEControlTypeStatic) {
        const int flags = control.font.textStyle.eFlags;
        style |= (flags & 3) == 1 ? SS_CENTER : (flags & 3) == 2 ? SS_RIGHT : 0;
        style |= (flags & 12) == 4 ? SS_CENTERIMAGE : 0;
    }
    CString caption = control.text;
    if (kind == nullptr && caption.IsEmpty())
        caption = TypeName(record.eType) + L" " + record.strIDS;
    else if (record.eType == MEControlTypeLinkControl)
        caption = L"<a>" + caption + L"</a>";

    HWND child = ::CreateWindowExW(kind != nullptr ? kind->exStyle : 0, kind != nullptr ? kind->windowClass : kBoxClass,
                                   caption.IsEmpty() ? nullptr : static_cast<const wchar_t*>(caption), style,
                                   rect.left, rect.top, rect.Width(), rect.Height(), Handle(),
                                   reinterpret_cast<HMENU>(static_cast<UINT_PTR>(record.dwIDV)),
                                   ::GetModuleHandleW(nullptr), nullptr);
    if (child == nullptr && kind != nullptr) {
        // A class this system lacks still shows where the control is.
        child = ::CreateWindowExW(0, kBoxClass, caption, style & ~kind->style, rect.left, rect.top, rect.Width(),
                                  rect.Height(), Handle(), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(record.dwIDV)),
                                  ::GetModuleHandleW(nullptr), nullptr);
        kind = nullptr;
    }
    if (child == nullptr)
        return nullptr;
    ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(FontFor(control)), FALSE);
    if (kind == nullptr)
        return child;
    if (picture != nullptr)
        ::SendMessageW(child, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture));
    if (record.eState == MEControlStatePressed &&
        (record.eType == MEControlTypeCheckBox || record.eType == MEControlTypeRadioButton))
        ::SendMessageW(child, BM_SETCHECK, BST_CHECKED, 0);
    FillContent(child, record.eType, control.text);
    return child;
}

HFONT PreviewWindow::FontFor(const PreviewControl& control)
{
    if (!control.hasFont)
        return m_model->frame.hasFont && &control != &m_model->frame ? FontFor(m_model->frame)
                                                                      : static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    const LOGFONTW& logFont = control.font.logFont;
    for (const auto& font : m_fonts) {
        if (std::memcmp(&font->logFont, &logFont, sizeof(LOGFONTW)) == 0)
            return static_cast<HFONT>(font->font.GetSafeHandle());
    }
    auto font = std::make_unique<HeldFont>();
    font->logFont = logFont;
    if (!font->font.CreateFontIndirect(&logFont))
        return static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    if (m_fonts.size() < kHeldFonts && font->holder.Attach(::CreateCompatibleDC(nullptr)))
        ::SelectObject(font->holder, font->font.GetSafeHandle());
    m_fonts.push_back(std::move(font));
    return static_cast<HFONT>(m_fonts.back()->font.GetSafeHandle());
}

CSize PreviewWindow::Resize(CSize size)
{
    const CSize given = ClampToLimits(size, *m_model->frame.record);
    CRect frame(0, 0, given.cx, given.cy);
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongPtrW(Handle(), GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongPtrW(Handle(), GWL_EXSTYLE)));
    ::SetWindowPos(Handle(), nullptr, 0, 0, frame.Width(), frame.Height(),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CRect client;
    ::GetClientRect(Handle(), &client);
    return client.Size();
}

void PreviewWindow::Layout(CSize size)
{
    const CSize natural = m_model->NaturalSize();
    MCDeferPos batch(static_cast<int>(m_controls.size()));
    for (size_t i = 0; i < m_controls.size(); ++i) {
        const CRect rect = LayoutRect(*m_model->controls[i].record, natural, size);
        batch.MoveWindow(m_controls[i], rect.left, rect.top, rect.Width(), rect.Height(), TRUE);
    }
}

void PreviewWindow::AddToolTips()
{
    HWND tips = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, Handle(), nullptr,
                                  ::GetModuleHandleW(nullptr), nullptr);
    if (tips == nullptr)
        return;
    for (size_t i = 0; i < m_controls.size(); ++i) {
        const CString& text = m_model->controls[i].toolTip;
        if (text.IsEmpty())
            continue;
        TOOLINFOW tool = {};
        tool.cbSize = sizeof(tool);
        tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        tool.hwnd = Handle();
        tool.uId = reinterpret_cast<UINT_PTR>(m_controls[i]);
        tool.lpszText = const_cast<wchar_t*>(static_cast<const wchar_t*>(text));
        ::SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

bool PreviewWindow::IsShown(size_t index) const { return m_model->controls[index].record->bVisible; }

bool PreviewWindow::MayHaveChildren(size_t index) const
{
    const ControlKind* kind = KindOf(m_model->controls[index].record->eType);
    return kind != nullptr && kind->parent;
}

void PreviewWindow::Show()
{
    for (size_t i = 0; i < m_controls.size(); ++i) {
        if (IsShown(i))
            ::ShowWindow(m_controls[i], SW_SHOWNA);
    }
    ::ShowWindow(Handle(), SW_SHOW);
}

int PreviewWindow::RunUntilClosed()
{
    AddToolTips();
    Show();
    m_running = true;
    MSG message;
    int result;
    while ((result = ::GetMessageW(&message, nullptr, 0, 0)) > 0) {
        if (!::IsDialogMessageW(Handle(), &message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
    m_running = false;
    if (!::IsWindow(Handle()))
        m_window.release();  // destroyed by the close
    return result == 0 ? static_cast<int>(message.wParam) : 1;
}

LRESULT CALLBACK PreviewWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<PreviewWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
    case WM_GETMINMAXINFO: {
        // The window's own limits in window size; no screen-sized cap, so that a
        // picture can be larger than the display.
        auto* info = reinterpret_cast<MINMAXINFO*>(lParam);
        info->ptMaxTrackSize = {kMaxTrack, kMaxTrack};
        if (self != nullptr && self->m_model != nullptr) {
            const MCUIDataControl& limits = *self->m_model->frame.record;
            CRect frame(0, 0, 0, 0);
            ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                                 static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_EXSTYLE)));
            if (limits.nCxMin > 0)
                info->ptMinTrackSize.x = limits.nCxMin + frame.Width();
            if (limits.nCyMin > 0)
                info->ptMinTrackSize.y = limits.nCyMin + frame.Height();
            if (limits.nCxMax > 0)
                info->ptMaxTrackSize.x = limits.nCxMax + frame.Width();
            if (limits.nCyMax > 0)
                info->ptMaxTrackSize.y = limits.nCyMax + frame.Height();
        }
        return 0;
    }
    case WM_SIZE:
        if (self != nullptr && !self->m_controls.empty())
            self->Layout(CSize(LOWORD(lParam), HIWORD(lParam)));
        return 0;
    case WM_DESTROY:
        if (self != nullptr && self->m_running)
            ::PostQuitMessage(0);
        return 0;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace preview
