// afxlite: CPoint, CSize and CRect, thin value classes over the platform's records.
#pragma once
#include "afxlite_config.h"

class CSize;
class CRect;

class CPoint : public tagPOINT {
public:
    CPoint() noexcept { x = 0; y = 0; }
    CPoint(int initX, int initY) noexcept { x = initX; y = initY; }
    CPoint(POINT initPt) noexcept { x = initPt.x; y = initPt.y; }
    explicit CPoint(DWORD dwPoint) noexcept { x = (short)LOWORD(dwPoint); y = (short)HIWORD(dwPoint); }
    void Offset(int xOffset, int yOffset) noexcept { x += xOffset; y += yOffset; }
    void Offset(POINT point) noexcept { x += point.x; y += point.y; }
    void SetPoint(int X, int Y) noexcept { x = X; y = Y; }
    bool operator==(POINT point) const noexcept { return x == point.x && y == point.y; }
    bool operator!=(POINT point) const noexcept { return !(*this == point); }
    CPoint operator+(POINT point) const noexcept { return CPoint(x + point.x, y + point.y); }
    CPoint operator-(POINT point) const noexcept { return CPoint(x - point.x, y - point.y); }
    CPoint operator-() const noexcept { return CPoint(-x, -y); }
    CPoint& operator+=(POINT point) noexcept { Offset(point); return *this; }
    CPoint& operator-=(POINT point) noexcept { x -= point.x; y -= point.y; return *this; }
};

class CSize : public tagSIZE {
public:
    CSize() noexcept { cx = 0; cy = 0; }
    CSize(int initCX, int initCY) noexcept { cx = initCX; cy = initCY; }
    CSize(SIZE initSize) noexcept { cx = initSize.cx; cy = initSize.cy; }
    explicit CSize(DWORD dwSize) noexcept { cx = (short)LOWORD(dwSize); cy = (short)HIWORD(dwSize); }
    void SetSize(int CX, int CY) noexcept { cx = CX; cy = CY; }
    bool operator==(SIZE size) const noexcept { return cx == size.cx && cy == size.cy; }
    bool operator!=(SIZE size) const noexcept { return !(*this == size); }
    CSize operator+(SIZE size) const noexcept { return CSize(cx + size.cx, cy + size.cy); }
    CSize operator-(SIZE size) const noexcept { return CSize(cx - size.cx, cy - size.cy); }
};

class CRect : public tagRECT {
public:
    CRect() noexcept { left = top = right = bottom = 0; }
    CRect(int l, int t, int r, int b) noexcept { left = l; top = t; right = r; bottom = b; }
    CRect(const RECT& srcRect) noexcept { CopyRect(srcRect); }
    CRect(const RECT* lpSrcRect) noexcept { CopyRect(*lpSrcRect); }
    CRect(POINT point, SIZE size) noexcept
    {
        left = point.x; top = point.y; right = point.x + size.cx; bottom = point.y + size.cy;
    }
    CRect(POINT topLeft, POINT bottomRight) noexcept
    {
        left = topLeft.x; top = topLeft.y; right = bottomRight.x; bottom = bottomRight.y;
    }

    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return CSize(right - left, bottom - top); }
    CPoint& TopLeft() noexcept { return *reinterpret_cast<CPoint*>(this); }
    CPoint& BottomRight() noexcept { return *(reinterpret_cast<CPoint*>(this) + 1); }
    const CPoint& TopLeft() const noexcept { return *reinterpret_cast<const CPoint*>(this); }
    const CPoint& BottomRight() const noexcept { return *(reinterpret_cast<const CPoint*>(this) + 1); }
    CPoint CenterPoint() const noexcept { return CPoint((left + right) / 2, (top + bottom) / 2); }

    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }

    BOOL IsRectEmpty() const noexcept { return ::IsRectEmpty(this); }
    BOOL IsRectNull() const noexcept { return left == 0 && right == 0 && top == 0 && bottom == 0; }
    BOOL PtInRect(POINT point) const noexcept { return ::PtInRect(this, point); }
    void SetRect(int x1, int y1, int x2, int y2) noexcept { left = x1; top = y1; right = x2; bottom = y2; }
    void SetRectEmpty() noexcept { left = top = right = bottom = 0; }
    void CopyRect(const RECT& src) noexcept { left = src.left; top = src.top; right = src.right; bottom = src.bottom; }
    BOOL EqualRect(const RECT& rect) const noexcept { return ::EqualRect(this, &rect); }
    void InflateRect(int x, int y) noexcept { left -= x; top -= y; right += x; bottom += y; }
    void DeflateRect(int x, int y) noexcept { InflateRect(-x, -y); }
    void OffsetRect(int x, int y) noexcept { left += x; right += x; top += y; bottom += y; }
    void OffsetRect(POINT point) noexcept { OffsetRect(point.x, point.y); }
    void NormalizeRect() noexcept
    {
        if (left > right) { int t = left; left = right; right = t; }
        if (top > bottom) { int t = top; top = bottom; bottom = t; }
    }
    BOOL IntersectRect(const RECT* r1, const RECT* r2) noexcept { return ::IntersectRect(this, r1, r2); }
    BOOL UnionRect(const RECT* r1, const RECT* r2) noexcept { return ::UnionRect(this, r1, r2); }

    CRect& operator=(const RECT& srcRect) noexcept { CopyRect(srcRect); return *this; }
    bool operator==(const RECT& rect) const noexcept
    {
        return left == rect.left && top == rect.top && right == rect.right && bottom == rect.bottom;
    }
    bool operator!=(const RECT& rect) const noexcept { return !(*this == rect); }
};
