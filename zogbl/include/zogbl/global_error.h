/// \file
/// The calling thread's last error, with a severity.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// Marks an error code as one of the suite's own: the system keeps this bit free for applications.
constexpr DWORD ZO_APPLICATION_ERROR = 0x20000000;

/// Severities, as the setters hand them to SetLastErrorEx.
constexpr DWORD ZO_SEVERITY_FATAL = 1;
constexpr DWORD ZO_SEVERITY_MINOR = 2;
constexpr DWORD ZO_SEVERITY_WARNING = 3;

/// Flags of CZoGlobalError::SetMode.
constexpr WORD ZO_ERROR_MODE_NO_OPEN_FILE_BOX = 1;   ///< a file that is not found brings up no box
constexpr WORD ZO_ERROR_MODE_NO_CRITICAL_ERRORS = 2; ///< critical errors (no disk in the drive, say) go to the program

/// Sets and reads the calling thread's last error. All operations are static; the number that an object carries means
/// nothing to them.
class ZOGBL_API CZoGlobalError {
public:
    CZoGlobalError() = default;
    CZoGlobalError(const CZoGlobalError&) = default;
    CZoGlobalError& operator=(const CZoGlobalError&) = default;

    /// Set the last error to \p code, with the severity that the name tells.
    static void Fatal(DWORD code);
    static void Minor(DWORD code);
    static void Warning(DWORD code);
    /// The same with ZO_APPLICATION_ERROR added, so that the suite's codes never meet the system's.
    static void AppFatal(DWORD code);
    static void AppMinor(DWORD code);
    static void AppWarning(DWORD code);

    /// The last error, with whatever severity it was set.
    static DWORD GetError();

    /// Chooses which error boxes the system shows. \param flags ZO_ERROR_MODE_ flags; a box that is not named is shown.
    /// \return the mode before, as the system's SetErrorMode counts it.
    static DWORD SetMode(WORD flags);

private:
    [[maybe_unused]] DWORD m_dwError = 0;
};
