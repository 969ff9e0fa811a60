// The record of a header's columns: "ZoHeader1 3 1 2", number of columns, sorted column, its direction; " 160 0" for
// each column, width and position; at the end the sum of all numbers, which a cut or changed text does not have.
#include <zogbl/header.h>

#include <zogbl/gdi_data.h>

#include <cstdlib>
#include <cstring>

namespace {

constexpr char kMark[] = "ZoHeader1";
constexpr int kPlainDots = 96;

/// Reads numbers behind one another.
class Numbers {
public:
    explicit Numbers(LPCSTR text) : m_at(text) {}

    /// \return -1: there is none from 0 to \p most
    int Next(int most)
    {
        if (m_at[0] != ' ' || m_at[1] < '0' || m_at[1] > '9')
            return -1;
        char* end = nullptr;
        const long number = std::strtol(m_at, &end, 10);
        if (number > most)
            return -1;
        m_at = end;
        m_sum += number;
        return static_cast<int>(number);
    }
    bool IsSumNext()
    {
        const long sum = m_sum;
        return Next(INT_MAX) == sum && *m_at == '\0';
    }

private:
    LPCSTR m_at;
    long m_sum = 0;
};

} // namespace

CString CZoHeaderWnd::GetRecord() const
{
    const int dots = CZoGlobalGDIData::Scale(kPlainDots);
    const int sorted = GetSortColumn();
    const int direction = sorted >= 0 ? static_cast<int>(m_columns[sorted].button.m_sort) : 0;
    long sum = GetColumnCount() + sorted + 1 + direction;
    CString record;
    record.Format("%s %d %d %d", kMark, GetColumnCount(), sorted + 1, direction);
    for (int i = 0; i < GetColumnCount(); ++i) {
        const int width = ::MulDiv(m_columns[i].button.m_nWidth, kPlainDots, dots);
        record.AppendFormat(" %d %d", width, m_columns[i].position);
        sum += width + m_columns[i].position;
    }
    record.AppendFormat(" %ld", sum);
    return record;
}

BOOL CZoHeaderWnd::SetRecord(LPCSTR record)
{
    const size_t mark = sizeof kMark - 1;
    if (record == nullptr || std::strncmp(record, kMark, mark) != 0 || !EndDrag())
        return FALSE;
    const int count = GetColumnCount();
    Numbers numbers(record + mark);
    if (numbers.Next(count) != count)
        return FALSE;
    const int sorted = numbers.Next(count);
    const int direction = numbers.Next(static_cast<int>(CZoHeaderButton::Sort::kDescending));
    int widths[kMostColumns], columns[kMostColumns];
    bool isTaken[kMostColumns] = {};
    for (int i = 0; i < count; ++i) {
        widths[i] = numbers.Next(CZoHeaderButton::kMostWidth);
        const int position = numbers.Next(count - 1);
        if (widths[i] < 0 || position < 0 || isTaken[position])
            return FALSE;
        isTaken[position] = true;
        columns[position] = i;
    }
    if (sorted < 0 || direction < 0 || !numbers.IsSumNext())
        return FALSE;
    for (int i = 0; i < count; ++i) {
        const int width = CZoGlobalGDIData::Scale(widths[i]);
        StoreWidth(i, width < CZoHeaderButton::kMostWidth ? width : CZoHeaderButton::kMostWidth);
    }
    SetOrder(columns, count);
    SetSort(sorted - 1, static_cast<CZoHeaderButton::Sort>(direction));
    return TRUE;
}
