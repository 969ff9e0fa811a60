// The record of a tool bar: "ZoToolBar1", how many numbers, and these: whether it is locked; whether it is at the
// bottom; how many commands are known, and these; how many rows are shown, and these, 0 being a separator. What a later
// version adds stands behind them.
#include "tool_bar_content.h"

#include <zogbl/resource_lookup.h>

#include "ground/number_record.h"

#include <algorithm>

namespace {

constexpr LPCSTR kMark = "ZoToolBar1";
constexpr int kMostNumbers = 2 * (ToolBarContent::kMostShown + 2) + 100;
constexpr int kMostCommand = 0xFFFF;

bool Contains(const std::vector<int>& numbers, int number)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

/// Whether each command stands there once, and any number of separators if there may be some.
bool IsList(const std::vector<int>& commands, bool canSeparate)
{
    std::vector<int> sorted(commands);
    std::sort(sorted.begin(), sorted.end());
    const auto first = std::upper_bound(sorted.begin(), sorted.end(), 0);
    return (canSeparate || first == sorted.begin()) && std::adjacent_find(first, sorted.end()) == sorted.end() &&
           (sorted.empty() || sorted.back() <= kMostCommand);
}

/// Takes a list out of a record's numbers. \return false: it is not there
bool TakeList(const std::vector<int>& numbers, size_t& at, std::vector<int>& list)
{
    if (at >= numbers.size() || numbers[at] > ToolBarContent::kMostShown ||
        static_cast<size_t>(numbers[at]) > numbers.size() - at - 1)
        return false;
    const auto begin = numbers.begin() + static_cast<std::ptrdiff_t>(at) + 1;
    list.assign(begin, begin + numbers[at]);
    at += list.size() + 1;
    return true;
}

CString PartOfText(UINT command, int part)
{
    CString all, text;
    ZoGblLoadString(command, all);
    AfxExtractSubString(text, all, part);
    return text;
}

} // namespace

CString ToolMessage(UINT command) { return PartOfText(command, 0); }

CString ToolName(UINT command)
{
    const CString name = PartOfText(command, 1);
    return name.IsEmpty() ? ToolMessage(command) : name;
}

ToolBarContent::ToolBarContent(const ZoToolButton* buttons, int count, bool isBottom)
    : isAtBottom(isBottom), m_buttons(buttons), m_count(count), m_isShippedAtBottom(isBottom)
{
    Ship();
}

bool ToolBarContent::IsValid(const ZoToolButton* buttons, int count)
{
    if (buttons == nullptr || count < 1 || count > CZoToolBar::MOST_BUTTONS)
        return false;
    const ZoToolButton* end = buttons + count;
    return std::all_of(buttons, end, [=](const ZoToolButton& button) {
        return button.command == 0 || (button.command <= kMostCommand && button.picture >= 0 &&
                                       std::find_if(&button + 1, end, [&](const ZoToolButton& other) {
                                           return other.command == button.command;
                                       }) == end);
    });
}

void ToolBarContent::Ship()
{
    shown.clear();
    m_others.clear();
    isLocked = true;
    isAtBottom = m_isShippedAtBottom;
    for (int i = 0; i < m_count; ++i) {
        if (m_buttons[i].command == 0 || m_buttons[i].isShown)
            shown.push_back(static_cast<int>(m_buttons[i].command));
    }
}

int ToolBarContent::Find(UINT command) const
{
    const ZoToolButton* end = m_buttons + m_count;
    const ZoToolButton* found =
        std::find_if(m_buttons, end, [=](const ZoToolButton& button) { return button.command == command; });
    return command != 0 && found != end ? static_cast<int>(found - m_buttons) : -1;
}

bool ToolBarContent::IsShown(UINT command) const { return Contains(shown, static_cast<int>(command)); }

// Record --------------------------------------------------------------------------------------------------------------

bool ToolBarContent::Read(LPCSTR record)
{
    NumberRecordReader reader(record, kMark);
    const int count = reader.Next(kMostNumbers);
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(reader.Next(INT_MAX));
    size_t at = 2;
    std::vector<int> known, rows;
    if (!reader.IsWhole() || !TakeList(numbers, at, known) || !TakeList(numbers, at, rows) || !IsList(known, false) ||
        !IsList(rows, true))
        return false;
    std::vector<int> others;
    for (const int command : known) {
        if (Find(static_cast<UINT>(command)) < 0)
            others.push_back(command);
    }
    for (const int command : rows) {
        if (command != 0 && Find(static_cast<UINT>(command)) < 0 && !Contains(others, command))
            others.push_back(command);
    }
    isLocked = numbers[0] != 0;
    isAtBottom = numbers[1] != 0;
    shown = std::move(rows);
    m_others = std::move(others);
    AddNew(known);
    return true;
}

/// Shows what is shipped to be shown and was not known: behind the button that stands before it in the table, apart
/// from it if it is so there.
void ToolBarContent::AddNew(const std::vector<int>& known)
{
    std::ptrdiff_t at = 0; // behind the last one of the table that is shown
    bool isApart = false;  // a separator has come since
    bool isBehindNew = false;
    const auto insert = [&](int command) { shown.insert(shown.begin() + at++, command); };
    for (int i = 0; i < m_count && shown.size() + 2 <= kMostShown; ++i) {
        const int command = static_cast<int>(m_buttons[i].command);
        const auto found = std::find(shown.begin(), shown.end(), command);
        if (command == 0) {
            isApart = true;
        } else if (found != shown.end()) {
            const std::ptrdiff_t place = found - shown.begin();
            if (isApart && isBehindNew && place == at)
                insert(0);
            at = std::find(shown.begin(), shown.end(), command) - shown.begin() + 1;
            isApart = isBehindNew = false;
        } else if (m_buttons[i].isShown && !Contains(known, command)) {
            if (isApart && at > 0 && at < static_cast<std::ptrdiff_t>(shown.size()) && shown[at] == 0)
                ++at;
            else if (isApart && at > 0)
                insert(0);
            insert(command);
            isApart = false;
            isBehindNew = true;
        }
    }
}

CString ToolBarContent::Write() const
{
    std::vector<int> numbers = {isLocked, isAtBottom, 0};
    for (int i = 0; i < m_count; ++i) {
        if (m_buttons[i].command != 0)
            numbers.push_back(static_cast<int>(m_buttons[i].command));
    }
    const size_t room = kMostShown + 3 - numbers.size();
    numbers.insert(numbers.end(), m_others.begin(),
                   m_others.begin() + static_cast<std::ptrdiff_t>((std::min)(room, m_others.size())));
    numbers[2] = static_cast<int>(numbers.size()) - 3;
    numbers.push_back(static_cast<int>(shown.size()));
    numbers.insert(numbers.end(), shown.begin(), shown.end());
    NumberRecordWriter record(kMark);
    record.Add(static_cast<int>(numbers.size()));
    for (const int number : numbers)
        record.Add(number);
    return record.Finish();
}

// What can be seen ----------------------------------------------------------------------------------------------------

std::vector<int> ToolBarContent::GetRows() const
{
    std::vector<int> rows;
    for (size_t i = 0; i < shown.size(); ++i) {
        if (shown[i] == 0 || Find(static_cast<UINT>(shown[i])) >= 0)
            rows.push_back(static_cast<int>(i));
    }
    return rows;
}

std::vector<int> ToolBarContent::GetVisible() const
{
    std::vector<int> visible;
    for (const int row : GetRows()) {
        const int button = Find(static_cast<UINT>(shown[row]));
        if (button >= 0 || (!visible.empty() && visible.back() >= 0))
            visible.push_back(button);
    }
    if (!visible.empty() && visible.back() < 0)
        visible.pop_back();
    return visible;
}
