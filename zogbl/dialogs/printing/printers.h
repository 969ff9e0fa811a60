/// \file
/// The user's printers, and what their drivers tell.
#pragma once

#include "printer_settings.h"

#include <vector>

struct Printer {
    PrinterNames names;
    PrinterSettings settings; ///< before Ask: those that somebody brought along, if any
    int mostCopies = 1;       ///< that the driver makes of itself
    bool collates = false;
    bool isAsked = false;
    bool answers = false; ///< its driver knows its settings
};

/// The list of the user's printers. It stands in the profile on every system, so nobody waits for a printer that cannot
/// be reached: a driver is asked for one printer, when that is chosen. The spooler's library is loaded then; where
/// it or one of its functions is missing, no driver answers.
class Printers {
public:
    Printers() = default;
    ~Printers();
    Printers(const Printers&) = delete;
    Printers& operator=(const Printers&) = delete;

    /// Reads the list anew. What was known of printers that are still there stays. Throws CMemoryException*.
    void Find();

    int Count() const { return static_cast<int>(m_list.size()); }
    Printer& operator[](int index) { return m_list[static_cast<size_t>(index)]; }
    int IndexOf(LPCSTR device) const; ///< -1: there is none
    int IndexOfDefault() const;       ///< -1: there is none. Throws CMemoryException*.
    /// The printer that settings belong to: its name begins with theirs. -1: none, or more than one
    int IndexOf(const PrinterSettings& settings) const;

    /// Asks the driver, if it was not asked before: for the user's own settings of this printer, unless there are some
    /// already that are this printer's, and for what it can do. Throws CMemoryException*.
    void Ask(Printer& printer);

    /// Shows the driver's own dialog. \param settings that it begins with
    /// \return IDOK: the printer has those that came of it; IDCANCEL; -1: it does not answer. Throws CMemoryException*.
    INT_PTR ShowSetUp(Printer& printer, const PrinterSettings& settings, HWND owner);

private:
    class Opened;

    template <class FUNCTION> FUNCTION* Bind(LPCSTR name);
    BOOL Exchange(Printer& printer, HWND owner, DWORD mode, const PrinterSettings* from, PrinterSettings& to,
                  LONG& answer);

    HMODULE m_library = nullptr; // the spooler's
    std::vector<Printer> m_list;
};
