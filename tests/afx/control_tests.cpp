// The system's controls: how they are made, what they send, and what owner-drawn ones are asked.
#include "kit.h"

#include <afxcmn.h>

namespace {

constexpr UINT kId = 9;
const CRect kPlace(0, 0, 100, 80);

/// Answers what it is sent by one number, and writes it down.
struct Listener : TopWindow {
    static constexpr LRESULT kAnswer = 0x41;
    bool listens = false;
    std::string sent;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (!listens)
            return CWnd::WindowProc(message, wParam, lParam);
        sent = Answers{message, wParam, lParam};
        return kAnswer;
    }
};

/// A number as an argument: where that is an object, the one with the number for its handle.
template <class PARAMETER> PARAMETER Argument(LONG_PTR number)
{
    if constexpr (std::is_same_v<PARAMETER, CImageList*>)
        return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(number));
    else if constexpr (std::is_convertible_v<PARAMETER, CWnd*>)
        return static_cast<PARAMETER>(CWnd::FromHandle(reinterpret_cast<HWND>(number)));
    else
        return AfxMessageValue<PARAMETER>(number);
}

/// The number that an operation returned.
template <class RESULT> LRESULT NumberOf(RESULT result)
{
    if constexpr (std::is_same_v<RESULT, CImageList*>)
        return reinterpret_cast<LRESULT>(result->m_hImageList);
    else if constexpr (std::is_convertible_v<RESULT, CWnd*>)
        return reinterpret_cast<LRESULT>(result->m_hWnd);
    else
        return AfxMessageValue<LRESULT>(result);
}

constexpr int kInOrder = -1, kTurnedRound = -2;

/// Calls an operation with 1, 2, 3, and expects it to send a message with the first argument and the others; turned
/// round with the second and the first; else with \p first and all arguments. Two for lParam share it.
template <class CONTROL, class RESULT, class... PARAMETERS>
void ExpectSent(Listener& listener, int first, UINT message, RESULT (CONTROL::*operation)(PARAMETERS...))
{
    constexpr int count = sizeof...(PARAMETERS);
    const auto shared = [](int from) { return from < count ? MAKELPARAM(from, from + 1) : from == count ? from : 0; };
    CONTROL control;
    [[maybe_unused]] auto next = [number = LONG_PTR()]() mutable { return ++number; };
    const std::tuple<PARAMETERS...> arguments{Argument<PARAMETERS>(next())...};
    const auto call = [&](auto... values) { return (control.*operation)(values...); };
    control.m_hWnd = listener.m_hWnd;
    listener.listens = true;
    if constexpr (std::is_void_v<RESULT>)
        std::apply(call, arguments);
    else
        EXPECT_EQ(Listener::kAnswer, NumberOf(std::apply(call, arguments))) << message;
    listener.listens = false;
    control.m_hWnd = nullptr;
    const Answers expected = first >= 0              ? Answers{message, first, shared(1)}
                             : first == kTurnedRound ? Answers{message, 2, 1}
                                                     : Answers{message, count > 0, shared(2)};
    EXPECT_EQ(expected, listener.sent);
}

template <class CONTROL, class RESULT, class... PARAMETERS>
void ExpectSent(Listener& listener, int first, UINT message, RESULT (CONTROL::*operation)(PARAMETERS...) const)
{
    ExpectSent(listener, first, message, reinterpret_cast<RESULT (CONTROL::*)(PARAMETERS...)>(operation));
}

/// More messages and operations.
template <class OPERATION, class... REST>
requires(sizeof...(REST) > 0) void ExpectSent(Listener& listener, int first, UINT message, OPERATION operation,
                                              REST... rest)
{
    ExpectSent(listener, first, message, operation);
    ExpectSent(listener, first, rest...);
}

} // namespace

TEST(Controls, SendMessages)
{
    Listener listener;
    ExpectSent(listener, kInOrder, BM_GETSTATE, &CButton::GetState, BM_SETSTATE, &CButton::SetState, BM_GETCHECK,
               &CButton::GetCheck, BM_SETCHECK, &CButton::SetCheck, BM_SETSTYLE, &CButton::SetButtonStyle);
    ExpectSent(listener, kInOrder, EM_GETMODIFY, &CEdit::GetModify, EM_SETMODIFY, &CEdit::SetModify, EM_SETREADONLY,
               &CEdit::SetReadOnly, EM_SETLIMITTEXT, &CEdit::SetLimitText, EM_GETPASSWORDCHAR, &CEdit::GetPasswordChar,
               EM_SETPASSWORDCHAR, &CEdit::SetPasswordChar, EM_GETLINECOUNT, &CEdit::GetLineCount,
               EM_GETFIRSTVISIBLELINE, &CEdit::GetFirstVisibleLine, EM_LINEFROMCHAR, &CEdit::LineFromChar, EM_LINEINDEX,
               &CEdit::LineIndex, EM_LINELENGTH, &CEdit::LineLength, EM_CANUNDO, &CEdit::CanUndo, EM_UNDO, &CEdit::Undo,
               EM_EMPTYUNDOBUFFER, &CEdit::EmptyUndoBuffer, WM_CLEAR, &CEdit::Clear, WM_CUT, &CEdit::Cut, WM_PASTE,
               &CEdit::Paste);
    ExpectSent(listener, kInOrder, LB_GETCOUNT, &CListBox::GetCount, LB_INSERTSTRING, &CListBox::InsertString,
               LB_SETITEMDATA, &CListBox::SetItemData, LB_GETITEMDATA, &CListBox::GetItemDataPtr, LB_SETITEMDATA,
               &CListBox::SetItemDataPtr, LB_FINDSTRING, &CListBox::FindString, LB_FINDSTRINGEXACT,
               &CListBox::FindStringExact, LB_SELECTSTRING, &CListBox::SelectString, LB_GETSEL, &CListBox::GetSel,
               LB_GETSELCOUNT, &CListBox::GetSelCount, LB_GETSELITEMS, &CListBox::GetSelItems, LB_SELITEMRANGE,
               &CListBox::SelItemRange, LB_GETTOPINDEX, &CListBox::GetTopIndex, LB_SETTOPINDEX, &CListBox::SetTopIndex,
               LB_SETITEMHEIGHT, &CListBox::SetItemHeight, LB_GETHORIZONTALEXTENT, &CListBox::GetHorizontalExtent,
               LB_SETHORIZONTALEXTENT, &CListBox::SetHorizontalExtent);
    ExpectSent(listener, kInOrder, CB_INSERTSTRING, &CComboBox::InsertString, CB_SETITEMDATA, &CComboBox::SetItemData,
               CB_GETITEMDATA, &CComboBox::GetItemDataPtr, CB_SETITEMDATA, &CComboBox::SetItemDataPtr, CB_FINDSTRING,
               &CComboBox::FindString, CB_FINDSTRINGEXACT, &CComboBox::FindStringExact, CB_SELECTSTRING,
               &CComboBox::SelectString, CB_GETCURSEL, &CComboBox::GetCurSel, CB_SETCURSEL, &CComboBox::SetCurSel,
               CB_GETEDITSEL, &CComboBox::GetEditSel, CB_LIMITTEXT, &CComboBox::LimitText, WM_CLEAR, &CComboBox::Clear,
               CB_SHOWDROPDOWN, &CComboBox::ShowDropDown, CB_GETDROPPEDSTATE, &CComboBox::GetDroppedState,
               CB_GETDROPPEDWIDTH, &CComboBox::GetDroppedWidth, CB_SETDROPPEDWIDTH, &CComboBox::SetDroppedWidth,
               CB_SETEXTENDEDUI, &CComboBox::SetExtendedUI, CB_GETEXTENDEDUI, &CComboBox::GetExtendedUI,
               CB_SETITEMHEIGHT, &CComboBox::SetItemHeight, CB_GETHORIZONTALEXTENT, &CComboBox::GetHorizontalExtent,
               CB_SETHORIZONTALEXTENT, &CComboBox::SetHorizontalExtent);
    ExpectSent(listener, kInOrder, HDM_GETITEM, &CHeaderCtrl::GetItem, HDM_SETITEM, &CHeaderCtrl::SetItem,
               HDM_DELETEITEM, &CHeaderCtrl::DeleteItem, HDM_GETITEMRECT, &CHeaderCtrl::GetItemRect, HDM_ORDERTOINDEX,
               &CHeaderCtrl::OrderToIndex, HDM_GETIMAGELIST, &CHeaderCtrl::GetImageList, TCM_GETITEMCOUNT,
               &CTabCtrl::GetItemCount, TCM_DELETEITEM, &CTabCtrl::DeleteItem, TCM_DELETEALLITEMS,
               &CTabCtrl::DeleteAllItems, TCM_GETITEMRECT, &CTabCtrl::GetItemRect, TCM_GETCURSEL, &CTabCtrl::GetCurSel,
               TCM_SETCURSEL, &CTabCtrl::SetCurSel, TCM_GETCURFOCUS, &CTabCtrl::GetCurFocus, TCM_SETCURFOCUS,
               &CTabCtrl::SetCurFocus, TCM_GETROWCOUNT, &CTabCtrl::GetRowCount, TCM_GETTOOLTIPS, &CTabCtrl::GetToolTips,
               TCM_SETTOOLTIPS, &CTabCtrl::SetToolTips, UDM_GETPOS, &CSpinButtonCtrl::GetPos, UDM_SETBUDDY,
               &CSpinButtonCtrl::SetBuddy, UDM_GETBUDDY, &CSpinButtonCtrl::GetBuddy, UDM_SETBASE,
               &CSpinButtonCtrl::SetBase, UDM_GETBASE, &CSpinButtonCtrl::GetBase);
    ExpectSent(listener, kInOrder, LVM_DELETECOLUMN, &CListCtrl::DeleteColumn, LVM_SETCOLUMN, &CListCtrl::SetColumn,
               LVM_GETCOLUMNWIDTH, &CListCtrl::GetColumnWidth, LVM_SETCOLUMNWIDTH, &CListCtrl::SetColumnWidth,
               LVM_GETHEADER, &CListCtrl::GetHeaderCtrl, LVM_DELETEITEM, &CListCtrl::DeleteItem, LVM_DELETEALLITEMS,
               &CListCtrl::DeleteAllItems, LVM_GETITEMCOUNT, &CListCtrl::GetItemCount, LVM_GETNEXTITEM,
               &CListCtrl::GetNextItem, LVM_GETSELECTEDCOUNT, &CListCtrl::GetSelectedCount, LVM_GETTOPINDEX,
               &CListCtrl::GetTopIndex, LVM_ENSUREVISIBLE, &CListCtrl::EnsureVisible, LVM_EDITLABEL,
               &CListCtrl::EditLabel, LVM_GETEDITCONTROL, &CListCtrl::GetEditControl, LVM_GETIMAGELIST,
               &CListCtrl::GetImageList, LVM_GETEXTENDEDLISTVIEWSTYLE, &CListCtrl::GetExtendedStyle, TVM_GETIMAGELIST,
               &CTreeCtrl::GetImageList);
    ExpectSent(listener, kInOrder, TB_INSERTBUTTON, &CToolBarCtrl::InsertButton, TB_DELETEBUTTON,
               &CToolBarCtrl::DeleteButton, TB_GETBUTTON, &CToolBarCtrl::GetButton, TB_BUTTONCOUNT,
               &CToolBarCtrl::GetButtonCount, TB_COMMANDTOINDEX, &CToolBarCtrl::CommandToIndex, TB_SETCMDID,
               &CToolBarCtrl::SetCmdID, TB_ENABLEBUTTON, &CToolBarCtrl::EnableButton, TB_CHECKBUTTON,
               &CToolBarCtrl::CheckButton, TB_PRESSBUTTON, &CToolBarCtrl::PressButton, TB_HIDEBUTTON,
               &CToolBarCtrl::HideButton, TB_INDETERMINATE, &CToolBarCtrl::Indeterminate, TB_ISBUTTONENABLED,
               &CToolBarCtrl::IsButtonEnabled, TB_ISBUTTONCHECKED, &CToolBarCtrl::IsButtonChecked, TB_ISBUTTONPRESSED,
               &CToolBarCtrl::IsButtonPressed, TB_ISBUTTONHIDDEN, &CToolBarCtrl::IsButtonHidden,
               TB_ISBUTTONINDETERMINATE, &CToolBarCtrl::IsButtonIndeterminate, TB_GETSTATE, &CToolBarCtrl::GetState,
               TB_SETSTATE, &CToolBarCtrl::SetState, TB_GETRECT, &CToolBarCtrl::GetRect, TB_GETROWS,
               &CToolBarCtrl::GetRows, TB_GETIMAGELIST, &CToolBarCtrl::GetImageList, TB_GETDISABLEDIMAGELIST,
               &CToolBarCtrl::GetDisabledImageList, SB_GETPARTS, &CStatusBarCtrl::GetParts, SB_SIMPLE,
               &CStatusBarCtrl::SetSimple, SB_ISSIMPLE, &CStatusBarCtrl::IsSimple, SB_SETICON, &CStatusBarCtrl::SetIcon,
               TTM_GETMAXTIPWIDTH, &CToolTipCtrl::GetMaxTipWidth);
    ExpectSent(listener, kTurnedRound, EM_REPLACESEL, &CEdit::ReplaceSel, EM_LINESCROLL, &CEdit::LineScroll, LB_SETSEL,
               &CListBox::SetSel, HDM_GETORDERARRAY, &CHeaderCtrl::GetOrderArray, LVM_SETIMAGELIST,
               &CListCtrl::SetImageList, TVM_SETIMAGELIST, &CTreeCtrl::SetImageList);
    ExpectSent(listener, 0, CB_SETEDITSEL, &CComboBox::SetEditSel, CB_GETDROPPEDCONTROLRECT,
               &CComboBox::GetDroppedControlRect, HDM_HITTEST, &CHeaderCtrl::HitTest, HDM_SETIMAGELIST,
               &CHeaderCtrl::SetImageList, TCM_HITTEST, &CTabCtrl::HitTest, LVM_SUBITEMHITTEST,
               &CListCtrl::SubItemHitTest, LVM_SETEXTENDEDLISTVIEWSTYLE, &CListCtrl::SetExtendedStyle, TVM_DELETEITEM,
               &CTreeCtrl::DeleteItem, TVM_SORTCHILDREN, &CTreeCtrl::SortChildren, TVM_EDITLABEL, &CTreeCtrl::EditLabel,
               TB_ADDSTRING, &CToolBarCtrl::AddStrings, TB_HITTEST, &CToolBarCtrl::HitTest, TB_SETIMAGELIST,
               &CToolBarCtrl::SetImageList, TB_SETDISABLEDIMAGELIST, &CToolBarCtrl::SetDisabledImageList,
               TTM_SETMAXTIPWIDTH, &CToolTipCtrl::SetMaxTipWidth);
    ExpectSent(listener, IMAGE_BITMAP, STM_SETIMAGE, &CStatic::SetBitmap, STM_GETIMAGE, &CStatic::GetBitmap,
               BM_SETIMAGE, &CButton::SetBitmap, BM_GETIMAGE, &CButton::GetBitmap);
    ExpectSent(listener, IMAGE_ICON, STM_SETIMAGE, &CStatic::SetIcon, STM_GETIMAGE, &CStatic::GetIcon, BM_SETIMAGE,
               &CButton::SetIcon, BM_GETIMAGE, &CButton::GetIcon);
    CButton button;
    ASSERT_TRUE(button.Create("", BS_BITMAP, kPlace, &listener, kId));
    EXPECT_EQ(UINT{BS_BITMAP}, button.GetButtonStyle());
}

// Controls of all kinds -----------------------------------------------------------------------------------------------

namespace {

/// Whether the windows lack memory for their objects.
bool g_creationFails = false;

/// Counts the ends of its windows, and of attempts to make one. Keeps the last item that it was asked to draw.
template <class CONTROL> struct Counted : CONTROL {
    int ended = 0, drawn = -1;

    void DrawItem(DRAWITEMSTRUCT* item) { drawn = static_cast<int>(item->itemID); }
    void PreSubclassWindow() override
    {
        if (g_creationFails)
            AfxThrowMemoryException();
    }
    void PostNcDestroy() override { ++ended; }
};

/// Creates a control below a parent, which asks it to draw item 7. \return whether it came of it, how often it ended
/// and what it drew then
template <class CONTROL> Answers Made(CWnd* parent)
{
    Counted<CONTROL> control;
    BOOL made;
    if constexpr (std::is_same_v<CONTROL, CToolTipCtrl>)
        made = control.Create(parent);
    else if constexpr (std::is_base_of_v<CStatic, CONTROL> || std::is_base_of_v<CButton, CONTROL>)
        made = control.Create("", 0, kPlace, parent, kId);
    else
        made = control.Create(0, kPlace, parent, kId);
    DRAWITEMSTRUCT item = {0, kId, 7, 0, 0, control.m_hWnd, nullptr, {}, 0};
    if (parent != nullptr)
        parent->SendMessage(WM_DRAWITEM, kId, reinterpret_cast<LPARAM>(&item));
    return Answers{made, control.ended, control.drawn};
}

using Creation = Answers (*)(CWnd* parent);
constexpr Creation kDrawn[] = {&Made<CStatic>,     &Made<CButton>,  &Made<CListBox>,  &Made<CComboBox>,
                               &Made<CHeaderCtrl>, &Made<CTabCtrl>, &Made<CListCtrl>, &Made<CStatusBarCtrl>};
constexpr Creation kPlain[] = {&Made<CEdit>,           &Made<CScrollBar>,    &Made<CTreeCtrl>,   &Made<CToolBarCtrl>,
                               &Made<CSpinButtonCtrl>, &Made<CProgressCtrl>, &Made<CSliderCtrl>, &Made<CToolTipCtrl>};

} // namespace

TEST(Controls, CanFailToBeMadeAndDrawThemselves)
{
    TopWindow parent;
    const auto check = [&parent](const Creation& create, const char* made) {
        EXPECT_EQ(made, create(&parent)) << "row " << (&create - kDrawn) << ' ' << (&create - kPlain);
        EXPECT_EQ(create != &Made<CToolTipCtrl> ? "0 1 -1" : made, create(nullptr));
        g_creationFails = true;
        EXPECT_EQ("0 1 -1", create(&parent));
        g_creationFails = false;
        EXPECT_EQ(nullptr, ::GetWindow(parent.m_hWnd, GW_CHILD));
    };
    for (const Creation& create : kDrawn)
        check(create, "1 0 7");
    for (const Creation& create : kPlain)
        check(create, "1 0 -1");
}

// Owner-drawn boxes ---------------------------------------------------------------------------------------------------

namespace {

/// A box whose items are numbers, in their order. Writes down what it is asked.
template <class BOX> struct DrawnBox : BOX {
    std::string log;

    void MeasureItem(MEASUREITEMSTRUCT* item) override
    {
        item->itemHeight = 23;
        log += "measure ";
    }
    int CompareItem(COMPAREITEMSTRUCT* items) override
    {
        return items->itemData1 < items->itemData2 ? -1 : items->itemData1 > items->itemData2;
    }
    void DeleteItem(DELETEITEMSTRUCT* item) override { log += "delete" + std::to_string(item->itemData) + " "; }

    void ExpectAsked(CWnd& parent, UINT id, DWORD style)
    {
        ASSERT_TRUE(this->Create(style, kPlace, &parent, id));
        for (const INT_PTR number : {3, 1, 2})
            this->AddString(reinterpret_cast<LPCSTR>(number));
        EXPECT_EQ("1 2 3 23",
                  (Answers{this->GetItemData(0), this->GetItemData(1), this->GetItemData(2), this->GetItemHeight(0)}));
        EXPECT_EQ(0u, log.find("measure "));
        log.clear();
        this->DeleteString(0);
        EXPECT_EQ("delete1 ", std::exchange(log, {}));
    }
};

struct DrawnList : DrawnBox<CListBox> {
    int VKeyToItem(UINT key, UINT item) override
    {
        log += "key" + std::to_string(key) + "," + std::to_string(item) + " ";
        return -2;
    }
    int CharToItem(UINT key, UINT) override { return static_cast<int>(key - '0'); }
};

} // namespace

TEST(Controls, AskOwnerDrawnBoxes)
{
    TopWindow parent;
    DrawnBox<CComboBox> combo;
    combo.ExpectAsked(parent, kId, CBS_DROPDOWNLIST | CBS_OWNERDRAWVARIABLE | CBS_SORT);
    DrawnList list;
    list.ExpectAsked(parent, kId + 1, LBS_OWNERDRAWFIXED | LBS_SORT | LBS_WANTKEYBOARDINPUT);
    list.SetCurSel(1);
    list.SendMessage(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ("key40,1 ", list.log);
    EXPECT_EQ(1, list.GetCurSel()) << "all was done by the handler";
    list.SendMessage(WM_CHAR, '0');
    EXPECT_EQ(0, list.GetCurSel()) << "the item that it names";
}

// Texts ---------------------------------------------------------------------------------------------------------------

TEST(Controls, EditText)
{
    TopWindow parent;
    CEdit edit;
    ASSERT_TRUE(edit.Create(ES_MULTILINE | WS_VISIBLE, kPlace, &parent, kId));
    edit.SetWindowText("one\r\ntwo lines\r\n\r\nfour");
    const struct {
        int line, size;
        const char* expected;
    } lines[] = {{1, 11, "two lines"}, {1, 5, "two l"}, {1, 1, "t"}, {1, 0, ""}, {2, 11, ""}, {9, 11, ""}};
    for (const auto& row : lines) {
        char line[12];
        std::memset(line, '#', sizeof line);
        const int copied = edit.GetLine(row.line, line, row.size);
        EXPECT_EQ(row.expected, std::string(line, static_cast<size_t>(copied)));
        EXPECT_EQ('#', line[row.size]);
    }
    edit.SetSel(1, 7);
    int start = 0, end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ("1 7 458753", (Answers{start, end, edit.GetSel()}));
    edit.SetSel(static_cast<DWORD>(MAKELONG(0, -1))); // all
    edit.SetMargins(3, 5);
    EXPECT_EQ("1441792 327683 65542",
              (Answers{edit.GetSel(), edit.GetMargins(), edit.CharFromPos(edit.PosFromChar(6))}));
}

TEST(Controls, ReadTextsOfItems)
{
    TopWindow parent;
    CListBox list;
    CComboBox combo;
    CString text("before"), other(text);
    ASSERT_TRUE(list.Create(WS_VISIBLE, kPlace, &parent, kId) && combo.Create(CBS_DROPDOWN, kPlace, &parent, kId + 1));
    list.GetText(0, text);
    combo.GetLBText(0, other);
    EXPECT_TRUE(text.IsEmpty() && other.IsEmpty()) << "there is no item";
    list.AddString("ab");
    combo.AddString("abc");
    list.GetText(0, text);
    combo.GetLBText(0, other);
    BOOL inside = TRUE, outside = FALSE;
    CRect place;
    list.GetItemRect(0, place);
    list.AddString("cd");
    EXPECT_EQ("\"ab\" \"abc\" 1 0", (Answers{text, other, list.ItemFromPoint(CPoint(5, place.bottom + 1), inside),
                                             list.ItemFromPoint(CPoint(5, -5), outside)}));
    EXPECT_EQ("0 1", (Answers{inside, outside}));
}
