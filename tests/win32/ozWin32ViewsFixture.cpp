#include "ozWin32ViewsFixture.h"

#include <cstdio>
#include <cstdlib>

void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

std::wstring WindowText(HWND window)
{
    wchar_t text[256] = {};
    GetWindowTextW(window, text, 256);
    return text;
}

void ScreenshotArea(RECT area, const char* name)
{
    const char* folder = std::getenv("OZ_SCREENSHOT_DIR");
    if (folder == nullptr)
        return;
    const int width = area.right - area.left, height = area.bottom - area.top;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory, old);
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    const DWORD rowBytes = ((width * 3 + 3) / 4) * 4;
    std::string pixels(rowBytes * height, '\0');
    GetDIBits(memory, bitmap, 0, height, pixels.data(), reinterpret_cast<BITMAPINFO*>(&info),
              DIB_RGB_COLORS);
    BITMAPFILEHEADER file = {0x4D42, static_cast<DWORD>(sizeof file + sizeof info + pixels.size()),
                             0, 0, sizeof file + sizeof info};
    std::string path = ozPlatformPath(folder) + "/" + name + ".bmp";
    if (FILE* out = std::fopen(path.c_str(), "wb")) {
        std::fwrite(&file, sizeof file, 1, out);
        std::fwrite(&info, sizeof info, 1, out);
        std::fwrite(pixels.data(), 1, pixels.size(), out);
        std::fclose(out);
    }
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}

void Screenshot(HWND window, const char* name)
{
    if (window == nullptr)
        return;
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT area;
    GetWindowRect(window, &area);
    ScreenshotArea(area, name);
}

std::function<bool()> g_user;
int g_ticks = 0;

void CALLBACK UserTimer(HWND, UINT, UINT_PTR timer, DWORD)
{
    // A user who never finds what was expected ends the menus and dialogs, so that the test
    // fails instead of hanging.
    if (++g_ticks > 100) {
        KillTimer(nullptr, timer);
        EndMenu();
        if (HWND dialog = FindWindowW(L"#32770", nullptr))
            EndDialog(dialog, IDCANCEL);
        return;
    }
    if (g_user && g_user())
        g_user = nullptr;
}

HWND MenuWith(const wchar_t* caption, int& position)
{
    for (HWND window = FindWindowExW(nullptr, nullptr, L"#32768", nullptr); window != nullptr;
         window = FindWindowExW(nullptr, window, L"#32768", nullptr)) {
        auto menu = reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
        for (position = 0; IsWindowVisible(window) && position < GetMenuItemCount(menu);
             ++position) {
            wchar_t text[128] = {};
            GetMenuStringW(menu, position, text, 128, MF_BYPOSITION);
            if (lstrcmpW(text, caption) == 0)
                return window;
        }
    }
    return nullptr;
}

bool ChooseFromMenu(const wchar_t* caption)
{
    int target = 0;
    HWND window = MenuWith(caption, target);
    if (window == nullptr)
        return false;
    auto menu = reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
    int downs = 0;
    for (int position = 0; position <= target; ++position) {
        const UINT state = GetMenuState(menu, position, MF_BYPOSITION);
        if ((state & MF_SEPARATOR) == 0)
            downs = (state & MF_HILITE) != 0 ? 0 : downs + 1;
    }
    while (downs-- > 0)
        PostMessageW(window, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(window, WM_KEYDOWN, VK_RETURN, 0);
    return true;
}

std::function<bool()> Steps(std::vector<std::function<bool()>> steps)
{
    return [steps = std::move(steps), next = std::size_t{0}]() mutable {
        next += steps[next]() ? 1 : 0;
        return next == steps.size();
    };
}

std::function<bool()> Menu(const wchar_t* caption)
{
    return [caption] { return ChooseFromMenu(caption); };
}

std::function<bool()> InDialog(const wchar_t* caption, std::function<void(HWND)> action)
{
    return [caption, action] {
        HWND dialog = FindWindowW(nullptr, caption);
        if (dialog == nullptr || !IsWindowVisible(dialog) || !IsWindowEnabled(dialog))
            return false;
        action(dialog);
        return true;
    };
}

void Press(HWND dialog, int id)
{
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

void Type(HWND dialog, int id, const wchar_t* text)
{
    SetWindowTextW(GetDlgItem(dialog, id), text);
}

HWND Win32ViewsTest::host = nullptr;
