#include <afxwin.h>

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* AFXAPI CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }

namespace {

bool Answers(const AFX_MSGMAP_ENTRY& entry, UINT nMessage, UINT nCode, UINT nID)
{
    if (entry.pnRegistered != nullptr)
        return *entry.pnRegistered != 0 && *entry.pnRegistered == nMessage;
    return entry.nMessage == nMessage && entry.nCode == nCode && entry.nID <= nID && nID <= entry.nLastID;
}

const AFX_MSGMAP_ENTRY* FindEntry(const AFX_MSGMAP*& map, const AFX_MSGMAP_ENTRY* after, UINT nMessage, UINT nCode,
                                  UINT nID)
{
    const AFX_MSGMAP_ENTRY* entry = after != nullptr ? after + 1 : map->lpEntries;
    for (;;) {
        for (; entry->pfn != nullptr; ++entry) {
            if (Answers(*entry, nMessage, nCode, nID))
                return entry;
        }
        if (map->pfnGetBaseMap == nullptr)
            return nullptr;
        map = map->pfnGetBaseMap();
        entry = map->lpEntries;
    }
}

} // namespace

BOOL CCmdTarget::DispatchMessageMap(UINT nMessage, UINT nCode, UINT nID, AFX_CALL& call)
{
    const AFX_MSGMAP* map = GetMessageMap();
    const AFX_MSGMAP_ENTRY* entry = nullptr;
    while ((entry = FindEntry(map, entry, nMessage, nCode, nID)) != nullptr) {
        call.bHandled = TRUE;
        entry->pfn(this, call);
        if (call.bHandled)
            return TRUE;
    }
    return FALSE;
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    const UINT message =
        HIWORD(nCode) != 0 && nCode != static_cast<int>(CN_UPDATE_COMMAND_UI) ? HIWORD(nCode) : WM_COMMAND;
    const UINT code = message == WM_COMMAND ? static_cast<UINT>(nCode) : LOWORD(nCode);
    if (pHandlerInfo != nullptr) { // the caller only asks whether there is a handler
        const AFX_MSGMAP* map = GetMessageMap();
        return FindEntry(map, nullptr, message, code, nID) != nullptr;
    }
    AFX_CALL call;
    call.nID = nID;
    call.pExtra = pExtra;
    return DispatchMessageMap(message, code, nID, call);
}
