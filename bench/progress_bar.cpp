// The progress bar beside a loop by hand, and beside the system's.
#include "families.h"
#include "harness.h"

#include <zogbl/progress_bar.h>

#include <afxcmn.h>

namespace {

constexpr Limits kPositionLimits = {0, 1.2};
constexpr Limits kDrawingLimits = {0, 1.5};
constexpr LONGLONG kPositions = 1000000;
constexpr unsigned kRoundsPerLoop = 5; // a loop takes long, and there are fewer of them
constexpr int kWidth = 400;            // without the edges

void DrawAll(CWnd& window) { window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }

/// What a caller would write: stores the number and asks whether the pixel has changed. If so, the pixel is drawn.
class BareBar {
public:
    explicit BareBar(CWnd& window) : m_window(window) {}
    void SetPosition(LONGLONG position)
    {
        m_position = position;
        const int pixel = static_cast<int>(m_position * kWidth / kPositions);
        if (pixel == m_pixel)
            return;
        m_window.InvalidateRect(CRect(m_pixel, 0, pixel, 20), FALSE);
        m_pixel = pixel;
    }

private:
    CWnd& m_window;
    LONGLONG m_position = 0;
    int m_pixel = 0;
};

/// \return how long it took
template <class BAR> double SetAll(BAR& bar)
{
    const long long start = Ticks();
    for (LONGLONG position = 0; position <= kPositions; ++position) {
        bar.SetPosition(position);
        Keep(bar);
    }
    return Nanoseconds(Ticks() - start);
}

} // namespace

void MeasureProgressBar(Harness& harness)
{
    const std::string positions = "progress bar: a million positions";
    const std::string drawing = "progress bar: drawn";
    const bool set = harness.Wants(positions);
    const bool drawn = harness.Wants(drawing);
    if (!set && !drawn)
        return;
    CWnd parent, plain;
    CZoProgressBar bar;
    CProgressCtrl system;
    const CRect place(0, 0, kWidth + 2, 22);
    Require(parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 500, 100, nullptr, nullptr) &&
                plain.CreateEx(WS_EX_STATICEDGE, AfxRegisterWndClass(0), "", WS_CHILD | WS_VISIBLE, 0, 25, kWidth + 2,
                               22, parent.m_hWnd, nullptr) &&
                bar.Create(WS_VISIBLE | CZoProgressBar::kSmooth, place, &parent, 1) &&
                system.Create(WS_CHILD | WS_VISIBLE | PBS_SMOOTH, place + CPoint(0, 50), &parent, 2),
            "a bar could not be made");
    if (set) {
        std::vector<Samples> samples = {{"CZoProgressBar::SetPosition", {}}, {"stored, and asked for the pixel", {}}};
        for (unsigned round = 0; round < harness.GetRounds() / kRoundsPerLoop; ++round) {
            BareBar bare(plain);
            bar.SetRange(0, kPositions);
            if (round % 2 == 0)
                samples[0].nanoseconds.push_back(SetAll(bar));
            samples[1].nanoseconds.push_back(SetAll(bare));
            if (round % 2 != 0)
                samples[0].nanoseconds.push_back(SetAll(bar));
            Require(bar.GetPercent() == 100, "the bar is not full");
        }
        harness.Add(positions, samples, Unit::milliseconds, kPositionLimits);
    }
    if (drawn) {
        bar.SetRange(0, 100);
        bar.SetPosition(50);
        system.SetPos(50);
        harness.Compare(
            drawing,
            {{"CZoProgressBar", [&] { DrawAll(bar); }}, {"the system's progress bar", [&] { DrawAll(system); }}},
            kDrawingLimits);
    }
    parent.DestroyWindow();
}
