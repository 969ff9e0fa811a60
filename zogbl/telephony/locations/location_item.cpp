#include <zogbl/location_item.h>

#include <common/without_throwing.h>

#include "location_fields.h"
#include "location_record.h"

namespace {

/// Calls \p visit(id, member) for each field, until it returns a status other than 0. \return that status.
template <class VISIT> DWORD ForEachField(CZoLocationItem& item, VISIT visit)
{
    for (const LocationField& field : kLocationFields) {
        const DWORD status = std::visit([&](auto member) { return visit(field.id, item.*member); }, field.member);
        if (status != ERROR_SUCCESS)
            return status;
    }
    return ERROR_SUCCESS;
}

struct Clear {
    DWORD operator()(UINT, CString& text) const { return text.Empty(), ERROR_SUCCESS; }
    template <class NUMBER> DWORD operator()(UINT, NUMBER& number) const { return number = 0, ERROR_SUCCESS; }
};

struct Load {
    LocationRecord& record;
    DWORD operator()(UINT id, DWORD& number) const { return record.GetValue(id, number, 0); }
    DWORD operator()(UINT id, CString& text) const { return record.GetString(id, text); }
    DWORD operator()(UINT id, BOOL& flag) const
    {
        DWORD number = 0;
        const DWORD status = record.GetValue(id, number, 0);
        flag = number != 0;
        return status;
    }
};

struct Save {
    LocationRecord& record;
    DWORD operator()(UINT id, DWORD number) const { return record.SetValue(id, number); }
    DWORD operator()(UINT id, const CString& text) const { return record.SetString(id, text); }
    DWORD operator()(UINT id, BOOL flag) const { return record.SetValue(id, flag == 1 ? 1 : 0); }
};

struct Check {
    DWORD operator()(UINT, const CString& text) const { return CheckLocationText(text); }
    template <class NUMBER> DWORD operator()(UINT, NUMBER) const { return ERROR_SUCCESS; }
};

DWORD LoadPhones(LocationRecord& record, CStringArray& areas, CStringArray& numbers)
{
    areas.RemoveAll();
    numbers.RemoveAll();
    for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind) {
        CString text;
        DWORD status = record.GetPhoneArea(kind, text);
        if (status != ERROR_SUCCESS)
            return status;
        areas.Add(text);
        status = record.GetPhoneNumber(kind, text);
        if (status != ERROR_SUCCESS)
            return status;
        numbers.Add(text);
    }
    return ERROR_SUCCESS;
}

/// Calls \p visit(kind, text) for each kind, until it returns a status other than 0. \return that status.
template <class VISIT> DWORD ForEachPhone(const CStringArray& texts, VISIT visit)
{
    for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind) {
        const bool present = static_cast<INT_PTR>(kind) < texts.GetSize();
        const DWORD status = visit(kind, present ? static_cast<LPCSTR>(texts[kind]) : "");
        if (status != ERROR_SUCCESS)
            return status;
    }
    return ERROR_SUCCESS;
}

} // namespace

CZoLocationItem::CZoLocationItem(DWORD index)
{
    ClearData();
    m_dwIndex = index;
}

CZoLocationItem::~CZoLocationItem() = default;

void CZoLocationItem::ClearData()
{
    m_dwIndex = 0;
    ForEachField(*this, Clear{});
    m_csaPhoneAreas.RemoveAll();
    m_csaPhoneNumbers.RemoveAll();
}

DWORD CZoLocationItem::LoadByIndex(DWORD index)
{
    m_dwIndex = index;
    const auto record = LocationRecord::Create();
    if (!record)
        return ZoErrOutOfMemory;
    record->SetDataIndex(index); // an object that is invalid fails at the first value
    const DWORD status = ForEachField(*this, Load{*record});
    if (status != ERROR_SUCCESS)
        return status;
    return ResultOr(ZoErrMemoryException, [&] { return LoadPhones(*record, m_csaPhoneAreas, m_csaPhoneNumbers); });
}

DWORD CZoLocationItem::LoadCurrentLocation()
{
    const auto record = LocationRecord::Create();
    if (!record)
        return ZoErrOutOfMemory;
    DWORD index = ZO_NO_LOCATION;
    const DWORD status = record->GetCurrentIndex(index);
    return status != ERROR_SUCCESS ? status : LoadByIndex(index);
}

DWORD CZoLocationItem::SaveByIndex()
{
    const auto record = LocationRecord::Create();
    if (!record)
        return ZoErrOutOfMemory;
    // Before anything is written: a record with one text that cannot be read back would stop the loading of all.
    DWORD status = ForEachField(*this, Check{});
    for (const CStringArray* texts : {&m_csaPhoneAreas, &m_csaPhoneNumbers}) {
        if (status == ERROR_SUCCESS)
            status = ForEachPhone(*texts, [](DWORD, LPCSTR text) { return CheckLocationText(text); });
    }
    if (status != ERROR_SUCCESS)
        return status;
    record->SetDataIndex(m_dwIndex);
    status = ForEachField(*this, Save{*record});
    if (status == ERROR_SUCCESS)
        status =
            ForEachPhone(m_csaPhoneAreas, [&](DWORD kind, LPCSTR text) { return record->SetPhoneArea(kind, text); });
    if (status == ERROR_SUCCESS)
        status = ForEachPhone(m_csaPhoneNumbers,
                              [&](DWORD kind, LPCSTR text) { return record->SetPhoneNumber(kind, text); });
    if (status != ERROR_SUCCESS)
        record->DeleteIndex(m_dwIndex);
    return status;
}
