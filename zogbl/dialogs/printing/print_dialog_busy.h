/// \file
/// What the sources of the dialog for printing share.
#pragma once

#include <zogbl/print_dialog.h>

#include <utility>

inline constexpr UINT kAskPrinter = WM_APP;       // posted, so that the dialog is there while a driver lets it wait
inline constexpr UINT kFindPrinters = WM_APP + 1; // posted, for the news may come while a driver is being asked

/// News of the list of printers wait while it lives: a printer of the present one is in use. A driver that is asked may
/// show boxes of its own, and so let messages through.
class CZoPrintDialog::Busy {
public:
    explicit Busy(CZoPrintDialog& dialog) : m_dialog(dialog), m_bBefore(std::exchange(dialog.m_bBusy, TRUE)) {}
    ~Busy()
    {
        m_dialog.m_bBusy = m_bBefore;
        if (!m_bBefore && m_dialog.m_bStale && m_dialog.m_hWnd != nullptr)
            m_dialog.PostMessage(kFindPrinters);
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    CZoPrintDialog& m_dialog;
    const BOOL m_bBefore;
};
