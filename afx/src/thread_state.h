/// \file
/// What the framework keeps for each thread: windows belong to the thread that made them.
#pragma once

#include <afxcmn.h>

#include "handle_map.h"

#include <utility>

struct AfxWindowHook;

/// The tip control of a thread and the one tool that it has at a time.
struct ThreadTips {
    HWND control = nullptr; ///< ends with the window that owns it
    HWND window = nullptr;  ///< that has the tool; null: none
    INT_PTR hit = -1;       ///< what OnToolHitTest answered
    UINT_PTR id = 0;        ///< of the tool, its window if it is one
};

struct ThreadState {
    CWinThread* thread = nullptr;
    MSG lastMessage = {};                ///< being handled, for CWnd::Default
    AfxWindowHook* windowHook = nullptr; ///< waits for the next window to be created
    ThreadTips tips;
    HandleMap<CWnd, HWND, &CWnd::m_hWnd> windows;
    HandleMap<CMenu, HMENU, &CMenu::m_hMenu> menus;
    HandleMap<CGdiObject, HGDIOBJ, &CGdiObject::m_hObject> gdiObjects;
    HandleMap<CDC, HDC, &CDC::m_hDC> deviceContexts;
    HandleMap<CImageList, HIMAGELIST, &CImageList::m_hImageList> imageLists;

    void DeleteTemporary() ///< in all maps
    {
        windows.DeleteTemporary();
        menus.DeleteTemporary();
        gdiObjects.DeleteTemporary();
        deviceContexts.DeleteTemporary();
        imageLists.DeleteTemporary();
    }
};

/// The calling thread's state; null when it has none, and then it has no windows either.
ThreadState* FindThreadState();
/// The calling thread's state, made on first use.
ThreadState* GetThreadState();

/// Takes its handle from an object. A thread without a state, at the end of the process for one, has no map either.
template <class OBJECT, class HANDLE, HANDLE OBJECT::*MEMBER>
HANDLE DetachHandle(HandleMap<OBJECT, HANDLE, MEMBER> ThreadState::*map, OBJECT* object)
{
    ThreadState* state = object->*MEMBER != nullptr ? FindThreadState() : nullptr;
    if (state != nullptr)
        (state->*map).RemovePermanent(object->*MEMBER, object);
    return std::exchange(object->*MEMBER, nullptr);
}

/// Waits for a message, offers it to the windows and dispatches it. \return FALSE for WM_QUIT, left in \p message.
BOOL PumpOneMessage(MSG* message);
/// The result of a message whose handler failed with \p e; tells the user of it.
LRESULT AnswerFailedMessage(CException* e, const MSG* message);
