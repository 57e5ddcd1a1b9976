// The dialog preview: the dialog of a UI description built as a real window of
// standard controls, laid out on resize by the controls' anchors and size limits,
// and drawn into a picture. Everything comes from the reader's records.
#pragma once
#include <TesvorUtil.h>
#include <map>
#include <memory>
#include <vector>

namespace preview {

// One described control (or the window's own part) with what the preview
// resolves for it from the rest of the description.
struct PreviewControl {
    const MCUIDataControl* record = nullptr;  // owned by DialogModel::window
    CString text;                             // the string of "textid", else "text"
    CString toolTip;                          // the string of "tooltipid", else "tooltip"
    bool hasFont = false;                     // false: the window's font, else the system's
    MCUIDataFont font;                        // its own, its control schema's or its font schema's
};

// What the preview shows of a description.
class DialogModel {
public:
    DialogModel() = default;
    ~DialogModel();
    DialogModel(const DialogModel&) = delete;
    DialogModel& operator=(const DialogModel&) = delete;

    // S_OK; S_FALSE when the description has no window; a reader failure as it came
    // (the reader's m_strError tells more). The files of image lists are looked up
    // next to `description`, the description's path.
    HRESULT Read(MCXMLReader& reader, const wchar_t* description = nullptr);

    // The picture an image button draws: the icon its skin object names, from the
    // description's icon lists; null when none resolves (the control is then a placeholder).
    HBITMAP PictureOf(const PreviewControl& control) const;

    CSize NaturalSize() const { return window.rcRect.Size(); }

    MCUIWindowData window;
    PreviewControl frame;                    // the window's own part
    std::vector<PreviewControl> controls;    // document order
    std::vector<CString> warnings;           // what is not shown as described

private:
    void Resolve(const MCUIDataControl& record, PreviewControl& control) const;
    bool ResolveFont(const MCUIDataFont& font, MCUIDataFont& out) const;
    HRESULT ReadPictures(MCXMLReader& reader, const wchar_t* description);

    using FontSchemas = MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&>;
    using ControlSchemas = MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&>;

    MCXMLReader::StringTableByID m_strings;
    FontSchemas m_fontSchemas;
    std::map<int, ControlSchemas> m_controlSchemas;  // by control type
    std::map<const MCUIDataControl*, std::unique_ptr<CBitmap>> m_pictures;  // of image buttons
};

// The description's keyword of a control type ("button"); empty when it has none.
CString TypeName(MEControlType type);

// The largest window side the preview builds, in pixels.
const int kMaxSide = 8192;

// Whether a client size can be built; the reason in `error` when not.
bool CheckSize(CSize size, CString& error);

// Where a control goes when its window's client area changes from `natural` to
// `size`: each edge moves by its anchor's percentage of the change (left and right
// with the width, top and bottom with the height), then the width and height are
// held within the control's size limits (0: no limit), keeping the left and top edge.
CRect LayoutRect(const MCUIDataControl& control, CSize natural, CSize size);

// A size held within a record's limits (nCxMin..nCxMax, nCyMin..nCyMax; 0: none).
CSize ClampToLimits(CSize size, const MCUIDataControl& limits);

// The preview window: a top-level window whose client area is the dialog, one
// child window per described control. Created hidden, and its controls too: a
// picture is printed from the windows as they are, and only Show puts them on the
// screen, so that building and printing cause no drawing there.
class PreviewWindow {
public:
    PreviewWindow();
    ~PreviewWindow();
    PreviewWindow(const PreviewWindow&) = delete;
    PreviewWindow& operator=(const PreviewWindow&) = delete;

    // Builds the window at the dialog's natural size. False with the reason in
    // `error`; the model must outlive the window.
    bool Create(const DialogModel& model, CString& error);
    // Gives the client area `size`, held within the window's own limits, and lays
    // the controls out in one batch. Returns the size given.
    CSize Resize(CSize size);
    // Shows the window with the controls the description shows.
    void Show();
    // Shows the window and runs its messages until it is closed; the exit code of
    // the message loop.
    int RunUntilClosed();

    HWND Handle() const { return m_window.get(); }
    // The child window of model.controls[index].
    HWND ControlWindow(size_t index) const { return m_controls[index]; }
    // Whether model.controls[index] is shown with the window (its record's "visible").
    bool IsShown(size_t index) const;
    // False when that control's class never makes child windows of its own.
    bool MayHaveChildren(size_t index) const;
    const DialogModel& Model() const { return *m_model; }

    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

private:
    struct WindowDeleter {
        void operator()(HWND window) const { ::DestroyWindow(window); }
    };
    HWND CreateControl(const PreviewControl& control, CRect rect);
    HFONT FontFor(const PreviewControl& control);
    void Layout(CSize size);
    void AddToolTips();

    const DialogModel* m_model = nullptr;
    std::unique_ptr<HWND__, WindowDeleter> m_window;
    std::vector<HWND> m_controls;                    // destroyed with the window
    // A font of the controls, kept selected into a surface of its own while the
    // window lives (the first few hundred fonts). Wine drops a font's glyph data as
    // soon as no surface holds it (beyond a small cache), and would load it again
    // for each control that sets, measures or prints it.
    struct HeldFont {
        LOGFONTW logFont;
        CFont font;
        CDC holder;  // released first
    };
    std::vector<std::unique_ptr<HeldFont>> m_fonts;  // one per distinct font
    bool m_running = false;
};

// Draws the window's client area and every visible control into a PNG file
// through the platform's imaging codecs. `outline` frames each control and writes
// its identifier on top. False with the reason in `error`.
bool RenderPng(const PreviewWindow& window, const wchar_t* path, bool outline, CString& error);

}  // namespace preview
