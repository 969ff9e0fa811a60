#include "user_texts.h"

#include <zogbl/global_config.h>
#include <zogbl/version_resource.h>

namespace {

constexpr int kLongest = 1023;                 // bytes
constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE; // the users' keys are there

/// \return FALSE: there is no product
BOOL FindKey(CString& key)
{
    CZoVersionResource product;
    const BOOL found = product.ExtractVersionInfo();
    key = product.GetCurrentUserKey() + "\\Workbench";
    return found;
}

} // namespace

BOOL ReadUserText(LPCSTR name, CString& text)
{
    CString key;
    text.Empty();
    if (!FindKey(key))
        return FALSE;
    const DWORD status = CZoGlobalConfig().GetValue(kMode, key, name, text.GetBuffer(kLongest), kLongest + 1, nullptr);
    text.ReleaseBuffer();
    return status == ERROR_SUCCESS;
}

DWORD KeepUserText(LPCSTR name, LPCSTR text)
{
    CString key;
    return FindKey(key) ? CZoGlobalConfig().SetValue(kMode, key, name, text) : DWORD{ERROR_FILE_NOT_FOUND};
}
