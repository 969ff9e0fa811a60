/// \file
/// The wizard that leads a user to a dialing location.
#pragma once

#include <zogbl/wizard.h>

#include <memory>

/// Makes a new dialing location in four steps, with the pages of CLocSheet: address, location, numbers, outside line.
/// The first location becomes the current one. If the new one cannot be saved, the user is told, and the wizard stays.
/// Nothing is thrown but by the constructor.
///
///     CLocWizard wizard(this);
///     if (wizard.DoModal() == IDOK)
///         ... // there is one location more
class ZOGBL_API CLocWizard : public CZoWizardSheet {
public:
    /// \param parent null: the main window of the thread. Throws CMemoryException*.
    explicit CLocWizard(CWnd* parent = nullptr);
    ~CLocWizard() override;

    /// \return as CZoWizardSheet; IDCANCEL also after the user was told that there are ZO_MOST_LOCATIONS already or the
    /// registry cannot be read
    INT_PTR DoModal() override;

protected:
    BOOL OnFinish() override;

private:
    struct Parts;

    std::unique_ptr<Parts> m_parts;
    CWnd* m_pOwner;
};
