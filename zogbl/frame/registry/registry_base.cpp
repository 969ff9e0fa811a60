#include <zogbl/registry_base.h>

#include <zogbl/module.h>
#include <zogbl/resource_ids.h>

#include "ground/bounded_text.h"

#include <cstring>
#include <new>

namespace {

constexpr int kValueNameSize = 256;

} // namespace

CZoGblRegBase::CZoGblRegBase(DWORD accessMode)
    : m_pConfig(new (std::nothrow) CZoGlobalConfig), m_dwAccessMode(accessMode), m_bValid(FALSE), m_szSection{}
{
    CZoGblRegBase::LoadSection();
}

CZoGblRegBase::~CZoGblRegBase() { delete m_pConfig; }

BOOL CZoGblRegBase::IsClassDataValid()
{
    m_bValid = m_pConfig != nullptr && m_szSection[0] != '\0';
    return m_bValid;
}

BOOL CZoGblRegBase::LoadSection()
{
    std::memset(m_szSection, 0, sizeof m_szSection);
    LoadStringA(ZoGblGetInstanceHandle(), ZO_IDS_REG_SECTION, m_szSection, sizeof m_szSection);
    return IsClassDataValid();
}

/// Calls \p operation with the name of a value.
template <class OPERATION> DWORD CZoGblRegBase::WithName(UINT id, OPERATION operation)
{
    if (!m_bValid)
        return ZoErrObjectInvalid;
    char name[kValueNameSize] = "";
    if (LoadStringA(ZoGblGetInstanceHandle(), id, name, sizeof name) <= 0)
        return ZoErrNoValueName;
    return operation(static_cast<LPCSTR>(name));
}

DWORD CZoGblRegBase::GetValue(UINT id, DWORD& value, DWORD defaultValue)
{
    value = defaultValue;
    return WithName(
        id, [&](LPCSTR name) { return m_pConfig->GetValue(m_dwAccessMode, m_szSection, name, value, defaultValue); });
}

DWORD CZoGblRegBase::GetInteger(UINT id, int& value, int defaultValue)
{
    DWORD number = 0;
    const DWORD status = GetValue(id, number, static_cast<DWORD>(defaultValue));
    value = static_cast<int>(number);
    return status;
}

DWORD CZoGblRegBase::SetValue(UINT id, DWORD value)
{
    return WithName(id, [&](LPCSTR name) { return m_pConfig->SetValue(m_dwAccessMode, m_szSection, name, value); });
}

DWORD CZoGblRegBase::GetString(UINT id, LPSTR buffer, DWORD bufferSize, LPCSTR defaultText)
{
    if (buffer == nullptr)
        return ZoErrObjectInvalid;
    if (bufferSize != 0)
        FillWithDefault(buffer, bufferSize, defaultText);
    return WithName(id, [&](LPCSTR name) {
        return m_pConfig->GetValue(m_dwAccessMode, m_szSection, name, buffer, bufferSize, defaultText);
    });
}

DWORD CZoGblRegBase::SetString(UINT id, LPCSTR text)
{
    return WithName(id, [&](LPCSTR name) { return m_pConfig->SetValue(m_dwAccessMode, m_szSection, name, text); });
}

DWORD CZoGblRegBase::DeleteValue(UINT id)
{
    return WithName(id, [&](LPCSTR name) { return m_pConfig->DeleteEntry(m_dwAccessMode, m_szSection, name); });
}

DWORD CZoGblRegBase::DoesValueExist(UINT id, BOOL& exists)
{
    exists = FALSE;
    return WithName(id,
                    [&](LPCSTR name) { return m_pConfig->DoesEntryExist(m_dwAccessMode, m_szSection, name, exists); });
}

DWORD CZoGblRegBase::DeleteSection(LPCSTR subkeyName)
{
    if (!m_bValid)
        return ZoErrObjectInvalid;
    return m_pConfig->DeleteSection(m_dwAccessMode, m_szSection, subkeyName);
}
