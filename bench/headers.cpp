// The header and the list with columns beside the system's.
#include "families.h"
#include "harness.h"

#include <zogbl/column_list.h>

#include <afxcmn.h>

namespace {

constexpr Limits kDrawLimits = {0, 1.5};
constexpr int kRows = 20;
constexpr int kWidths[] = {150, 100, 80};
constexpr LPCSTR kTitles[] = {"Name", "Size", "Kind"};

/// Rows that all have the same texts.
class Rows : public CZoColumnList {
protected:
    CString GetCellText(const void*, int column) const override { return m_texts[column]; }

private:
    const CString m_texts[3] = {"A file with a name", "12.345", "Text"};
};

void Draw(CWnd& window) { window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); }

} // namespace

void MeasureHeaders(Harness& harness)
{
    CWnd parent;
    Require(parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 820, 420, nullptr, nullptr),
            "the window could not be made");
    CFont font;
    font.CreateStockObject(DEFAULT_GUI_FONT);

    CZoHeaderWnd header;
    CHeaderCtrl system;
    Require(header.Create(WS_VISIBLE, CRect(0, 0, 400, 20), &parent, 1) &&
                system.Create(WS_VISIBLE | HDS_BUTTONS, CRect(0, 30, 400, 50), &parent, 2),
            "a header could not be made");
    Rows list;
    CListCtrl systemList;
    for (CWnd* window : {static_cast<CWnd*>(&header), static_cast<CWnd*>(&system)})
        window->SetFont(&font);
    for (int i = 0; i < 3; ++i) {
        header.InsertColumn(i, {kTitles[i], kWidths[i]});
        HDITEMA item = {};
        item.mask = HDI_TEXT | HDI_WIDTH | HDI_FORMAT;
        item.pszText = const_cast<LPSTR>(kTitles[i]);
        item.cxy = kWidths[i];
        item.fmt = HDF_STRING;
        system.InsertItem(i, &item);
    }
    harness.Compare("headers: header drawn",
                    {{"CZoHeaderWnd", [&] { Draw(header); }}, {"SysHeader32", [&] { Draw(system); }}}, kDrawLimits);

    Require(list.Create(WS_VISIBLE, CRect(0, 60, 400, 400), &parent, 3) &&
                systemList.Create(WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS, CRect(410, 60, 810, 400), &parent, 4),
            "a list could not be made");
    for (CWnd* window : {static_cast<CWnd*>(&list), static_cast<CWnd*>(&systemList)})
        window->SetFont(&font);
    for (int i = 0; i < 3; ++i) {
        list.GetHeader().InsertColumn(i, {kTitles[i], kWidths[i]});
        systemList.InsertColumn(i, kTitles[i], LVCFMT_LEFT, kWidths[i]);
    }
    for (int i = 0; i < kRows; ++i) {
        list.AddRow(&list);
        systemList.InsertItem(i, "A file with a name");
        systemList.SetItemText(i, 1, "12.345");
        systemList.SetItemText(i, 2, "Text");
    }
    harness.Compare("headers: list of 20 rows drawn",
                    {{"CZoColumnList", [&] { Draw(list); }}, {"SysListView32", [&] { Draw(systemList); }}},
                    kDrawLimits);
}
