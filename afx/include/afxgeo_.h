/// \file
/// Application framework: points, sizes and rectangles. Included by afxgdi_.h.
///
/// They are the system's structures with operators, so that each can be given where the system wants its own. A
/// rectangle contains its left and top edge, not its right and bottom one. What joins, cuts or tests rectangles wants
/// them normalised: left not behind right, top not below bottom.
#pragma once

#include <afx.h>

class CPoint;
class CRect;

class CSize : public SIZE {
public:
    CSize() : CSize(0, 0) {}
    CSize(int initCX, int initCY)
    {
        cx = initCX;
        cy = initCY;
    }
    CSize(SIZE initSize) : CSize(initSize.cx, initSize.cy) {}
    CSize(POINT initPt) : CSize(initPt.x, initPt.y) {}
    /// \param dwSize the width in its low word, the height in its high one, with signs
    CSize(DWORD dwSize) : CSize(static_cast<short>(LOWORD(dwSize)), static_cast<short>(HIWORD(dwSize))) {}

    void SetSize(int CX, int CY) { *this = CSize(CX, CY); }

    friend bool operator==(const SIZE& size1, const SIZE& size2)
    {
        return size1.cx == size2.cx && size1.cy == size2.cy;
    }
    CSize& operator+=(SIZE size) { return *this = *this + size; }
    CSize& operator-=(SIZE size) { return *this = *this - size; }
    CSize operator+(SIZE size) const { return {static_cast<int>(cx + size.cx), static_cast<int>(cy + size.cy)}; }
    CSize operator-(SIZE size) const { return *this + -CSize(size); }
    CSize operator-() const { return {static_cast<int>(-cx), static_cast<int>(-cy)}; }
    CPoint operator+(POINT point) const;
    CPoint operator-(POINT point) const;
    CRect operator+(LPCRECT lpRect) const; ///< the rectangle moved by this size
    CRect operator-(LPCRECT lpRect) const; ///< the rectangle moved back by it
};

class CPoint : public POINT {
public:
    CPoint() : CPoint(0, 0) {}
    CPoint(int initX, int initY)
    {
        x = initX;
        y = initY;
    }
    CPoint(POINT initPt) : CPoint(initPt.x, initPt.y) {}
    CPoint(SIZE initSize) : CPoint(initSize.cx, initSize.cy) {}
    /// \param dwPoint what a message tells: x in its low word, y in its high one, with signs
    CPoint(LPARAM dwPoint) : CPoint(static_cast<short>(LOWORD(dwPoint)), static_cast<short>(HIWORD(dwPoint))) {}

    void SetPoint(int X, int Y) { *this = CPoint(X, Y); }
    void Offset(int xOffset, int yOffset) { *this += CSize(xOffset, yOffset); }
    void Offset(POINT point) { *this += point; }
    void Offset(SIZE size) { *this += size; }

    friend bool operator==(const POINT& point1, const POINT& point2)
    {
        return point1.x == point2.x && point1.y == point2.y;
    }
    CPoint& operator+=(SIZE size) { return *this = *this + size; }
    CPoint& operator+=(POINT point) { return *this = *this + point; }
    CPoint& operator-=(SIZE size) { return *this = *this - size; }
    CPoint& operator-=(POINT point) { return *this -= CSize(point); }
    CPoint operator+(SIZE size) const { return CSize(*this) + size; }
    CPoint operator+(POINT point) const { return *this + CSize(point); }
    CPoint operator-(SIZE size) const { return CSize(*this) - size; }
    CSize operator-(POINT point) const { return CSize(*this) - CSize(point); }
    CPoint operator-() const { return -CSize(*this); }
    CRect operator+(LPCRECT lpRect) const; ///< the rectangle moved by this point
    CRect operator-(LPCRECT lpRect) const; ///< the rectangle moved back by it
};

inline CPoint CSize::operator+(POINT point) const { return *this + CSize(point); }
inline CPoint CSize::operator-(POINT point) const { return *this - CSize(point); }

class CRect : public RECT {
public:
    CRect() : CRect(0, 0, 0, 0) {}
    CRect(int l, int t, int r, int b)
    {
        left = l;
        top = t;
        right = r;
        bottom = b;
    }
    CRect(const RECT& srcRect) : CRect(srcRect.left, srcRect.top, srcRect.right, srcRect.bottom) {}
    CRect(LPCRECT lpSrcRect) : CRect(*lpSrcRect) {}
    CRect(POINT point, SIZE size) : CRect(point.x, point.y, point.x + size.cx, point.y + size.cy) {}
    CRect(POINT topLeft, POINT bottomRight) : CRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y) {}

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return {Width(), Height()}; }
    CPoint& TopLeft() { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() { return *reinterpret_cast<CPoint*>(&right); }
    CPoint TopLeft() const { return {static_cast<int>(left), static_cast<int>(top)}; }
    CPoint BottomRight() const { return {static_cast<int>(right), static_cast<int>(bottom)}; }
    CPoint CenterPoint() const { return {static_cast<int>((left + right) / 2), static_cast<int>((top + bottom) / 2)}; }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }

    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); } ///< whether width or height is 0 or less
    BOOL IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    BOOL PtInRect(POINT point) const { return ::PtInRect(this, point); }
    BOOL EqualRect(LPCRECT lpRect) const { return ::EqualRect(this, lpRect); }
    friend bool operator==(const RECT& rect1, const RECT& rect2) { return ::EqualRect(&rect1, &rect2) != FALSE; }

    void SetRect(int x1, int y1, int x2, int y2) { *this = CRect(x1, y1, x2, y2); }
    void SetRect(POINT topLeft, POINT bottomRight) { *this = CRect(topLeft, bottomRight); }
    void SetRectEmpty() { *this = CRect(); }
    void CopyRect(LPCRECT lpSrcRect) { *this = *lpSrcRect; }
    /// Exchanges left and right, top and bottom, if they are in the wrong order.
    void NormalizeRect()
    {
        *this = CRect(left < right ? left : right, top < bottom ? top : bottom, left < right ? right : left,
                      top < bottom ? bottom : top);
    }

    void OffsetRect(int x, int y) { ::OffsetRect(this, x, y); }
    void OffsetRect(POINT point) { OffsetRect(point.x, point.y); }
    void OffsetRect(SIZE size) { OffsetRect(size.cx, size.cy); }
    void MoveToX(int x) { OffsetRect(x - left, 0); }
    void MoveToY(int y) { OffsetRect(0, y - top); }
    void MoveToXY(int x, int y) { OffsetRect(x - left, y - top); }
    void MoveToXY(POINT point) { MoveToXY(point.x, point.y); }

    /// Moves the edges outwards, opposite ones as far; DeflateRect moves them inwards.
    void InflateRect(int x, int y) { InflateRect(x, y, x, y); }
    void InflateRect(SIZE size) { InflateRect(size.cx, size.cy); }
    void InflateRect(LPCRECT lpRect) { InflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    void InflateRect(int l, int t, int r, int b) { *this = CRect(left - l, top - t, right + r, bottom + b); }
    void DeflateRect(int x, int y) { InflateRect(-x, -y); }
    void DeflateRect(SIZE size) { InflateRect(-size.cx, -size.cy); }
    void DeflateRect(LPCRECT lpRect) { DeflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }

    /// This rectangle becomes what the two have in common. \return FALSE if that is nothing: then it is empty
    BOOL IntersectRect(LPCRECT lpRect1, LPCRECT lpRect2) { return ::IntersectRect(this, lpRect1, lpRect2); }
    /// The smallest rectangle that holds both; an empty one counts for nothing. \return FALSE if that is empty
    BOOL UnionRect(LPCRECT lpRect1, LPCRECT lpRect2) { return ::UnionRect(this, lpRect1, lpRect2); }
    /// The first without the second, which must cover it in its whole width or its whole height: else nothing is taken
    /// away. \return FALSE if nothing is left
    BOOL SubtractRect(LPCRECT lpRectSrc1, LPCRECT lpRectSrc2) { return ::SubtractRect(this, lpRectSrc1, lpRectSrc2); }

    /// Moved by a point or a size; or with the edges moved by those of a rectangle: outwards by +, inwards by -.
    CRect& operator+=(POINT point) { return OffsetRect(point), *this; }
    CRect& operator+=(SIZE size) { return OffsetRect(size), *this; }
    CRect& operator+=(LPCRECT lpRect) { return InflateRect(lpRect), *this; }
    CRect& operator-=(POINT point) { return OffsetRect(-CPoint(point)), *this; }
    CRect& operator-=(SIZE size) { return OffsetRect(-CSize(size)), *this; }
    CRect& operator-=(LPCRECT lpRect) { return DeflateRect(lpRect), *this; }
    CRect operator+(POINT point) const { return CRect(*this) += point; }
    CRect operator+(SIZE size) const { return CRect(*this) += size; }
    CRect operator+(LPCRECT lpRect) const { return CRect(*this) += lpRect; }
    CRect operator-(POINT point) const { return CRect(*this) -= point; }
    CRect operator-(SIZE size) const { return CRect(*this) -= size; }
    CRect operator-(LPCRECT lpRect) const { return CRect(*this) -= lpRect; }
    /// What the two have in common; the smallest rectangle that holds both.
    CRect& operator&=(const RECT& rect) { return IntersectRect(this, &rect), *this; }
    CRect& operator|=(const RECT& rect) { return UnionRect(this, &rect), *this; }
    CRect operator&(const RECT& rect2) const { return CRect(*this) &= rect2; }
    CRect operator|(const RECT& rect2) const { return CRect(*this) |= rect2; }

    /// All edges multiplied and divided, rounded to the nearest number.
    CRect MulDiv(int nMultiplier, int nDivisor) const
    {
        return {::MulDiv(left, nMultiplier, nDivisor), ::MulDiv(top, nMultiplier, nDivisor),
                ::MulDiv(right, nMultiplier, nDivisor), ::MulDiv(bottom, nMultiplier, nDivisor)};
    }
};

inline CRect CSize::operator+(LPCRECT lpRect) const { return CRect(lpRect) + *this; }
inline CRect CSize::operator-(LPCRECT lpRect) const { return CRect(lpRect) - *this; }
inline CRect CPoint::operator+(LPCRECT lpRect) const { return CRect(lpRect) + *this; }
inline CRect CPoint::operator-(LPCRECT lpRect) const { return CRect(lpRect) - *this; }
