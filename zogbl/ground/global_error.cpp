#include <zogbl/global_error.h>

void CZoGlobalError::Fatal(DWORD code) { SetLastErrorEx(code, ZO_SEVERITY_FATAL); }
void CZoGlobalError::Minor(DWORD code) { SetLastErrorEx(code, ZO_SEVERITY_MINOR); }
void CZoGlobalError::Warning(DWORD code) { SetLastErrorEx(code, ZO_SEVERITY_WARNING); }

void CZoGlobalError::AppFatal(DWORD code) { Fatal(code | ZO_APPLICATION_ERROR); }
void CZoGlobalError::AppMinor(DWORD code) { Minor(code | ZO_APPLICATION_ERROR); }
void CZoGlobalError::AppWarning(DWORD code) { Warning(code | ZO_APPLICATION_ERROR); }

DWORD CZoGlobalError::GetError() { return GetLastError(); }

DWORD CZoGlobalError::SetMode(WORD flags)
{
    UINT mode = 0;
    if ((flags & ZO_ERROR_MODE_NO_OPEN_FILE_BOX) != 0)
        mode |= SEM_NOOPENFILEERRORBOX;
    if ((flags & ZO_ERROR_MODE_NO_CRITICAL_ERRORS) != 0)
        mode |= SEM_FAILCRITICALERRORS;
    return SetErrorMode(mode);
}
