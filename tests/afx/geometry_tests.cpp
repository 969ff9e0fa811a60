#include "support/test.h"

namespace {

const CRect kOther(20, 10, 50, 40);
const CPoint kPoint(3, -4);
const CSize kSize(3, -4);
const CRect kEdges(1, 2, 3, 4);

CRect As(const CRect& rect) { return rect; }
CRect As(CPoint point) { return CRect(point.x, point.y, 0, 0); }
CRect As(CSize size) { return CRect(0, 0, size.cx, size.cy); }
CRect As(bool answer) { return CRect(answer, 0, 0, 0); }
CRect As(BOOL answer) { return CRect(answer, 0, 0, 0); }

/// What a call answers as a rectangle: a point stands at its left and top, a size at its right and bottom.
#define CALL(call) #call, []([[maybe_unused]] CRect & r) { return As(call); }

} // namespace

TEST(Geometry, CalculatesWhatIsSaidOfIt)
{
    static const struct {
        const char* name;
        CRect (*call)(CRect& r); // of 10, 20, 30, 60
        CRect result;
    } rows[] = {
        {CALL(CRect(kPoint, CSize(5, 6))), {3, -4, 8, 2}},
        {CALL(CRect(CPoint(5, 6), CPoint(7, 8))), {5, 6, 7, 8}},
        {CALL(CRect(static_cast<LPCRECT>(r))), {10, 20, 30, 60}},
        {CALL(CPoint(r.Width(), r.Height())), {20, 40, 0, 0}},
        {CALL(r.Size()), {0, 0, 20, 40}},
        {CALL(r.CenterPoint()), {20, 40, 0, 0}},
        {CALL((r.TopLeft() += kSize, r.BottomRight() = kPoint, r)), {13, 16, 3, -4}},
        {CALL((r = CRect(5, 8, 1, 2), r.NormalizeRect(), r)), {1, 2, 5, 8}},
        {CALL((r.SetRect(1, 2, 3, 4), r)), kEdges},
        {CALL((r.SetRect(kPoint, CPoint(5, 6)), r)), {3, -4, 5, 6}},
        {CALL((r.CopyRect(kEdges), r)), kEdges},
        {CALL((r.SetRectEmpty(), r)), {}},
        {CALL((r.OffsetRect(kPoint), r.OffsetRect(kSize), r.OffsetRect(1, 2), r)), {17, 14, 37, 54}},
        {CALL((r.MoveToX(1), r.MoveToY(2), r)), {1, 2, 21, 42}},
        {CALL((r.MoveToXY(1, 2), r.MoveToXY(kPoint), r)), {3, -4, 23, 36}},
        {CALL((r.InflateRect(1, 2), r)), {9, 18, 31, 62}},
        {CALL((r.InflateRect(kSize), r)), {7, 24, 33, 56}},
        {CALL((r.InflateRect(kEdges), r.InflateRect(1, 2, 3, 4), r)), {8, 16, 36, 68}},
        {CALL((r.DeflateRect(1, 2), r)), {11, 22, 29, 58}},
        {CALL((r.DeflateRect(kSize), r)), {13, 16, 27, 64}},
        {CALL((r.DeflateRect(kEdges), r.DeflateRect(1, 2, 3, 4), r)), {12, 24, 24, 52}},
        {CALL((r.IntersectRect(r, kOther), r)), {20, 20, 30, 40}},
        {CALL(r.IntersectRect(r, kEdges)), {}},
        {CALL((r.UnionRect(r, kOther), r)), {10, 10, 50, 60}},
        {CALL((r.SubtractRect(r, CRect(0, 0, 40, 30)), r)), {10, 30, 30, 60}},
        {CALL((r.SubtractRect(r, kOther), r)), {10, 20, 30, 60}}, // a corner alone
        {CALL(r.SubtractRect(r, CRect(0, 0, 99, 99))), {}},
        {CALL(r & kOther), {20, 20, 30, 40}},
        {CALL(r | kOther), {10, 10, 50, 60}},
        {CALL(r &= kOther), {20, 20, 30, 40}},
        {CALL(r |= kOther), {10, 10, 50, 60}},
        {CALL(r + kPoint + kSize), {16, 12, 36, 52}},
        {CALL(r - kPoint - kSize), {4, 28, 24, 68}},
        {CALL(r + kEdges), {9, 18, 33, 64}},
        {CALL(r - kEdges), {11, 22, 27, 56}},
        {CALL((r += kPoint, r -= kSize, r += kEdges, r)), {9, 18, 33, 64}},
        {CALL((r -= kPoint, r += kSize, r -= kEdges, r)), {11, 22, 27, 56}},
        {CALL(kPoint + r), {13, 16, 33, 56}},
        {CALL(kSize - r), {7, 24, 27, 64}},
        {CALL(r.MulDiv(3, 8)), {4, 8, 11, 23}}, // rounded
        {CALL(r == CRect(10, 20, 30, 60) && !(r == CRect(10, 20, 30, 61)) && r.EqualRect(CRect(r))), {1, 0, 0, 0}},
        {CALL(r != kOther && !(r != CRect(r)) && kPoint != CPoint(3, 4) && kSize != CSize(4, -4) &&
              kSize != CSize(3, 4)),
         {1, 0, 0, 0}},
        {CALL(kPoint == POINT({3, -4}) && kSize == SIZE({3, -4}) && !(kPoint == CPoint(2, -4))), {1, 0, 0, 0}},
        {CALL(r.PtInRect(CPoint(10, 59)) && !r.PtInRect(CPoint(30, 20)) && !r.PtInRect(CPoint(10, 60))), {1, 0, 0, 0}},
        {CALL(CRect().IsRectNull() && CRect(1, 1, 1, 9).IsRectEmpty() && !CRect(1, 1, 1, 9).IsRectNull()),
         {1, 0, 0, 0}},
        {CALL(r.IsRectEmpty()), {}},
        {CALL(CPoint(MAKELPARAM(-5, 7)) - kSize), {-8, 11, 0, 0}},
        {CALL(CSize(static_cast<DWORD>(MAKELONG(5, -7))) - kSize), {0, 0, 2, -3}},
        {CALL(kPoint + kSize + kPoint), {9, -12, 0, 0}},
        {CALL(CPoint(1, 1) - kPoint), {0, 0, -2, 5}},
        {CALL(-kPoint - kSize), {-6, 8, 0, 0}},
        {CALL(-kSize + kSize + kSize), {0, 0, 3, -4}},
        {CALL(kSize + kPoint), {6, -8, 0, 0}},
        {CALL(kSize - CPoint(1, 1)), {2, -5, 0, 0}},
        {CALL((r.TopLeft() = kPoint, r.TopLeft().Offset(1, 2), r.TopLeft().Offset(kSize), r.TopLeft() -= kPoint, r)),
         {4, -2, 30, 60}},
    };
    for (const auto& row : rows) {
        CRect rect(10, 20, 30, 60);
        const CRect result = row.call(rect);
        EXPECT_TRUE(EqualRect(&row.result, &result))
            << row.name << ": " << result.left << ", " << result.top << ", " << result.right << ", " << result.bottom;
    }
}
