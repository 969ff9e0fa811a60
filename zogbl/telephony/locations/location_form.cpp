#include "location_form.h"

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/country_box.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "ground/bounded_text.h"
#include "location_record.h"
#include "location_set.h"

#include <cstring>
#include <iterator>

namespace {

constexpr int kLongest = kLocationTextSize - 1; // bytes

/// What a modem understands, and what people write into numbers.
constexpr char kDialed[] = "0123456789*#ABCDabcdPpTtWw,!@$?&;+-()/. \t";

/// A country's code as it is written: for members of the North American plan with the prefix in front.
CString CodeText(UINT prefix, UINT code)
{
    CString text;
    if (prefix != 0)
        text.Format("%u+%u", prefix, code);
    else
        text.Format("%u", code);
    return text;
}

} // namespace

// All forms -----------------------------------------------------------------------------------------------------------

CString LocationForm::Field::Get(const CZoLocationItem& item) const
{
    if (text != nullptr)
        return item.*text;
    const auto at = static_cast<INT_PTR>(kind);
    return at < (item.*phones).GetSize() ? (item.*phones)[at] : CString();
}

void LocationForm::Field::Set(CZoLocationItem& item, const CString& value) const
{
    if (text != nullptr)
        item.*text = value;
    else
        (item.*phones).SetAtGrow(static_cast<INT_PTR>(kind), value);
}

CString LocationForm::TextOf(int control) const { return WindowText(Control(control)); }

void LocationForm::Begin(CWnd& window)
{
    m_window = &window;
    for (int i = 0; i < m_count; ++i) // counts characters; FindFault counts bytes
        ::SendMessageA(Control(m_fields[i].control), EM_LIMITTEXT, kLongest, 0);
}

void LocationForm::Show()
{
    m_isShown = WithoutThrowing([this] {
        const Filling filling(*this);
        Fill();
    });
    Enable(m_isShown && m_item != nullptr);
    if (!m_isShown)
        AfxThrowMemoryException();
    Refresh();
}

void LocationForm::Fill()
{
    for (int i = 0; i < m_count; ++i)
        SetText(m_fields[i].control, m_item != nullptr ? m_fields[i].Get(*m_item) : CString());
}

void LocationForm::Enable(bool isEnabled)
{
    for (HWND child = ::GetWindow(m_window->m_hWnd, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT))
        ::EnableWindow(child, isEnabled);
}

int LocationForm::FindFault(CString& reason) const
{
    for (int i = 0; i < m_count; ++i) {
        const Field& field = m_fields[i];
        const CString text = TextOf(field.control);
        if (text == field.Get(*m_item))
            continue;
        if (text.GetLength() > kLongest) {
            CString longest;
            longest.Format("%d", kLongest);
            reason = LoadText(ZO_IDS_LOC_TOO_LONG, longest);
            return field.control;
        }
        for (LPCSTR at = text; field.rule == Rule::kDialed && *at != '\0'; at = NextCharacter(at)) {
            const auto width = static_cast<int>(CharacterWidth(at));
            if (width == 1 && std::strchr(kDialed, *at) != nullptr)
                continue;
            reason = LoadText(ZO_IDS_LOC_BAD_NUMBER, CString(at, width));
            return field.control;
        }
        const int sign = text.Find('@');
        if (field.rule == Rule::kEMail && !text.IsEmpty() && (sign <= 0 || sign == text.GetLength() - 1)) {
            reason = LoadText(ZO_IDS_LOC_BAD_EMAIL);
            return field.control;
        }
    }
    return 0;
}

void LocationForm::Read(CZoLocationItem& item) const
{
    for (int i = 0; i < m_count; ++i)
        m_fields[i].Set(item, TextOf(m_fields[i].control));
}

void LocationForm::Take()
{
    CZoLocationItem taken(m_item->m_dwIndex);
    CopyLocation(taken, *m_item);
    Read(taken);
    CopyLocation(*m_item, taken);
}

// Forms with a country ------------------------------------------------------------------------------------------------

namespace {

using Item = CZoLocationItem;

class CountryForm : public LocationForm {
public:
    CountryForm(UINT templateId, const Field* fields, int count, int box, DWORD Item::*country)
        : LocationForm(templateId, fields, count), m_boxId(box), m_country(country)
    {
    }

    void Begin(CWnd& window) override
    {
        LocationForm::Begin(window);
        m_box.SubclassDlgItem(static_cast<UINT>(m_boxId), &window);
        m_box.ResetInformation(-1);
    }
    void Fill() override
    {
        LocationForm::Fill();
        m_box.SetCurSel(-1);
        if (m_item != nullptr)
            m_box.SelectCountryIndex(m_item->*m_country);
    }

protected:
    /// A country that the box does not know stays.
    void Read(Item& item) const override
    {
        LocationForm::Read(item);
        if (m_box.GetCurSel() >= 0)
            item.*m_country = m_box.GetCountryIndex();
    }

    CCountryCodeComboBox m_box;

private:
    const int m_boxId;
    DWORD Item::*const m_country;
};

class AddressForm : public CountryForm {
public:
    AddressForm()
        : CountryForm(ZO_IDD_LOC_ADDRESS, kFields, static_cast<int>(std::size(kFields)), ZO_IDC_LOC_ADDRESS_COUNTRY,
                      &Item::m_dwAddressCountryIndex)
    {
    }

private:
    static constexpr Field kFields[] = {
        {ZO_IDC_LOC_USER, Rule::kAny, &Item::m_csUserName, nullptr, 0},
        {ZO_IDC_LOC_COMPANY, Rule::kAny, &Item::m_csCompany, nullptr, 0},
        {ZO_IDC_LOC_DEPARTMENT, Rule::kAny, &Item::m_csDept, nullptr, 0},
        {ZO_IDC_LOC_STREET, Rule::kAny, &Item::m_csAddress1, nullptr, 0},
        {ZO_IDC_LOC_STREET2, Rule::kAny, &Item::m_csAddress2, nullptr, 0},
        {ZO_IDC_LOC_CITY, Rule::kAny, &Item::m_csCity, nullptr, 0},
        {ZO_IDC_LOC_STATE, Rule::kAny, &Item::m_csState, nullptr, 0},
        {ZO_IDC_LOC_ZIP, Rule::kAny, &Item::m_csZipCode, nullptr, 0},
        {ZO_IDC_LOC_EMAIL, Rule::kEMail, &Item::m_csEMail, nullptr, 0},
        {ZO_IDC_LOC_COMPUSERVE, Rule::kAny, &Item::m_csCompuserve, nullptr, 0},
    };
};

class PlaceForm : public CountryForm {
public:
    explicit PlaceForm(const LocationSet* names)
        : CountryForm(ZO_IDD_LOC_PLACE, kFields, static_cast<int>(std::size(kFields)), ZO_IDC_LOC_COUNTRY,
                      &Item::m_dwCountryIndex),
          m_names(names)
    {
    }

    void Begin(CWnd& window) override
    {
        CountryForm::Begin(window);
        ::SendMessageA(Control(ZO_IDC_LOC_NAME), EM_LIMITTEXT, kLongest, 0);
        for (const int control : {ZO_IDC_LOC_NAME_LABEL, ZO_IDC_LOC_NAME})
            ::ShowWindow(Control(control), m_names != nullptr ? SW_SHOW : SW_HIDE);
    }
    void Fill() override
    {
        CountryForm::Fill();
        SetText(ZO_IDC_LOC_NAME, m_item != nullptr ? m_item->m_csLocationName : CString());
    }
    int FindFault(CString& reason) const override;
    /// The code is that of the country, until it is changed.
    void OnCommand(int control, int notification) override
    {
        if (control == ZO_IDC_LOC_COUNTRY && notification == CBN_SELCHANGE && m_box.GetCurSel() >= 0)
            SetText(ZO_IDC_LOC_CODE, CodeText(m_box.GetDialingPrefix(), m_box.GetCountryCode()));
    }

protected:
    void Read(Item& item) const override
    {
        CountryForm::Read(item);
        if (m_names != nullptr)
            item.m_csLocationName = Name();
    }

private:
    static constexpr Field kFields[] = {
        {ZO_IDC_LOC_CODE, Rule::kDialed, &Item::m_csCountryCode, nullptr, 0},
        {ZO_IDC_LOC_AREA, Rule::kDialed, &Item::m_csAreaCityCode, nullptr, 0},
        {ZO_IDC_LOC_INTERNATIONAL, Rule::kDialed, &Item::m_csInternationalAccess, nullptr, 0},
        {ZO_IDC_LOC_LONG_PREFIX, Rule::kDialed, &Item::m_csLongDistancePrefix, nullptr, 0},
    };

    CString Name() const
    {
        CString name = TextOf(ZO_IDC_LOC_NAME);
        name.TrimLeft();
        name.TrimRight();
        return name;
    }

    const LocationSet* const m_names;
};

int PlaceForm::FindFault(CString& reason) const
{
    if (const int fault = CountryForm::FindFault(reason); fault != 0 || m_names == nullptr)
        return fault;
    if (m_box.GetCurSel() < 0 && TextOf(ZO_IDC_LOC_CODE).IsEmpty()) {
        reason = LoadText(ZO_IDS_LOC_NO_COUNTRY);
        return ZO_IDC_LOC_COUNTRY;
    }
    const CString name = Name();
    const int other = m_names->FindName(name);
    if (name.IsEmpty())
        reason = LoadText(ZO_IDS_NAME_EMPTY);
    else if (name.GetLength() > kLongest)
        reason = LoadText(ZO_IDS_LOC_TOO_LONG, "255");
    else if (other >= 0 && &m_names->GetAt(other) != m_item)
        reason = LoadText(ZO_IDS_NAME_TAKEN, name);
    else
        return 0;
    return ZO_IDC_LOC_NAME;
}

// Numbers -------------------------------------------------------------------------------------------------------------

class NumbersForm : public LocationForm {
public:
    NumbersForm() : LocationForm(ZO_IDD_LOC_NUMBERS, kFields, static_cast<int>(std::size(kFields))) {}

private:
    static constexpr Field Area(int control, DWORD kind)
    {
        return {control, Rule::kDialed, nullptr, &Item::m_csaPhoneAreas, kind};
    }
    static constexpr Field Number(int control, DWORD kind)
    {
        return {control, Rule::kDialed, nullptr, &Item::m_csaPhoneNumbers, kind};
    }
    static const Field kFields[2 * ZO_PHONE_KINDS];
};

const LocationForm::Field NumbersForm::kFields[] = {
    Area(ZO_IDC_LOC_AREA_HOME1, ZO_PHONE_HOME1),   Number(ZO_IDC_LOC_PHONE_HOME1, ZO_PHONE_HOME1),
    Area(ZO_IDC_LOC_AREA_HOME2, ZO_PHONE_HOME2),   Number(ZO_IDC_LOC_PHONE_HOME2, ZO_PHONE_HOME2),
    Area(ZO_IDC_LOC_AREA_WORK1, ZO_PHONE_WORK1),   Number(ZO_IDC_LOC_PHONE_WORK1, ZO_PHONE_WORK1),
    Area(ZO_IDC_LOC_AREA_WORK2, ZO_PHONE_WORK2),   Number(ZO_IDC_LOC_PHONE_WORK2, ZO_PHONE_WORK2),
    Area(ZO_IDC_LOC_AREA_DATA, ZO_PHONE_DATA),     Number(ZO_IDC_LOC_PHONE_DATA, ZO_PHONE_DATA),
    Area(ZO_IDC_LOC_AREA_FAX, ZO_PHONE_FAX),       Number(ZO_IDC_LOC_PHONE_FAX, ZO_PHONE_FAX),
    Area(ZO_IDC_LOC_AREA_MOBILE, ZO_PHONE_MOBILE), Number(ZO_IDC_LOC_PHONE_MOBILE, ZO_PHONE_MOBILE),
    Area(ZO_IDC_LOC_AREA_PAGER, ZO_PHONE_PAGER),   Number(ZO_IDC_LOC_PHONE_PAGER, ZO_PHONE_PAGER),
};

} // namespace

std::unique_ptr<LocationForm> MakeLocationForm(int page, const LocationSet* names)
{
    switch (page) {
    case kAddressPage:
        return std::make_unique<AddressForm>();
    case kPlacePage:
        return std::make_unique<PlaceForm>(names);
    case kNumbersPage:
        return std::make_unique<NumbersForm>();
    default:
        return MakeOutsideForm();
    }
}

// Names ---------------------------------------------------------------------------------------------------------------

CString FreeName(const LocationSet& set, const CString& name)
{
    CString free = name, suffix;
    for (int number = 2; number == 2 || set.FindName(free) >= 0; ++number) {
        char cut[kLocationTextSize];
        CopyBounded(cut, sizeof cut - static_cast<size_t>(suffix.GetLength()), name);
        free = cut + suffix;
        suffix.Format(" (%d)", number);
    }
    return free;
}

CString NewName(const LocationSet& set, DWORD index)
{
    CString name;
    name.Format("%s_%08lu", static_cast<LPCSTR>(LoadText(ZO_IDS_LOC_DEFAULT_NAME)), index);
    return FreeName(set, name);
}

CString StatusText(DWORD status)
{
    constexpr DWORD kMostOfSystem = 0xFFFF;
    CString text;
    text.Format(status <= kMostOfSystem ? "%lu" : "0x%08lX", status);
    return text;
}
