// The system's controls, and what owner-drawn ones are asked.
#include "answers.h"

#include <afxcmn.h>

namespace {

constexpr UINT kId = 9;
const CRect kPlace(0, 0, 100, 80);

class ControlTest : public ::testing::Test {
protected:
    ControlTest()
    {
        EXPECT_TRUE(parent.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 200, nullptr, nullptr));
    }
    CWnd parent;
};

/// What a box makes of a text for one of its items.
CString ItemText(const CListBox& box, int index)
{
    CString text("before");
    box.GetText(index, text);
    return text;
}

CString ItemText(const CComboBox& box, int index)
{
    CString text("before");
    box.GetLBText(index, text);
    return text;
}

} // namespace

TEST_F(ControlTest, PicturesAndStates)
{
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(8, 8, 1, 1, nullptr));
    const HICON icon = ::LoadIcon(nullptr, IDI_WARNING);
    CStatic picture, iconPicture;
    CButton button, iconButton;
    ASSERT_TRUE(picture.Create("", SS_BITMAP, kPlace, &parent) && iconPicture.Create("", SS_ICON, kPlace, &parent) &&
                button.Create("", BS_PUSHBUTTON | BS_BITMAP, kPlace, &parent, 1) &&
                iconButton.Create("", BS_AUTO3STATE | BS_ICON, kPlace, &parent, 2));
    EXPECT_TRUE(picture.SetBitmap(bitmap) == nullptr && picture.GetBitmap() == bitmap);
    EXPECT_TRUE(picture.SetBitmap(nullptr) == bitmap);
    EXPECT_TRUE(button.SetBitmap(bitmap) == nullptr && button.GetBitmap() == bitmap);
    EXPECT_TRUE(iconPicture.SetIcon(icon) == nullptr && iconPicture.GetIcon() == icon);
    EXPECT_TRUE(iconButton.SetIcon(icon) == nullptr && iconButton.GetIcon() == icon);

    iconButton.SetCheck(BST_INDETERMINATE);
    iconButton.SetState(TRUE);
    EXPECT_EQ("2 6 128", (Answers{iconButton.GetCheck(), iconButton.GetState(), button.GetButtonStyle()}));
    button.SetButtonStyle(BS_DEFPUSHBUTTON);
    EXPECT_EQ(static_cast<UINT>(BS_DEFPUSHBUTTON), button.GetButtonStyle() & 0xF);
}

TEST_F(ControlTest, EditsText)
{
    CEdit edit;
    ASSERT_TRUE(edit.Create(ES_MULTILINE | WS_VISIBLE, kPlace, &parent, kId));
    edit.SetWindowText("one\r\ntwo lines\r\n\r\nfour");
    EXPECT_EQ("4 0 5 1 9", (Answers{edit.GetLineCount(), edit.GetFirstVisibleLine(), edit.LineIndex(1),
                                    edit.LineFromChar(8), edit.LineLength(8)}));
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
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(0, 22)), edit.GetSel());
    edit.SetSel(0, 3, TRUE);
    edit.SetModify(FALSE);
    edit.ReplaceSel("1", TRUE);
    EXPECT_EQ("1 1 1", (Answers{edit.GetModify(), edit.CanUndo(), edit.LineLength()}));
    edit.Undo();
    edit.EmptyUndoBuffer();
    EXPECT_EQ("0 3", (Answers{edit.CanUndo(), edit.LineLength(0)}));
    EXPECT_EQ(MAKELONG(6, 1), edit.CharFromPos(edit.PosFromChar(6)));
    edit.SetMargins(3, 5);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(3, 5)), edit.GetMargins());

    CEdit field;
    ASSERT_TRUE(field.Create(ES_PASSWORD, kPlace, &parent, kId + 1));
    field.SetPasswordChar('x');
    EXPECT_EQ('x', field.GetPasswordChar());
    field.SetPasswordChar('\0');
    field.SetLimitText(4);
    for (const char c : std::string("longer"))
        field.SendMessage(WM_CHAR, static_cast<WPARAM>(c));
    EXPECT_EQ("long", TextOf(field));
    field.SetSel(1, 3);
    field.Cut();
    EXPECT_EQ("lg", TextOf(field));
    field.Paste();
    field.SetSel(0, 2);
    field.Clear();
    EXPECT_EQ("ng", TextOf(field));
    EXPECT_TRUE(field.SetReadOnly() && (field.GetStyle() & ES_READONLY) != 0);
}

TEST_F(ControlTest, ListsItems)
{
    CListBox list;
    ASSERT_TRUE(list.Create(WS_VISIBLE | LBS_NOTIFY | WS_HSCROLL, CRect(0, 0, 100, 90), &parent, kId));
    for (const char* text : {"ab", "abc", "b", "abd"})
        list.AddString(text);
    EXPECT_EQ("0 5 3 -1", (Answers{list.InsertString(0, ""), list.GetCount(), list.GetTextLen(4), list.GetTextLen(5)}));
    EXPECT_EQ("\"abc\" \"\" \"\"", (Answers{ItemText(list, 2), ItemText(list, 0), ItemText(list, 5)}));
    EXPECT_EQ(4, list.DeleteString(0));
    EXPECT_EQ("3 0 1 -1 2 2 -1 -1",
              (Answers{list.FindString(1, "AB"), list.FindString(3, "AB"), list.FindStringExact(-1, "abc"),
                       list.FindStringExact(-1, "a"), list.SelectString(-1, "b"), list.GetCurSel(), list.SetCurSel(-1),
                       list.GetCurSel()}));
    list.SetItemData(1, 77);
    list.SetItemDataPtr(2, &list);
    EXPECT_EQ(77u, list.GetItemData(1));
    EXPECT_EQ(&list, list.GetItemDataPtr(2));
    list.SetItemHeight(0, 30);
    list.SetTopIndex(1);
    list.SetHorizontalExtent(250);
    EXPECT_EQ("30 1 250", (Answers{list.GetItemHeight(0), list.GetTopIndex(), list.GetHorizontalExtent()}));
    CRect place;
    list.GetItemRect(2, place);
    BOOL inside = TRUE, outside = FALSE;
    EXPECT_EQ("2 1",
              (Answers{list.ItemFromPoint(place.CenterPoint(), inside), list.ItemFromPoint(CPoint(5, -5), outside)}));
    EXPECT_EQ("0 1", (Answers{inside, outside}));

    CListBox many;
    ASSERT_TRUE(many.Create(LBS_EXTENDEDSEL | LBS_MULTICOLUMN, kPlace, &parent, kId));
    for (const char* text : {"0", "1", "2", "3"})
        many.AddString(text);
    many.SelItemRange(TRUE, 1, 3);
    many.SetSel(2, FALSE);
    int selected[4] = {};
    EXPECT_EQ("2 2 1 0", (Answers{many.GetSelCount(), many.GetSelItems(4, selected), many.GetSel(3), many.GetSel(2)}));
    EXPECT_EQ("1 3", (Answers{selected[0], selected[1]}));
}

TEST_F(ControlTest, CombinesListAndField)
{
    CComboBox combo;
    ASSERT_TRUE(combo.Create(CBS_DROPDOWN | WS_VISIBLE | WS_VSCROLL, kPlace, &parent, kId));
    for (const char* text : {"ab", "abc", "b"})
        combo.AddString(text);
    EXPECT_EQ("1 3 1", (Answers{combo.InsertString(1, "new"), combo.DeleteString(1), combo.GetLBTextLen(2)}));
    EXPECT_EQ("\"abc\" \"\"", (Answers{ItemText(combo, 1), ItemText(combo, 3)}));
    EXPECT_EQ("1 2 1 1", (Answers{combo.FindString(0, "ab"), combo.FindStringExact(-1, "B"), combo.SelectString(0, "a"),
                                  combo.GetCurSel()}));
    combo.SetItemData(0, 5);
    combo.SetItemDataPtr(1, &combo);
    EXPECT_EQ(5u, combo.GetItemData(0));
    EXPECT_EQ(&combo, combo.GetItemDataPtr(1));
    combo.SetEditSel(1, 2);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(1, 2)), combo.GetEditSel());
    combo.Clear();
    EXPECT_EQ("ac", TextOf(combo));
    combo.LimitText(2);
    EXPECT_EQ(2, combo.GetWindow(GW_CHILD)->SendMessage(EM_GETLIMITTEXT));
    combo.SetDroppedWidth(180);
    combo.SetExtendedUI();
    combo.SetHorizontalExtent(300);
    combo.SetItemHeight(-1, 33);
    EXPECT_NEAR(33, combo.GetItemHeight(-1), 2);
    const BOOL before = combo.GetDroppedState();
    combo.ShowDropDown();
    CRect dropped;
    combo.GetDroppedControlRect(dropped);
    EXPECT_EQ("180 1 300 0 1 180", (Answers{combo.GetDroppedWidth(), combo.GetExtendedUI(), combo.GetHorizontalExtent(),
                                            before, combo.GetDroppedState(), dropped.Width()}));
}

// Owner-drawn controls ------------------------------------------------------------------------------------------------

namespace {

/// Writes down what it is asked.
template <class BASE> class Drawn : public BASE {
public:
    std::set<int> drawn;
    std::string log;

    void DrawItem(DRAWITEMSTRUCT* item) override
    {
        EXPECT_EQ(this->m_hWnd, item->hwndItem);
        drawn.insert(static_cast<int>(item->itemID));
    }
};

/// A box whose items are numbers, in their order.
template <class BOX> class DrawnBox : public Drawn<BOX> {
public:
    void MeasureItem(MEASUREITEMSTRUCT* item) override
    {
        item->itemHeight = 23;
        this->log += "measure ";
    }
    int CompareItem(COMPAREITEMSTRUCT* items) override
    {
        return items->itemData1 < items->itemData2 ? -1 : items->itemData1 > items->itemData2;
    }
    void DeleteItem(DELETEITEMSTRUCT* item) override { this->log += "delete" + std::to_string(item->itemData) + " "; }
    /// The order of the items.
    std::string Order() const
    {
        std::string order;
        for (int i = 0; i < this->GetCount(); ++i)
            order += std::to_string(this->GetItemData(i));
        return order;
    }
};

class DrawnList : public DrawnBox<CListBox> {
public:
    int VKeyToItem(UINT key, UINT item) override
    {
        log += "key" + std::to_string(key) + "," + std::to_string(item) + " ";
        return -2;
    }
    int CharToItem(UINT key, UINT) override { return static_cast<int>(key - '0'); }
};

} // namespace

TEST_F(ControlTest, OwnerDrawnOnesAreAsked)
{
    DrawnList list;
    ASSERT_TRUE(list.Create(WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_SORT | LBS_WANTKEYBOARDINPUT, kPlace, &parent, kId));
    EXPECT_EQ("measure ", std::exchange(list.log, {})) << "when it is created";
    EXPECT_EQ(23, list.GetItemHeight(0));
    DrawnBox<CComboBox> combo;
    ASSERT_TRUE(
        combo.Create(WS_VISIBLE | CBS_DROPDOWNLIST | CBS_OWNERDRAWVARIABLE | CBS_SORT, kPlace, &parent, kId + 1));
    for (const INT_PTR number : {3, 1, 2}) {
        list.AddString(reinterpret_cast<LPCSTR>(number));
        combo.AddString(reinterpret_cast<LPCSTR>(number));
    }
    EXPECT_EQ("123", list.Order());
    EXPECT_EQ("123", combo.Order());
    EXPECT_NE(std::string::npos, combo.log.find("measure measure measure "));
    EXPECT_EQ(23, combo.GetItemHeight(0));
    Drawn<CButton> button;
    ASSERT_TRUE(button.Create("", WS_VISIBLE | BS_OWNERDRAW, kPlace, &parent, kId + 2));
    Drawn<CStatic> picture;
    ASSERT_TRUE(picture.Create("", WS_VISIBLE | SS_OWNERDRAW, kPlace, &parent, kId + 3));
    combo.SetCurSel(1);
    parent.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    EXPECT_EQ((std::set{0, 1, 2}), list.drawn);
    EXPECT_EQ((std::set{1}), combo.drawn) << "its field";
    EXPECT_EQ(1u, button.drawn.size());
    EXPECT_EQ(1u, picture.drawn.size());

    list.log.clear();
    combo.log.clear();
    list.SetCurSel(1);
    list.SendMessage(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ("key40,1 ", std::exchange(list.log, {}));
    EXPECT_EQ(1, list.GetCurSel()) << "all was done by the handler";
    list.SendMessage(WM_CHAR, '2');
    EXPECT_EQ(2, list.GetCurSel()) << "the item that it names";
    list.DeleteString(0);
    EXPECT_EQ("delete1 ", std::exchange(list.log, {}));
    combo.DeleteString(2);
    EXPECT_EQ("delete3 ", std::exchange(combo.log, {}));
}

// Controls that cannot be made ----------------------------------------------------------------------------------------

namespace {

/// Whether the windows lack memory for their objects.
struct CreationFails {
    static inline bool s_fails = false;
};

/// Counts the ends of its windows, and of attempts to make one.
template <class CONTROL> class Counted : public CONTROL {
public:
    int ended = 0;

protected:
    void PreSubclassWindow() override
    {
        if (CreationFails::s_fails)
            AfxThrowMemoryException();
    }
    void PostNcDestroy() override { ++ended; }
};

/// Creates a control below a parent. \return whether it came of it, and how often it ended then
using Creation = std::pair<const char*, std::pair<BOOL, int> (*)(CWnd* parent)>;

template <class CONTROL> std::pair<BOOL, int> Made(CWnd* parent)
{
    Counted<CONTROL> control;
    BOOL made;
    if constexpr (std::is_same_v<CONTROL, CToolTipCtrl>)
        made = control.Create(parent);
    else if constexpr (std::is_base_of_v<CStatic, CONTROL> || std::is_base_of_v<CButton, CONTROL>)
        made = control.Create("", 0, kPlace, parent, kId);
    else
        made = control.Create(0, kPlace, parent, kId);
    return {made, control.ended};
}

#define ZO_CREATION(CONTROL)                                                                                           \
    {                                                                                                                  \
#CONTROL, &Made < CONTROL>                                                                                     \
    }
constexpr Creation kCreations[] = {
    ZO_CREATION(CStatic),         ZO_CREATION(CButton),       ZO_CREATION(CEdit),        ZO_CREATION(CListBox),
    ZO_CREATION(CComboBox),       ZO_CREATION(CScrollBar),    ZO_CREATION(CHeaderCtrl),  ZO_CREATION(CTabCtrl),
    ZO_CREATION(CListCtrl),       ZO_CREATION(CTreeCtrl),     ZO_CREATION(CToolBarCtrl), ZO_CREATION(CStatusBarCtrl),
    ZO_CREATION(CSpinButtonCtrl), ZO_CREATION(CProgressCtrl), ZO_CREATION(CSliderCtrl),  ZO_CREATION(CToolTipCtrl)};

} // namespace

TEST_F(ControlTest, CreationCanFail)
{
    for (const auto& [name, create] : kCreations) {
        SCOPED_TRACE(name);
        EXPECT_EQ(std::pair(TRUE, 0), create(&parent));
        const bool isChild = create != &Made<CToolTipCtrl>;
        EXPECT_EQ(isChild ? std::pair(FALSE, 1) : std::pair(TRUE, 0), create(nullptr));
        CreationFails::s_fails = true;
        EXPECT_EQ(std::pair(FALSE, 1), create(&parent));
        CreationFails::s_fails = false;
        EXPECT_EQ(nullptr, ::GetWindow(parent.m_hWnd, GW_CHILD));
    }
}
