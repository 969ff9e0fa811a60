// Dialogs that can be made larger.
#include "dialog_faults.h"

#include "support/product_test.h"

namespace {

constexpr int kBox = 11;
constexpr int kList = 12;

struct SizableDialog : CZoDialog {
    SizableDialog() : CZoDialog(4002) {}
    BOOL OnInitDialog() override
    {
        CZoDialog::OnInitDialog();
        static constexpr ZoFollowing kFollowing[] = {{kBox, ZoFollowing::kWiden},
                                                     {kList, ZoFollowing::kWiden | ZoFollowing::kHeighten},
                                                     {IDOK, ZoFollowing::kMoveRight},
                                                     {IDCANCEL, ZoFollowing::kMoveRight | ZoFollowing::kMoveDown}};
        return m_isMade = MakeSizable(kFollowing, std::size(kFollowing), "Sizable");
    }

    BOOL m_isMade = FALSE;
};

class Sizable : public ProductTest {
protected:
    /// Opens the dialog, and makes it larger by so much if that is not null.
    static void Show(const DialogDriver::Act& act, CSize larger = {})
    {
        SizableDialog dialog;
        const DialogDriver driver({[&](HWND window) {
            if (act)
                act(window);
            CRect area = AreaOf(window);
            MoveWindow(window, area.left, area.top, area.Width() + larger.cx, area.Height() + larger.cy, TRUE);
            Command(window, IDCANCEL);
        }});
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
    }
    static CSize SizeNow()
    {
        CSize size;
        Show([&](HWND window) { size = AreaOf(window).Size(); });
        return size;
    }
    CString KeyOfSizes() const { return m_product.UserKey() + "\\Windows"; }
};

} // namespace

TEST_F(Sizable, ControlsFollowTheEdges)
{
    Show([](HWND window) {
        const int controls[] = {kBox, kList, IDOK, IDCANCEL};
        const CRect more[] = {{0, 0, 37, 0}, {0, 0, 37, 21}, {37, 0, 37, 0}, {37, 21, 37, 21}};
        CRect before[std::size(controls)];
        for (size_t i = 0; i < std::size(controls); ++i)
            before[i] = AreaOf(window, controls[i]);
        CRect list;
        SendDlgItemMessageA(window, kBox, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&list));
        const CRect area = AreaOf(window);
        for (const int times : {1, -1, 0}) { // not below the least size
            MoveWindow(window, area.left, area.top, area.Width() + 37 * times, area.Height() + 21 * times, TRUE);
            for (size_t i = 0; i < std::size(controls); ++i) {
                CRect expected = before[i];
                if (times > 0)
                    expected = CRect(expected.left + more[i].left, expected.top + more[i].top,
                                     expected.right + more[i].right, expected.bottom + more[i].bottom);
                EXPECT_EQ(expected, AreaOf(window, controls[i])) << controls[i] << ' ' << times;
            }
            CRect after;
            SendDlgItemMessageA(window, kBox, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&after));
            EXPECT_EQ(list.Height(), after.Height()) << "the list of a combo box keeps its height";
            if (times < 0) {
                EXPECT_EQ(area, AreaOf(window));
            }
        }
    });
}

TEST_F(Sizable, OpensInItsLastSize)
{
    const CSize least = SizeNow();
    Show(nullptr, {90, 50});
    const CSize larger = SizeNow();
    EXPECT_NEAR(least.cx + 90, larger.cx, 1);
    EXPECT_NEAR(least.cy + 50, larger.cy, 1);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(larger, SizeNow()) << "it does not creep";
    Show(nullptr, {5000, 5000});
    const CSize most = SizeNow();
    EXPECT_TRUE(most.cx <= GetSystemMetrics(SM_CXSCREEN) && most.cy <= GetSystemMetrics(SM_CYSCREEN));
    for (const LPCSTR damaged : {"", "ZoWindow1 1 1", "ZoWindow1 99999 99999 3"}) {
        EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, KeyOfSizes(), "Sizable", damaged));
        EXPECT_EQ(least, SizeNow()) << damaged;
    }
}

TEST_F(Sizable, SurvivesFaults)
{
    RunDialogFaults([](HWND window) { Command(window, IDCANCEL); },
                    [](const FaultRun& run) {
                        SizableDialog dialog;
                        const INT_PTR result = dialog.DoModal();
                        run.Stop();
                        EXPECT_TRUE(result == IDCANCEL ? dialog.m_isMade || run.Fired() : run.Fired()) << result;
                    });
}
