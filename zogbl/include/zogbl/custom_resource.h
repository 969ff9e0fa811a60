/// \file
/// Raw data resources.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Codes of CZoCustomResource.
constexpr DWORD ZO_RESOURCE_NO_MODULE = 2;
constexpr DWORD ZO_RESOURCE_NO_NAME = 3; ///< neither a name nor a number
constexpr DWORD ZO_RESOURCE_NOT_FOUND = 4;
constexpr DWORD ZO_RESOURCE_LOAD_FAILED = 5;
constexpr DWORD ZO_RESOURCE_LOCK_FAILED = 6;
constexpr DWORD ZO_RESOURCE_NULL_NAME = 7;
constexpr DWORD ZO_RESOURCE_NAME_TOO_LONG = 8; ///< 31 characters or more
constexpr DWORD ZO_RESOURCE_ZERO_ID = 9;
constexpr DWORD ZO_RESOURCE_NULL_BUFFER = 10;
constexpr DWORD ZO_RESOURCE_BUFFER_TOO_SMALL = 11;

/// An RCDATA resource of a module. The data belongs to the module and stays valid while that is loaded.
class ZOGBL_API CZoCustomResource : public CObject {
public:
    CZoCustomResource();
    ~CZoCustomResource() override;

    /// Loads a resource in place of the one loaded before. \return 0 or a ZO_RESOURCE_ code; the object is then empty
    /// but for the name or number asked for.
    /// \param id as a UINT: a plain 0 could also mean a null name, and does not compile.
    virtual DWORD LoadCustomResource(HINSTANCE module, UINT id);
    /// \param name at most 30 characters.
    virtual DWORD LoadCustomResource(HINSTANCE module, const char* name);
    /// Forgets the resource. \return 0
    virtual DWORD FreeCustomResource();
    /// \param size of \p buffer, at least 31.
    virtual DWORD GetResourceName(char* buffer, DWORD size);
    virtual UINT GetResourceID();    ///< 0 when loaded by name
    virtual void* GetResourceData(); ///< null when nothing is loaded
    virtual DWORD GetResourceSize(); ///< in bytes

private:
    DWORD Load(HINSTANCE module);

    static constexpr size_t kMaxNameLength = 30;

    char m_szName[32];
    UINT m_nID;
    HINSTANCE m_hModule;
    void* m_lpData;
    DWORD m_dwSize;
    HRSRC m_hResource;
    HGLOBAL m_hLoaded;
};
