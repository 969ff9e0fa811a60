/// \file
/// The base of record classes that are stored in the registry.
#pragma once

#include <zogbl/export.h>
#include <zogbl/global_config.h>
#include <zogbl/status.h>

#include <afx.h>

/// Reads and writes the values of one key, the section. A value is named by the number of a string resource of this
/// library, ZO_IDS_REG_ in resource_ids.h: so all names stand in one table and not in code.
///
/// The section is "SOFTWARE\Zo,Inc."; a derived class can choose a deeper one:
///
///     class CZoPhoneBook : public CZoGblRegBase {
///     public:
///         CZoPhoneBook() { LoadSection(); } // the base's constructor knows its own only
///         DWORD GetCity(CString& city);     // GetString(ZO_IDS_REG_CITY, ...)
///     protected:
///         BOOL LoadSection() override;      // the base's, then more text, then IsClassDataValid
///     };
///
/// Operations on values return the codes of CZoGlobalConfig or one of the following; the registry is then not touched.
/// Nothing is thrown.
///   ZoErrObjectInvalid  the section could not be loaded, or there is no memory for the gateway
///   ZoErrNoValueName    the library has no such string
class ZOGBL_API CZoGblRegBase : public CObject {
public:
    /// Makes the gateway and loads the section.
    /// \param accessMode ZO_MODE_LOCAL_MACHINE or ZO_MODE_CURRENT_USER
    explicit CZoGblRegBase(DWORD accessMode = ZO_MODE_CURRENT_USER);
    ~CZoGblRegBase() override;

    /// Whether values can be read and written: there is a gateway and the section is not empty. Operations use the last
    /// answer. So call it again after changing the section.
    virtual BOOL IsClassDataValid();

    LPCSTR GetSection() const { return m_szSection; }
    void SetAccessMode(DWORD accessMode) { m_dwAccessMode = accessMode; } ///< for all later calls
    DWORD GetAccessMode() const { return m_dwAccessMode; }

protected:
    /// Loads the section. \return IsClassDataValid
    virtual BOOL LoadSection();

    // \p id is the number of the string that names the value.

    /// After any failure \p value is \p defaultValue.
    DWORD GetValue(UINT id, DWORD& value, DWORD defaultValue);
    DWORD GetInteger(UINT id, int& value, int defaultValue);
    DWORD SetValue(UINT id, DWORD value);
    DWORD SetInteger(UINT id, int value) { return SetValue(id, static_cast<DWORD>(value)); }

    /// After any failure \p buffer holds \p defaultText, cut to fit; if that is null, zeros over its whole size. A null
    /// buffer gives ZoErrObjectInvalid.
    DWORD GetString(UINT id, LPSTR buffer, DWORD bufferSize, LPCSTR defaultText);
    DWORD SetString(UINT id, LPCSTR text);

    DWORD DeleteValue(UINT id);
    DWORD DoesValueExist(UINT id, BOOL& exists); ///< after any failure \p exists is FALSE

    /// Deletes a subkey of the section and everything below it. Null deletes the section itself.
    DWORD DeleteSection(LPCSTR subkeyName);

    static constexpr size_t kSectionSize = 1024;

    CZoGlobalConfig* m_pConfig; ///< owned; null if memory had run out
    DWORD m_dwAccessMode;
    BOOL m_bValid;                  ///< the last answer of IsClassDataValid
    char m_szSection[kSectionSize]; ///< path below the mode's root

private:
    template <class OPERATION> DWORD WithName(UINT id, OPERATION operation);
};
