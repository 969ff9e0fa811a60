#include "answers.h"

namespace {

const CRect kRect(10, 20, 30, 60);
const CRect kOther(20, 10, 50, 40);
const CPoint kPoint(3, -4);
const CSize kSize(3, -4);
const CRect kEdges(1, 2, 3, 4);

CRect As(const CRect& rect) { return rect; }
CRect As(CPoint point) { return CRect(point.x, point.y, 0, 0); }
CRect As(CSize size) { return CRect(0, 0, size.cx, size.cy); }

/// All as rectangles: a point stands at its left and top, a size at its right and bottom.
template <class... VALUES> std::string Told(VALUES... values) { return Answers(As(values)...); }

/// What the rectangle becomes.
template <class CHANGE> CRect Changed(CHANGE change)
{
    CRect rect = kRect;
    change(rect);
    return rect;
}
#define CHANGED(call) Changed([](CRect& r) { call; })

} // namespace

TEST(Geometry, CalculatesWhatIsSaidOfIt)
{
    const CRect r = kRect;
    EXPECT_EQ("3,-4,8,2 5,6,7,8 10,20,30,60",
              Told(CRect(kPoint, CSize(5, 6)), CRect(CPoint(5, 6), CPoint(7, 8)), CRect(static_cast<LPCRECT>(r))));
    EXPECT_EQ("20,40,0,0 0,0,20,40 20,40,0,0", Told(CPoint(r.Width(), r.Height()), r.Size(), r.CenterPoint()));
    EXPECT_EQ("1,2,5,8", Told(CHANGED((r = CRect(5, 8, 1, 2)).NormalizeRect())));
    EXPECT_EQ("1,2,3,4 3,-4,5,6 1,2,3,4 0,0,0,0",
              Told(CHANGED(r.SetRect(1, 2, 3, 4)), CHANGED(r.SetRect(kPoint, CPoint(5, 6))),
                   CHANGED(r.CopyRect(kEdges)), CHANGED(r.SetRectEmpty())));
    EXPECT_EQ("13,16,33,56 13,16,33,56 11,22,31,62",
              Told(CHANGED(r.OffsetRect(kPoint)), CHANGED(r.OffsetRect(kSize)), CHANGED(r.OffsetRect(1, 2))));
    EXPECT_EQ("1,20,21,60 10,2,30,42", Told(CHANGED(r.MoveToX(1)), CHANGED(r.MoveToY(2))));
    EXPECT_EQ("1,2,21,42 3,-4,23,36", Told(CHANGED(r.MoveToXY(1, 2)), CHANGED(r.MoveToXY(kPoint))));
    EXPECT_EQ("9,18,31,62 7,24,33,56 9,18,33,64 9,18,33,64",
              Told(CHANGED(r.InflateRect(1, 2)), CHANGED(r.InflateRect(kSize)), CHANGED(r.InflateRect(kEdges)),
                   CHANGED(r.InflateRect(1, 2, 3, 4))));
    EXPECT_EQ("11,22,29,58 13,16,27,64 11,22,27,56 11,22,27,56",
              Told(CHANGED(r.DeflateRect(1, 2)), CHANGED(r.DeflateRect(kSize)), CHANGED(r.DeflateRect(kEdges)),
                   CHANGED(r.DeflateRect(1, 2, 3, 4))));
    EXPECT_EQ("20,20,30,40 10,10,50,60 10,30,30,60 10,20,30,60", // a corner alone is not taken away
              Told(CHANGED(r.IntersectRect(r, kOther)), CHANGED(r.UnionRect(r, kOther)),
                   CHANGED(r.SubtractRect(r, CRect(0, 0, 40, 30))), CHANGED(r.SubtractRect(r, kOther))));
    CRect none;
    EXPECT_FALSE(none.IntersectRect(r, kEdges) || none.SubtractRect(r, CRect(0, 0, 99, 99)));
    EXPECT_EQ("20,20,30,40 10,10,50,60", Told(r & kOther, r | kOther));
    EXPECT_EQ("13,16,33,56 13,16,33,56 9,18,33,64", Told(r + kPoint, r + kSize, r + kEdges));
    EXPECT_EQ("7,24,27,64 7,24,27,64 11,22,27,56", Told(r - kPoint, r - kSize, r - kEdges));
    EXPECT_EQ("13,16,33,56 7,24,27,64 4,8,11,23", Told(kPoint + r, kSize - r, r.MulDiv(3, 8))); // rounded
    EXPECT_EQ("13,16,30,60 10,20,3,-4", Told(CHANGED(r.TopLeft() += kSize), CHANGED(r.BottomRight() = kPoint)));
    EXPECT_EQ(
        "11,22,30,60 13,16,30,60 7,24,30,60",
        Told(CHANGED(r.TopLeft().Offset(1, 2)), CHANGED(r.TopLeft().Offset(kSize)), CHANGED(r.TopLeft() -= kPoint)));
    EXPECT_EQ("-8,11,0,0 0,0,2,-3", Told(CPoint(MAKELPARAM(-5, 7)) - kSize, CSize(DWORD{0xFFF90005}) - kSize));
    EXPECT_EQ("6,-8,0,0 6,-8,0,0 0,0,-2,5", Told(kPoint + kSize, kPoint + kPoint, CPoint(1, 1) - kPoint));
    EXPECT_EQ("-6,8,0,0 0,0,0,0 6,-8,0,0 2,-5,0,0",
              Told(-kPoint - kSize, -kSize + kSize, kSize + kPoint, kSize - CPoint(1, 1)));
    EXPECT_TRUE(r == CRect(10, 20, 30, 60) && !(r == CRect(10, 20, 30, 61)) && r.EqualRect(CRect(r)));
    EXPECT_TRUE(kPoint == POINT({3, -4}) && kPoint != CPoint(2, -4) && kPoint != CPoint(3, 4) && r != kOther);
    EXPECT_TRUE(kSize == SIZE({3, -4}) && kSize != CSize(4, -4) && kSize != CSize(3, 4));
    EXPECT_TRUE(r.PtInRect(CPoint(10, 59)) && !r.PtInRect(CPoint(30, 20)) && !r.PtInRect(CPoint(10, 60)));
    EXPECT_TRUE(CRect().IsRectNull() && CRect(1, 1, 1, 9).IsRectEmpty() && !r.IsRectEmpty() && !r.IsRectNull());
    EXPECT_FALSE(CRect(0, 0, 0, 9).IsRectNull());
}
