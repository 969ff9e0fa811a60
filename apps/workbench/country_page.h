/// \file
/// The world's countries: flag, name, dialing prefix, telephone code.
#pragma once

#include "page.h"

class CZoCountryCode;

/// A list box that draws countries of the global list.
class CountryListBox : public CListBox {
public:
    CountryListBox();
    ~CountryListBox() override;

    void DrawItem(DRAWITEMSTRUCT* item) override;
    void MeasureItem(MEASUREITEMSTRUCT* item) override;
    int CompareItem(COMPAREITEMSTRUCT* items) override;

    /// Left edges of the columns name, prefix, code, and the end of the last, in pixels for a row of that width.
    struct Columns {
        int name, prefix, code, end;
    };
    Columns GetColumns(int width) const;
    /// Takes the flags from the language library loaded now.
    void ReloadFlags();

private:
    void DrawFlag(HDC dc, const RECT& row, const CZoCountryCode& country) const;

    HBITMAP m_flags = nullptr;
    SIZE m_cell = {};
};

/// The telephone code as people write it: members of the North American plan with the 1 before their area code.
CString CodeText(const CZoCountryCode& country);

class CountryPage : public Page {
public:
    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;
    afx_msg void OnPaint();
    afx_msg void OnSetFocus(CWnd* previous);
    DECLARE_MESSAGE_MAP()

private:
    CountryListBox m_list;
};
