#include "ozWin32Dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>

#include "ozWin32Form.h"
#include "ozWin32Tree.h"

namespace {

// The dialog of this thread that runs on top of the others, if any.
thread_local HWND t_topDialog = nullptr;

}  // namespace

namespace {

constexpr int LabelHeight = 8;
constexpr int LabelGap = 3;

// The width of a label in dialog units: a horizontal dialog unit is a quarter of the font's
// average character, and capitals and wide letters take more.
int LabelWidth(const std::wstring& caption)
{
    int width = 2;
    for (wchar_t character : caption)
        width += (character >= L'A' && character <= L'Z') || character == L'm' || character == L'w'
                     ? 6
                     : 4;
    return width;
}

// Whether a control's label goes above it (a list, a tree, an edit of several lines) rather than
// in front of it.
bool SpansRows(const ozControlSpec& spec)
{
    return spec.kind == ozControlKind::List || spec.kind == ozControlKind::Tree ||
           (spec.style & ozControlMultiLine) != 0;
}

class TemplateWriter {
public:
    void Word(WORD word) { m_words.push_back(word); }
    void Dword(DWORD dword)
    {
        Word(LOWORD(dword));
        Word(HIWORD(dword));
    }
    void Text(const std::wstring& text)
    {
        m_words.insert(m_words.end(), text.begin(), text.end());
        Word(0);
    }
    void Align()
    {
        if (m_words.size() % 2 != 0)
            Word(0);
    }
    void Item(DWORD style, DWORD extendedStyle, int x, int y, int width, int height, int id,
              const wchar_t* windowClass, const std::wstring& text)
    {
        Align();
        Dword(style);
        Dword(extendedStyle);
        for (int number : {x, y, width, height})
            Word(static_cast<WORD>(static_cast<short>(number)));
        Word(static_cast<WORD>(id));
        Text(windowClass);
        Text(text);
        Word(0);  // no creation data
        ++m_items;
    }
    // The item count is the header's fifth word.
    std::vector<DWORD> Finish()
    {
        m_words[4] = static_cast<WORD>(m_items);
        Align();
        std::vector<DWORD> dwords(m_words.size() / 2);
        for (size_t index = 0; index < dwords.size(); ++index)
            dwords[index] = MAKELONG(m_words[2 * index], m_words[2 * index + 1]);
        return dwords;
    }

private:
    std::vector<WORD> m_words;
    int m_items = 0;
};

// What goes with each window of a dialog, in creation order: the control number it labels or
// steps (0: none) and the description of a control (none for a label or an up-down).
struct DialogWindow {
    int companionOf = 0;
    const ozControlSpec* spec = nullptr;
};

std::vector<DialogWindow> DialogWindows(const ozDialogTemplate& layout)
{
    std::vector<DialogWindow> windows;
    for (const ozControlSpec& spec : layout.controls) {
        if (ozControlHasLabel(spec))
            windows.push_back({spec.id, nullptr});
        windows.push_back({0, &spec});
        if (spec.kind == ozControlKind::Number)
            windows.push_back({spec.id, nullptr});
    }
    return windows;
}

class DialogForm final : public ozWin32Form<ozForm> {
public:
    DialogForm(ozDialog& dialog, HINSTANCE resources) : m_dialog(dialog), m_resources(resources) {}
    ozWin32FormControls& Controls() { return m_controls; }
    ozDialog& Dialog() { return m_dialog; }
    // A modeless dialog hides on OK and Cancel rather than ending.
    bool modeless = false;

    // A Tree control's widget, made when first asked for.
    ozTreeWidget* TreeControl(int id) override
    {
        std::unique_ptr<ozWin32Tree>& tree = m_trees[id];
        if (tree == nullptr) {
            HWND window =
                m_controls.Parent() != nullptr ? GetDlgItem(m_controls.Parent(), id) : nullptr;
            const auto& specs = m_dialog.Layout().controls;
            if (window == nullptr ||
                std::none_of(specs.begin(), specs.end(), [id](const ozControlSpec& spec) {
                    return spec.id == id && spec.kind == ozControlKind::Tree;
                }))
                return nullptr;
            tree = std::make_unique<ozWin32Tree>();
            tree->Attach(window, m_resources);
        }
        return tree.get();
    }
    // The notifications of the tree widgets handed out; true when one of them took it.
    bool NotifyTrees(const NMHDR& header, LRESULT& result)
    {
        for (auto& [id, tree] : m_trees)
            if (tree != nullptr && tree->Notify(header, result))
                return true;
        return false;
    }

private:
    ozDialog& m_dialog;
    HINSTANCE m_resources;
    std::map<int, std::unique_ptr<ozWin32Tree>> m_trees;
};

INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        t_topDialog = window;
        auto* form = reinterpret_cast<DialogForm*>(lParam);
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        ozWin32FormControls& controls = form->Controls();
        controls.Parent(window);
        std::vector<DialogWindow> windows = DialogWindows(form->Dialog().Layout());
        size_t index = 0;
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr && index < windows.size();
             child = GetWindow(child, GW_HWNDNEXT), ++index) {
            if (windows[index].companionOf != 0)
                controls.Companion(windows[index].companionOf, child);
            else if (windows[index].spec != nullptr)
                ozWin32PrepareControl(child, *windows[index].spec);
        }
        HWND focus = GetFocus();
        {
            ozWin32FormControls::Quiet quiet(controls);
            form->Dialog().Init(*form);
        }
        // TRUE lets the dialog put the focus on its first tab stop, unless Init chose one.
        return GetFocus() == focus ? TRUE : FALSE;
    }
    auto* form = reinterpret_cast<DialogForm*>(GetWindowLongPtrW(window, DWLP_USER));
    if (form == nullptr)
        return FALSE;
    if (message == WM_COMMAND) {
        const int id = LOWORD(wParam);
        if (id == IDOK && HIWORD(wParam) == BN_CLICKED) {
            form->Controls().ReportTyping(*form, &form->Dialog());
            if (form->Dialog().Accept(*form)) {
                if (form->modeless)
                    ShowWindow(window, SW_HIDE);
                else
                    EndDialog(window, IDOK);
            }
            return TRUE;
        }
        if (id == IDCANCEL) {
            if (form->modeless)
                ShowWindow(window, SW_HIDE);
            else
                EndDialog(window, IDCANCEL);
            return TRUE;
        }
        return form->Controls().Command(wParam, lParam, *form, &form->Dialog()) ? TRUE : FALSE;
    }
    if (message == WM_DRAWITEM)
        return form->Controls().DrawItem(lParam) ? TRUE : FALSE;
    if (message == WM_NOTIFY) {
        LRESULT result = 0;
        // A tree widget takes its tree's notifications but the focus, which the form reports.
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (!(header.code != NM_SETFOCUS && form->NotifyTrees(header, result)) &&
            !form->Controls().Notify(lParam, *form, &form->Dialog(), result))
            return FALSE;
        SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
        return TRUE;
    }
    return FALSE;
}

}  // namespace

std::vector<DWORD> ozWin32DialogTemplate(const ozDialogTemplate& layout)
{
    TemplateWriter writer;
    writer.Dword(DS_MODALFRAME | DS_SETFONT | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    writer.Dword(0);
    writer.Word(0);  // the item count, filled in by Finish
    for (int number : {0, 0, layout.width, layout.height})
        writer.Word(static_cast<WORD>(static_cast<short>(number)));
    writer.Word(0);  // no menu
    writer.Word(0);  // the standard dialog class
    writer.Text(ozWin32Wide(layout.caption));
    writer.Word(8);
    writer.Text(L"MS Shell Dlg");

    // One-line controls placed in one column (the same left edge) share the widest of their
    // labels, so that their fields line up.
    std::map<int, int> columnLabels;
    for (const ozControlSpec& spec : layout.controls)
        if (ozControlHasLabel(spec) && !SpansRows(spec)) {
            int& column = columnLabels[spec.x];
            column = std::max(column, LabelWidth(ozWin32Wide(spec.caption)));
        }
    bool previousRadio = false;
    for (const ozControlSpec& spec : layout.controls) {
        const bool radio = spec.kind == ozControlKind::Radio;
        // A label takes the front of its control's area: the left of a one-line control, the
        // top of a list, a tree or an edit of several lines.
        int x = spec.x, y = spec.y, width = spec.width, height = spec.height;
        if (ozControlHasLabel(spec)) {
            const std::wstring caption = ozWin32Wide(spec.caption);
            const DWORD style = WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX;
            if (SpansRows(spec)) {
                writer.Item(style, 0, x, y, width, LabelHeight, -1, L"Static", caption);
                y += LabelHeight + 1;
                height -= LabelHeight + 1;
            } else {
                const int labelWidth = std::min(width / 2, columnLabels[spec.x]);
                writer.Item(style, 0, x, y + 3, labelWidth, LabelHeight, -1, L"Static", caption);
                x += labelWidth + LabelGap;
                width -= labelWidth + LabelGap;
            }
        }
        ozWin32ControlStyle style = ozWin32StyleOf(spec);
        // A set of radio buttons starts with WS_GROUP, and so does whatever follows it.
        if (!(radio && previousRadio))
            style.style |= WS_GROUP;
        if (radio && !previousRadio)
            style.style |= WS_TABSTOP;
        const bool editor = spec.kind == ozControlKind::Edit || spec.kind == ozControlKind::Number;
        const std::wstring text =
            ozControlHasLabel(spec) || editor ? L"" : ozWin32Wide(spec.caption);
        // A drop-down's height includes its list.
        const bool combo =
            spec.kind == ozControlKind::ComboBox || spec.kind == ozControlKind::DropDown;
        writer.Item(style.style, style.extendedStyle, x, y, width, combo ? height + 80 : height,
                    spec.id, style.windowClass, text);
        if (spec.kind == ozControlKind::Number)
            writer.Item(WS_CHILD | WS_VISIBLE | UDS_AUTOBUDDY | UDS_ALIGNRIGHT | UDS_ARROWKEYS, 0,
                        0, 0, 0, 0, -1, UPDOWN_CLASSW, L"");
        previousRadio = radio;
    }
    return writer.Finish();
}

bool ozWin32RunDialog(ozDialog& dialog, HWND owner, HINSTANCE resources)
{
    std::vector<DWORD> dialogTemplate = ozWin32DialogTemplate(dialog.Layout());
    DialogForm form(dialog, resources);
    // A dialog opened from a dialog is owned by it, so that the one below stays disabled
    // until the one on top ends: its OK must not take away what the top one edits.
    HWND below = t_topDialog;
    INT_PTR result = DialogBoxIndirectParamW(
        resources, reinterpret_cast<const DLGTEMPLATE*>(dialogTemplate.data()),
        below != nullptr ? below : owner, DialogProcedure, reinterpret_cast<LPARAM>(&form));
    t_topDialog = below;
    return result == IDOK;
}

namespace {

// Tab, the arrows, Enter and Escape in a modeless dialog need IsDialogMessage, which the host's
// message loop does not call for it: a message hook of the thread does, while any is open.
thread_local HHOOK t_keyHook = nullptr;
thread_local std::vector<HWND> t_modelessWindows;

LRESULT CALLBACK ModelessKeys(int code, WPARAM wParam, LPARAM lParam)
{
    auto& message = *reinterpret_cast<MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE && message.message >= WM_KEYFIRST &&
        message.message <= WM_KEYLAST)
        for (HWND window : t_modelessWindows)
            if ((message.hwnd == window || IsChild(window, message.hwnd)) &&
                IsDialogMessageW(window, &message)) {
                message.message = WM_NULL;
                break;
            }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void TakeKeys(HWND window, bool take)
{
    auto& windows = t_modelessWindows;
    if (take)
        windows.push_back(window);
    else
        windows.erase(std::remove(windows.begin(), windows.end(), window), windows.end());
    if (windows.empty() && t_keyHook != nullptr) {
        UnhookWindowsHookEx(t_keyHook);
        t_keyHook = nullptr;
    } else if (!windows.empty() && t_keyHook == nullptr) {
        t_keyHook = SetWindowsHookExW(WH_GETMESSAGE, ModelessKeys, nullptr, GetCurrentThreadId());
    }
}

// A modeless dialog window and its form. Building it again (another layout) makes a new window
// in the old one's place; the old form lives on until the next build, because the build may
// come from one of its own commands.
class ModelessDialog final : public ozModelessDialog {
public:
    ModelessDialog(ozDialog& dialog, HWND owner, HINSTANCE resources)
        : m_dialog(dialog), m_owner(owner), m_resources(resources)
    {
    }
    ~ModelessDialog() override
    {
        if (m_window != nullptr) {
            TakeKeys(m_window, false);
            DestroyWindow(m_window);
        }
    }

    // Creates the window from the dialog's layout, at the old window's place if there is one.
    bool Create()
    {
        std::vector<DWORD> dialogTemplate = ozWin32DialogTemplate(m_dialog.Layout());
        auto form = std::make_unique<DialogForm>(m_dialog, m_resources);
        form->modeless = true;
        // Creating it must not make it the owner of the modal dialogs opened later.
        HWND top = t_topDialog;
        HWND window = CreateDialogIndirectParamW(
            m_resources, reinterpret_cast<const DLGTEMPLATE*>(dialogTemplate.data()), m_owner,
            DialogProcedure, reinterpret_cast<LPARAM>(form.get()));
        t_topDialog = top;
        if (window == nullptr)
            return false;
        bool shown = false;
        if (m_window != nullptr) {
            RECT place{};
            GetWindowRect(m_window, &place);
            SetWindowPos(window, nullptr, place.left, place.top, 0, 0,
                         SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            shown = IsWindowVisible(m_window) != FALSE;
            TakeKeys(m_window, false);
            DestroyWindow(m_window);
        }
        TakeKeys(window, true);
        m_retired = std::move(m_form);
        m_form = std::move(form);
        m_window = window;
        if (shown)
            Show(true);
        return true;
    }

    void Show(bool visible) override
    {
        if (m_window != nullptr)
            ShowWindow(m_window, visible ? SW_SHOW : SW_HIDE);
    }
    bool Shown() const override { return m_window != nullptr && IsWindowVisible(m_window); }
    void Rebuild() override { Create(); }
    ozForm& Form() override { return *m_form; }

private:
    ozDialog& m_dialog;
    HWND m_owner;
    HINSTANCE m_resources;
    HWND m_window = nullptr;
    std::unique_ptr<DialogForm> m_form, m_retired;
};

}  // namespace

std::unique_ptr<ozModelessDialog> ozWin32OpenModeless(ozDialog& dialog, HWND owner,
                                                      HINSTANCE resources)
{
    auto modeless = std::make_unique<ModelessDialog>(dialog, owner, resources);
    if (!modeless->Create())
        return nullptr;
    modeless->Show(true);
    return modeless;
}
