/// \file
/// The parts of a location's editor, whatever windows show them: pages of a sheet or of a wizard.
#pragma once

#include <zogbl/location_item.h>

#include <afxwin.h>

#include <memory>

class LocationSet;

/// A page's controls and what they mean. What is not said to be otherwise throws CMemoryException*.
class LocationForm {
public:
    /// What may stand in a field, beside what stands there already.
    enum class Rule { kAny, kDialed, kEMail };
    struct Field {
        int control;
        Rule rule;
        CString CZoLocationItem::*text;        ///< null: it is a telephone text
        CStringArray CZoLocationItem::*phones; ///< of that kind
        DWORD kind;

        CString Get(const CZoLocationItem& item) const;
        void Set(CZoLocationItem& item, const CString& value) const;
    };

    virtual ~LocationForm() = default;
    LocationForm(const LocationForm&) = delete;
    LocationForm& operator=(const LocationForm&) = delete;

    UINT GetTemplate() const { return m_template; } ///< throws nothing

    /// The page has its controls now.
    virtual void Begin(CWnd& window);
    /// The location that is edited; null: none. It is shown by Show. Throws nothing.
    void SetItem(CZoLocationItem* item) { m_item = item; }
    CZoLocationItem* GetItem() const { return m_item; }

    /// Shows the location; without one the controls are empty and disabled. If it throws, they are disabled, too: what
    /// they hold belongs to no location.
    void Show();
    bool IsShown() const { return m_isShown; } ///< whether the controls hold the location's texts, or what was typed
    /// Shows again what depends on other pages.
    virtual void Refresh() {}
    /// What keeps the controls from being taken. What was there before is right as it is.
    /// \return number of the control; 0: nothing
    virtual int FindFault(CString& reason) const;
    /// The controls go to the location.
    void Take();

    /// The page got a notification, or its timer.
    virtual void OnCommand(int /*control*/, int /*notification*/) {}
    virtual void OnTimer(UINT_PTR /*id*/) {}
    virtual void ReloadTexts() {}

protected:
    struct Filling {
        explicit Filling(LocationForm& form) : form(form) { form.m_isFilling = true; }
        ~Filling() { form.m_isFilling = false; }
        LocationForm& form;
    };

    LocationForm(UINT templateId, const Field* fields, int count)
        : m_template(templateId), m_fields(fields), m_count(count)
    {
    }

    /// The item, or nothing, goes to the controls.
    virtual void Fill();
    virtual void Enable(bool isEnabled); ///< throws nothing
    /// The controls go to an item.
    virtual void Read(CZoLocationItem& item) const;

    HWND Control(int id) const { return ::GetDlgItem(m_window->m_hWnd, id); }
    CString TextOf(int control) const;
    void SetText(int control, LPCSTR text) { ::SetWindowTextA(Control(control), text); }

    CWnd* m_window = nullptr;
    CZoLocationItem* m_item = nullptr;
    bool m_isFilling = false; // notifications are of no act of the user's

private:
    bool m_isShown = false;
    const UINT m_template;
    const Field* const m_fields;
    const int m_count;
};

/// In the order in which they follow each other.
enum LocationPageNumber { kAddressPage, kPlacePage, kNumbersPage, kOutsidePage, kLocationPages };

/// \param names for the page on which the location gets its name, which must not be one of these; null: it has its name
/// elsewhere
std::unique_ptr<LocationForm> MakeLocationForm(int page, const LocationSet* names);

/// That of the page for the outside line.
std::unique_ptr<LocationForm> MakeOutsideForm();

/// The first of these names that no location has: "Home", "Home (2)" ...; as long as a name can be.
CString FreeName(const LocationSet& set, const CString& name);
/// The name of a new location: a text and its index.
CString NewName(const LocationSet& set, DWORD index);
/// An error's number, as users tell it.
CString StatusText(DWORD status);
