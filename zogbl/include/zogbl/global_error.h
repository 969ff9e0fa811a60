/// \file
/// The calling thread's last error, with a severity.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Marks an error code as the suite's own. The system keeps this bit free for applications.
constexpr DWORD ZO_APPLICATION_ERROR = 0x20000000;

/// Severities, which the setters give to SetLastErrorEx.
constexpr DWORD ZO_SEVERITY_FATAL = 1;
constexpr DWORD ZO_SEVERITY_MINOR = 2;
constexpr DWORD ZO_SEVERITY_WARNING = 3;

/// Flags of CZoGlobalError::SetMode.
constexpr WORD ZO_ERROR_MODE_NO_OPEN_FILE_BOX = 1;   ///< no box if a file is not found
constexpr WORD ZO_ERROR_MODE_NO_CRITICAL_ERRORS = 2; ///< the program, not a box, gets critical errors (no disk)

/// Sets and reads the calling thread's last error. Unlike SetLastError, it also sets a severity. All operations are
/// static; the number in an object has no effect.
class ZOGBL_API CZoGlobalError {
public:
    CZoGlobalError() = default;
    CZoGlobalError(const CZoGlobalError&) = default;
    CZoGlobalError& operator=(const CZoGlobalError&) = default;

    /// Set the last error to \p code, with the severity in the name.
    static void Fatal(DWORD code);
    static void Minor(DWORD code);
    static void Warning(DWORD code);
    /// The same with ZO_APPLICATION_ERROR added, so that no code of the suite equals one of the system.
    static void AppFatal(DWORD code);
    static void AppMinor(DWORD code);
    static void AppWarning(DWORD code);

    /// The last error, whatever its severity.
    static DWORD GetError();

    /// Chooses which error boxes the system shows. \param flags ZO_ERROR_MODE_ flags; without its flag, a box is shown
    /// \return the mode before, as the system's SetErrorMode returns it
    static DWORD SetMode(WORD flags);

private:
    [[maybe_unused]] DWORD m_dwError = 0;
};
