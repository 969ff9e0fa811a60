/// \file
/// The sheet in which a user edits dialing locations.
#pragma once

#include <zogbl/location_item.h>
#include <zogbl/property_sheet.h>

#include <memory>

constexpr int ZO_MOST_LOCATIONS = 100; ///< so many locations are edited

/// Edits all dialing locations of the user. At the left is a list of them with buttons for a new one, a copy, another
/// name, deletion, and to make one the current one; pages show the address, the location, the telephone numbers and the
/// outside line of the one that is selected. The page for the outside line shows while one types what would be dialed
/// for samples and for a number of one's own, why, and what each piece is for: by the code of MakeDialableAddress.
/// Secret codes are hidden until the user asks for them, and the telephony service is asked by a button alone.
///
///     CLocSheet sheet(this);
///     if (sheet.DoModal() == IDOK)
///         ... // CZoLocationItem::LoadCurrentLocation
///
/// Nothing is written before OK. What another program has written meanwhile stays: of a location that both have
/// changed, the texts changed here win. If a location cannot be saved, the user is told which, and the sheet stays with
/// all that was entered. Locations that cannot be read are not listed, and stay. Nothing is thrown but by the
/// constructor.
///
/// In the list Insert, F2 and Delete do what the buttons do.
class ZOGBL_API CLocSheet : public CZoPropertySheet {
public:
    /// \param parent null: the main window of the thread
    /// \param firstPage the page shown first: 0 address, 1 location, 2 numbers, 3 outside line
    /// Throws CMemoryException*.
    explicit CLocSheet(CWnd* parent = nullptr, UINT firstPage = 0);
    ~CLocSheet() override;

    /// \return IDOK: everything is saved; IDCANCEL; -1: the sheet cannot be made
    INT_PTR DoModal() override;
    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void ReloadTexts() override;
    afx_msg void OnNew();
    afx_msg void OnCopy();
    afx_msg void OnRename();
    afx_msg void OnDelete();
    afx_msg void OnMakeCurrent();
    afx_msg void OnSelected();
    afx_msg LRESULT OnTellUnreadable(WPARAM status, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    struct Parts;

    BOOL CreateControls();
    void SetTexts();
    void FillList();
    void Select(int position);
    void EnableButtons();
    BOOL TakePage();
    BOOL Save();
    void Add(const CZoLocationItem* source);

    std::unique_ptr<Parts> m_parts;
    int m_nSelected = -1;
};

/// Lets the user edit the dialing locations: in a CLocSheet or, if there are none yet, in a CLocWizard that leads to
/// the first one. Meanwhile the help is the suite's. Nothing is thrown.
/// \return IDOK: something was saved, or nothing had to be; IDCANCEL: nothing was written, but for locations that were
/// saved before another one could not be; -1: no window could be made
ZOGBL_API INT_PTR EditLocationItems(CWnd* parent = nullptr);
