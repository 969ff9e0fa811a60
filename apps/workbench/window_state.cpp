#include "window_state.h"

#include "../user_texts.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr LPCSTR kWindow = "Window";
constexpr int kFarthest = 32000; // where a window can be

CString NameOf(INT_PTR number)
{
    CString name;
    name.Format("Document%d", static_cast<int>(number));
    return name;
}

bool IsNear(LONG number) { return number >= -kFarthest && number <= kFarthest; }

} // namespace

BOOL LoadWindowState(WindowState& state, int pages)
{
    CString text;
    CRect place;
    int isMaximized = 0, page = 0, end = 0;
    if (!ReadUserText(kWindow, text) ||
        std::sscanf(text, "%ld %ld %ld %ld %d %d%n", &place.left, &place.top, &place.right, &place.bottom, &isMaximized,
                    &page, &end) != 6 ||
        end != text.GetLength() || !IsNear(place.left) || !IsNear(place.top) || !IsNear(place.right) ||
        !IsNear(place.bottom) || place.IsRectEmpty() || page < 0 || page >= pages)
        return FALSE;
    state.place = place;
    state.isMaximized = isMaximized != 0;
    state.page = page;
    CString entry;
    for (int i = 0; i < WindowState::kMostDocuments && ReadUserText(NameOf(i), entry) && !entry.IsEmpty(); ++i)
        state.documents.Add(entry);
    return TRUE;
}

DWORD SaveWindowState(const WindowState& state)
{
    CString text;
    text.Format("%ld %ld %ld %ld %d %d", state.place.left, state.place.top, state.place.right, state.place.bottom,
                state.isMaximized, state.page);
    DWORD status = KeepUserText(kWindow, text);
    const INT_PTR count = (std::min)(state.documents.GetSize(), INT_PTR{WindowState::kMostDocuments});
    for (INT_PTR i = 0; i < count && status == ERROR_SUCCESS; ++i)
        status = KeepUserText(NameOf(i), state.documents[i]);
    return status == ERROR_SUCCESS && count < WindowState::kMostDocuments ? KeepUserText(NameOf(count), "") : status;
}
