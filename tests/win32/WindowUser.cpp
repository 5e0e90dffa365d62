#include "WindowUser.h"

#include <QSet>

#include <iterator>

namespace testing {
namespace {

RECT ClientArea(HWND window)
{
    RECT area = {};
    GetClientRect(window, &area);
    return area;
}

QImage FromDisplay(const POINT &corner, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    BITMAPINFO format = {};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = width;
    format.bmiHeader.biHeight = -height; // the first line first
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    const HDC display = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(display);
    const HBITMAP bitmap = CreateCompatibleBitmap(display, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, display, corner.x, corner.y, SRCCOPY);
    SelectObject(memory, before);
    GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), image.bits(), &format, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, display);
    return image;
}

INPUT KeyInput(WORD key, DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    return input;
}

INPUT MouseInput(DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return input;
}

} // namespace

bool Covers(HWND child, HWND parent)
{
    RECT place = {};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT *>(&place), 2);
    const RECT whole = ClientArea(parent);
    return EqualRect(&place, &whole) != 0;
}

bool IsInside(HWND window, HWND ancestor)
{
    return window == ancestor || IsChild(ancestor, window);
}

QImage Shown(HWND window)
{
    const RECT area = ClientArea(window);
    POINT corner = {};
    ClientToScreen(window, &corner);
    return FromDisplay(corner, area.right, area.bottom);
}

int ColorsOf(const QImage &image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors << (image.pixel(x, y) & RGB_MASK);
    }
    return colors.size();
}

void PressKey(WORD key, WORD modifier)
{
    INPUT inputs[4];
    UINT count = 0;
    if (modifier)
        inputs[count++] = KeyInput(modifier, 0);
    inputs[count++] = KeyInput(key, 0);
    inputs[count++] = KeyInput(key, KEYEVENTF_KEYUP);
    if (modifier)
        inputs[count++] = KeyInput(modifier, KEYEVENTF_KEYUP);
    SendInput(count, inputs, sizeof inputs[0]);
}

void Click(HWND window, int x, int y)
{
    POINT place = { x, y };
    ClientToScreen(window, &place);
    SetCursorPos(place.x, place.y);
    INPUT inputs[] = { MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP) };
    SendInput(static_cast<UINT>(std::size(inputs)), inputs, sizeof inputs[0]);
}

} // namespace testing
