// A status bar of the library beside the system's.
#include "families.h"
#include "harness.h"

#include <zogbl/gdi_data.h>
#include <zogbl/text_panel.h>

#include <afxcmn.h>

namespace {

constexpr Limits kLimits = {0, 1.5};
const CRect kPlace(0, 0, 500, 24);

void DrawAll(CWnd& window) { window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }

} // namespace

void MeasureTextPanel(Harness& harness)
{
    const bool drawn = harness.Wants("text panel: drawn");
    const bool changes = harness.Wants("text panel: one text changes");
    if (!drawn && !changes)
        return;
    CZoGlobalGDIData::InitializeFontsFromResources();
    CWnd parent;
    CZoTextPanel panel;
    CStatusBarCtrl system;
    Require(
        parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 500, 60, nullptr, nullptr) &&
            panel.Create(WS_VISIBLE, kPlace, &parent, 1) &&
            system.Create(WS_CHILD | WS_VISIBLE | CCS_NOPARENTALIGN | CCS_NORESIZE, kPlace + CPoint(0, 30), &parent, 2),
        "a bar could not be made");
    ZoPane panes[3];
    panes[1] = {ZoPane::Width::kFixed, 100};
    panes[2] = {ZoPane::Width::kFixed, 100};
    int edges[3] = {296, 398, 500};
    Require(panel.SetPanes(panes, 3) && system.SetParts(3, edges), "the panes could not be made");
    system.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(CZoGlobalGDIData::GetThinFont()));
    const char* const texts[] = {"Ready", "12 of 100", "12:30"};
    for (int i = 0; i < 3; ++i)
        Require(panel.SetPaneText(i + 1, texts[i]) && system.SetText(texts[i], i, 0), "a text could not be set");

    if (drawn)
        harness.Compare(
            "text panel: drawn",
            {{"CZoTextPanel", [&] { DrawAll(panel); }}, {"the system's status bar", [&] { DrawAll(system); }}},
            kLimits);
    bool isOther = false;
    const auto next = [&] { return (isOther = !isOther) ? "13 of 100" : "12 of 100"; };
    if (changes)
        harness.Compare("text panel: one text changes",
                        {{"CZoTextPanel",
                          [&] {
                              panel.SetPaneText(2, next());
                              panel.UpdateWindow();
                          }},
                         {"the system's status bar",
                          [&] {
                              system.SetText(next(), 1, 0);
                              system.UpdateWindow();
                          }}},
                        kLimits);
    parent.DestroyWindow();
}
