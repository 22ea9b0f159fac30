#include "ozWin32Screenshot.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/ozTestFiles.h"

void ozWin32Screenshot(HWND window, const char* name)
{
    const char* folder = std::getenv("OZ_SCREENSHOT_DIR");
    if (folder == nullptr)
        return;
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT area;
    GetWindowRect(window, &area);
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
    if (FILE* out = std::fopen((ozPlatformPath(folder) + "/" + name + ".bmp").c_str(), "wb")) {
        std::fwrite(&file, sizeof file, 1, out);
        std::fwrite(&info, sizeof info, 1, out);
        std::fwrite(pixels.data(), 1, pixels.size(), out);
        std::fclose(out);
    }
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}
