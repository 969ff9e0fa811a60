#include "number_record.h"

#include <cstdlib>
#include <cstring>

namespace {

/// A sum that differs also if two numbers have changed their places. It fits in an int.
DWORD AddToSum(DWORD sum, DWORD number)
{
    constexpr DWORD kFactor = 31;
    return (sum * kFactor + number + 1) & 0x7FFFFFFF;
}

} // namespace

void NumberRecordWriter::Add(int number)
{
    m_text.AppendFormat(" %d", number);
    m_sum = AddToSum(m_sum, number);
}

CString NumberRecordWriter::Finish()
{
    m_text.AppendFormat(" %d", static_cast<int>(m_sum));
    return m_text;
}

NumberRecordReader::NumberRecordReader(LPCSTR text, LPCSTR mark)
    : m_at(std::strncmp(text, mark, std::strlen(mark)) == 0 ? text + std::strlen(mark) : nullptr)
{
}

int NumberRecordReader::Next(int most)
{
    if (m_at == nullptr || m_at[0] != ' ' || m_at[1] < '0' || m_at[1] > '9') {
        m_at = nullptr;
        return -1;
    }
    char* end = nullptr;
    const long number = std::strtol(m_at, &end, 10); // LONG_MAX if it is larger
    if (number > most || number == LONG_MAX) {
        m_at = nullptr;
        return -1;
    }
    m_at = end;
    m_sum = AddToSum(m_sum, number);
    return static_cast<int>(number);
}

BOOL NumberRecordReader::IsWhole()
{
    const DWORD sum = m_sum;
    const int kept = Next(INT_MAX);
    return kept >= 0 && static_cast<DWORD>(kept) == sum && *m_at == '\0';
}
