#include <zogbl/new_document_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include <zomfx/multi_doc_template.h>

#include "controls/drawing/list_rows.h"

#include <algorithm>

namespace {

// Pixels, from the left edge of an item or the right edge of its icon.
constexpr int kIconOffset = 5;
constexpr int kBackgroundOffset = 10;
constexpr int kTextOffset = 15;

/// The resource number of a document template; 0 for one that does not tell.
UINT ResourceId(CDocTemplate* documentType)
{
    const auto* known = DYNAMIC_DOWNCAST(CZoMultiDocTemplate, documentType);
    return known != nullptr ? known->GetResourceID() : 0;
}

} // namespace

BEGIN_MESSAGE_MAP(CZoNewBrixelDocType, CZoDialog)
    ON_LBN_SELCHANGE(ZO_IDC_NEW_DOCUMENT_TYPES, OnSelectionChanged)
    ON_LBN_DBLCLK(ZO_IDC_NEW_DOCUMENT_TYPES, OnOK)
    ON_WM_MEASUREITEM()
    ON_WM_DRAWITEM()
END_MESSAGE_MAP()

CZoNewBrixelDocType::CZoNewBrixelDocType(CWinApp* application, CWnd* parent)
    : CZoDialog(ZO_IDD_NEW_DOCUMENT, parent), m_pApplication(application)
{
}

INT_PTR CZoNewBrixelDocType::DoModal()
{
    m_pDocTemplate = nullptr;
    return ResultOr<CMemoryException>(IDABORT, [this] { return CZoDialog::DoModal(); });
}

// The list ------------------------------------------------------------------------------------------------------------

CDocTemplate* CZoNewBrixelDocType::ItemTemplate(int index) const
{
    const DWORD_PTR data = index >= 0 ? m_list.GetItemData(index) : static_cast<DWORD_PTR>(LB_ERR);
    return data != static_cast<DWORD_PTR>(LB_ERR) ? reinterpret_cast<CDocTemplate*>(data) : nullptr;
}

BOOL CZoNewBrixelDocType::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    const int count = FillList() ? m_list.GetCount() : 0;
    if (count <= 0) {
        EndDialog(IDABORT);
    } else if (count == 1) {
        m_pDocTemplate = ItemTemplate(0);
        EndDialog(IDOK);
    } else {
        m_list.SetCurSel(0);
        OnSelectionChanged();
        CenterWindow();
    }
    return TRUE;
}

void CZoNewBrixelDocType::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    const int selected = m_list.GetCurSel();
    if (!FillList())
        EndDialog(IDABORT);
    m_list.SetCurSel(selected); // types keep their order
    OnSelectionChanged();
}

/// \return FALSE when an item cannot be added.
BOOL CZoNewBrixelDocType::FillList()
{
    return WithoutThrowing<CMemoryException>([this] {
        if (m_list.m_hWnd == nullptr)
            m_list.SubclassDlgItem(ZO_IDC_NEW_DOCUMENT_TYPES, this);
        m_list.ResetContent();
        for (POSITION position = m_pApplication != nullptr ? m_pApplication->GetFirstDocTemplatePosition() : nullptr;
             position != nullptr;) {
            CDocTemplate* documentType = m_pApplication->GetNextDocTemplate(position);
            CString name;
            if (!documentType->GetDocString(name, CDocTemplate::fileNewName) || name.IsEmpty())
                continue;
            const int index = m_list.AddString(name);
            if (index < 0 || m_list.SetItemDataPtr(index, documentType) == LB_ERR)
                return FALSE;
        }
        return TRUE;
    });
}

void CZoNewBrixelDocType::OnSelectionChanged()
{
    CDocTemplate* documentType = ItemTemplate(m_list.GetCurSel());
    CString text;
    if (documentType == nullptr || !ZoGblLoadString(ResourceId(documentType), text))
        return;
    const int lineFeed = text.ReverseFind('\n');
    if (lineFeed >= 0) // what is no list of names describes nothing: the text stays
        SetDlgItemText(ZO_IDC_NEW_DOCUMENT_DESCRIPTION, (LPCSTR)text + lineFeed + 1);
}

void CZoNewBrixelDocType::OnOK()
{
    m_pDocTemplate = ItemTemplate(m_list.GetCurSel());
    EndDialog(IDOK);
}

// Drawing -------------------------------------------------------------------------------------------------------------

void CZoNewBrixelDocType::MeasureOnce()
{
    if (m_nItemHeight != 0)
        return;
    const WindowFontDC dc(m_hWnd);
    m_nItemHeight = (std::max<int>)(::GetSystemMetrics(SM_CYICON), dc.GetMetrics().tmHeight);
    m_nTextHeight = dc.GetLineHeight();
}

void CZoNewBrixelDocType::OnMeasureItem(int, MEASUREITEMSTRUCT* measure)
{
    MeasureOnce();
    measure->itemHeight = static_cast<UINT>(m_nItemHeight);
}

void CZoNewBrixelDocType::OnDrawItem(int, DRAWITEMSTRUCT* place)
{
    MeasureOnce();
    if ((place->itemAction & (ODA_DRAWENTIRE | ODA_SELECT)) != 0 && ItemTemplate(static_cast<int>(place->itemID))) {
        DrawText(*place);
        DrawIcon(*place);
    }
    if ((place->itemAction & ODA_FOCUS) != 0 || (place->itemState & ODS_FOCUS) != 0)
        ::DrawFocusRect(place->hDC, &place->rcItem);
}

void CZoNewBrixelDocType::DrawText(const DRAWITEMSTRUCT& place) const
{
    const CString text = RowText(place.hwndItem, static_cast<int>(place.itemID));
    const SelectedColors colors(place.hDC, ColorsOf(place));
    const int left = place.rcItem.left + ::GetSystemMetrics(SM_CXICON);
    RECT background = place.rcItem;
    background.left = left + kBackgroundOffset;
    const int top = (place.rcItem.top + place.rcItem.bottom - m_nTextHeight) / 2;
    ::ExtTextOutA(place.hDC, left + kTextOffset, top, ETO_OPAQUE | ETO_CLIPPED, &background, text,
                  static_cast<UINT>(text.GetLength()), nullptr);
}

void CZoNewBrixelDocType::DrawIcon(const DRAWITEMSTRUCT& place) const
{
    const LPCSTR name = MAKEINTRESOURCEA(ResourceId(ItemTemplate(static_cast<int>(place.itemID))));
    const HICON icon = name != nullptr ? ::LoadIconA(ZoGblFindResourceModule(name, RT_GROUP_ICON), name) : nullptr;
    if (icon == nullptr)
        return;
    const int top = (place.rcItem.top + place.rcItem.bottom - ::GetSystemMetrics(SM_CYICON)) / 2;
    ::DrawIcon(place.hDC, place.rcItem.left + kIconOffset, top, icon);
}
