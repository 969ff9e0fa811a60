// The record of a header's columns: "ZoHeader1 3 1 2", number of columns, sorted column, its direction; " 160 0" for
// each column, width and position.
#include <zogbl/header.h>

#include <zogbl/gdi_data.h>

#include "ground/number_record.h"

namespace {

constexpr char kMark[] = "ZoHeader1";
constexpr int kPlainDots = 96;

} // namespace

CString CZoHeaderWnd::GetRecord() const
{
    const int dots = CZoGlobalGDIData::Scale(kPlainDots);
    const int sorted = GetSortColumn();
    const int direction = sorted >= 0 ? static_cast<int>(m_columns[sorted].button.m_sort) : 0;
    NumberRecordWriter record(kMark);
    for (const int number : {GetColumnCount(), sorted + 1, direction})
        record.Add(number);
    for (int i = 0; i < GetColumnCount(); ++i) {
        record.Add(::MulDiv(m_columns[i].button.m_nWidth, kPlainDots, dots));
        record.Add(m_columns[i].position);
    }
    return record.Finish();
}

BOOL CZoHeaderWnd::SetRecord(LPCSTR record)
{
    if (record == nullptr || !EndDrag())
        return FALSE;
    const int count = GetColumnCount();
    NumberRecordReader numbers(record, kMark);
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
    if (sorted < 0 || direction < 0 || !numbers.IsWhole())
        return FALSE;
    for (int i = 0; i < count; ++i) {
        const int width = CZoGlobalGDIData::Scale(widths[i]);
        StoreWidth(i, width < CZoHeaderButton::kMostWidth ? width : CZoHeaderButton::kMostWidth);
    }
    SetOrder(columns, count);
    SetSort(sorted - 1, static_cast<CZoHeaderButton::Sort>(direction));
    return TRUE;
}
