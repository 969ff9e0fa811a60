// The boxes for locales beside the system's own sorted boxes.
#include "families.h"
#include "harness.h"
#include "product.h"

#include <zogbl/flag_lcid_box.h>

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <random>
#include <vector>

namespace {

constexpr int kItems = 10000;
constexpr unsigned kRoundsPerFill = 5; // a fill takes long, and there are fewer of them
constexpr Limits kFillLimits = {0, 1.10};
constexpr DWORD kCommonStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL;
const CRect kPlace(0, 0, 250, 300);

/// Entries in random order: every locale that the system knows, in every way to name it, again and again.
class Entries {
public:
    Entries()
    {
        CZoFlagLcidList known(1);
        Require(known.GetKnownCount() >= 100, "the flag table is not complete");
        std::vector<int> order(kItems * 2); // some are of locales without a name
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), std::mt19937(1));
        const int codes = known.GetKnownCount();
        for (size_t i = 0; i < order.size() && m_list.GetCount() < kItems; ++i)
            m_list.AddNewItem(known.GetKnownCode(order[i] % codes), static_cast<DWORD>(order[i] / codes % 6));
        Require(m_list.GetCount() == kItems, "entries are missing");
    }

    CZoFlagLcidList& GetList() { return m_list; }
    const CZoFlagLcid* At(int i) const { return m_list.GetAt(i); }

private:
    CZoFlagLcidList m_list;
};

/// What the two kinds of box call the same things.
template <class BOX> struct Kind;
template <> struct Kind<CComboBox> {
    using Picker = CFlagLcidComboBox;
    static constexpr LPCSTR kClass = "COMBOBOX";
    static constexpr UINT kSetData = CB_SETITEMDATA;
    static constexpr DWORD kStyle = kCommonStyle | CBS_DROPDOWNLIST, kSort = CBS_SORT, kDrawn = CBS_OWNERDRAWFIXED;
    static void Fill(CZoFlagLcidList& list, CComboBox& box) { list.AddToComboBox(&box); }
};
template <> struct Kind<CListBox> {
    using Picker = CFlagLcidListBox;
    static constexpr LPCSTR kClass = "LISTBOX";
    static constexpr UINT kSetData = LB_SETITEMDATA;
    static constexpr DWORD kStyle = kCommonStyle, kSort = LBS_SORT, kDrawn = LBS_OWNERDRAWFIXED;
    static void Fill(CZoFlagLcidList& list, CListBox& box) { list.AddToListBox(&box); }
};

template <class BOX> void AddTexts(BOX& box, const std::vector<const CZoFlagLcid*>& entries)
{
    box.SendMessage(WM_SETREDRAW, FALSE);
    box.ResetContent();
    for (const CZoFlagLcid* entry : entries) {
        const int place = box.AddString(entry->GetName());
        box.SendMessage(Kind<BOX>::kSetData, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(entry));
    }
    box.SendMessage(WM_SETREDRAW, TRUE);
}

template <class BOX> void MeasureFills(Harness& harness, Entries& entries, CWnd& parent, const std::string& box)
{
    using Kind = Kind<BOX>;
    std::vector<const CZoFlagLcid*> shuffled;
    shuffled.reserve(kItems);
    for (int i = 0; i < kItems; ++i)
        shuffled.push_back(entries.At(i));

    typename Kind::Picker withTexts;
    typename Kind::Picker withoutTexts;
    BOX unsorted;
    BOX sorted;
    const auto make = [&](DWORD style) {
        return CreateWindowExA(0, Kind::kClass, "", Kind::kStyle | style, 0, 0, kPlace.Width(), kPlace.Height(),
                               parent.m_hWnd, nullptr, nullptr, nullptr);
    };
    Require(withTexts.Create(Kind::kStyle, kPlace, &parent, 1) &&
                withoutTexts.SubclassWindow(make(Kind::kSort | Kind::kDrawn)) && unsorted.SubclassWindow(make(0)) &&
                sorted.SubclassWindow(make(Kind::kSort)),
            "a box could not be made");

    struct Way {
        const char* name;
        BOX* box;
        std::function<void()> fill;
    };
    const std::array<Way, 4> ways{{
        {"AddToComboBox or AddToListBox, picker", &withTexts, [&] { Kind::Fill(entries.GetList(), withTexts); }},
        {"std::sort, box that does not sort", &unsorted,
         [&] {
             std::vector<const CZoFlagLcid*> ordered = shuffled;
             std::sort(ordered.begin(), ordered.end(), [](const CZoFlagLcid* first, const CZoFlagLcid* second) {
                 return lstrcmpiA(first->GetName(), second->GetName()) < 0;
             });
             AddTexts(unsorted, ordered);
         }},
        {"box that sorts texts itself", &sorted, [&] { AddTexts(sorted, shuffled); }},
        {"the same, picker without texts", &withoutTexts, [&] { Kind::Fill(entries.GetList(), withoutTexts); }},
    }};
    std::vector<Samples> samples;
    const auto run = [&](const Way& way) {
        const long long start = Ticks();
        way.fill();
        const double time = Nanoseconds(Ticks() - start);
        Require(way.box->GetCount() == kItems, "a box is not full");
        const auto* first = static_cast<const CZoFlagLcid*>(way.box->GetItemDataPtr(0));
        for (int i = 1; i < kItems; ++i) {
            const auto* next = static_cast<const CZoFlagLcid*>(way.box->GetItemDataPtr(i));
            Require(lstrcmpiA(first->GetName(), next->GetName()) <= 0, "a box is not sorted");
            first = next;
        }
        return time;
    };
    for (const Way& way : ways) {
        run(way);
        samples.push_back({way.name, {}});
    }
    for (unsigned round = 0; round < harness.GetRounds() / kRoundsPerFill; ++round) {
        for (size_t turn = 0; turn < ways.size(); ++turn) {
            const size_t i = round % 2 == 0 ? turn : ways.size() - 1 - turn;
            samples[i].nanoseconds.push_back(run(ways[i]));
        }
    }
    harness.Add("pickers: " + box + " filled", samples, Unit::milliseconds, kFillLimits);
}

} // namespace

void MeasurePickers(Harness& harness)
{
    const bool combo = harness.Wants("pickers: combo box filled");
    const bool list = harness.Wants("pickers: list box filled");
    if (!combo && !list)
        return;
    const RegisteredProduct product;
    const LoadedLanguage language;
    Entries entries;
    CWnd parent;
    Require(parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 400, nullptr, nullptr),
            "the window could not be made");
    if (combo)
        MeasureFills<CComboBox>(harness, entries, parent, "combo box");
    if (list)
        MeasureFills<CListBox>(harness, entries, parent, "list box");
    parent.DestroyWindow();
}
