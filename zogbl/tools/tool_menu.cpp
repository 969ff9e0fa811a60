#include <zogbl/tool_menu.h>

#include "field.h"

IMPLEMENT_DYNAMIC(CTlmMenu, CObject)

namespace {

struct MenuPlace {
    HMENU menu;
    int position;
};

/// Where a command stands in the submenus of a menu bar, the last one first; menu is null when it is in none.
MenuPlace FindCommand(HMENU menuBar, UINT command)
{
    for (int i = GetMenuItemCount(menuBar) - 1; i >= 0; --i) {
        const HMENU menu = GetSubMenu(menuBar, i);
        const int count = menu != nullptr ? GetMenuItemCount(menu) : 0;
        for (int position = 0; position < count; ++position) {
            if (GetMenuItemID(menu, position) == command)
                return {menu, position};
        }
    }
    return {nullptr, 0};
}

} // namespace

CTlmMenu::CTlmMenu() = default;

CTlmMenu::~CTlmMenu() { FreeAllMemory(); }

void CTlmMenu::FreeAllMemory()
{
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i)
        delete m_items[i];
    m_items.RemoveAll();
}

DWORD CTlmMenu::LoadFile(const char* path)
{
    if (path == nullptr)
        return ZO_TLM_NO_NAME;
    FreeAllMemory();
    return CTlmFile().LoadFileData(path, ZO_TLM_FILE_VERSION, ZO_TLM_HEADER_SIZE, &m_items, ZO_TLM_FOR_MENU);
}

DWORD CTlmMenu::RefreshMenu(UINT markerCommand)
{
    const CWnd* window = AfxGetMainWnd();
    const HMENU menuBar = window != nullptr ? ::GetMenu(window->m_hWnd) : nullptr;
    if (menuBar == nullptr)
        return ZO_TLM_NO_MENU;
    const MenuPlace marker = FindCommand(menuBar, markerCommand);
    if (marker.menu == nullptr)
        return ZO_TLM_NO_MARKER;
    while (DeleteMenu(marker.menu, static_cast<UINT>(marker.position) + 1, MF_BYPOSITION)) {
    }
    if (!m_items.IsEmpty())
        AppendMenuA(marker.menu, MF_SEPARATOR, 0, nullptr);
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i) {
        const auto* item = static_cast<const CTlmItem*>(m_items[i]);
        AppendMenuA(marker.menu, MF_STRING, item->GetCommand(), FieldText(item->GetRecord().szMenuText));
    }
    return 0;
}

CTlmItem* CTlmMenu::FindItem(UINT command) const
{
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i) {
        auto* item = static_cast<CTlmItem*>(m_items.GetAt(i));
        if (item->GetCommand() == command)
            return item;
    }
    return nullptr;
}

int CTlmMenu::DoCommandMessage(UINT id, int code, CCmdUI* cmdUI, CWnd* parent)
{
    const bool isUpdate = code == static_cast<int>(CN_UPDATE_COMMAND_UI);
    if (code != CN_COMMAND && !isUpdate)
        return 0;
    CTlmItem* item = FindItem(id);
    if (item == nullptr)
        return 0;
    if (!isUpdate)
        m_dwLastStatus = item->ActivateItem(parent);
    else if (cmdUI != nullptr)
        cmdUI->Enable(TRUE);
    else
        return 0;
    return 1;
}

int CTlmMenu::GetMessageString(UINT id, CString& text) const
{
    text.Empty();
    const CTlmItem* item = FindItem(id);
    if (item == nullptr)
        return 0;
    item->GetDataDescription(text);
    return 1;
}
