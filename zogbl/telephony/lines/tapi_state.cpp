#include "tapi_state.h"

#include <common/without_throwing.h>

TapiState& GetTapiState()
{
    static TapiState state;
    return state;
}

BOOL TapiState::Enter(CZoTAPIInterface* object)
{
    return WithoutThrowing([=, this] { m_interfaces.Add(object); });
}

void TapiState::Leave(CZoTAPIInterface* object)
{
    for (int i = static_cast<int>(m_interfaces.GetSize()); i-- > 0;) {
        if (m_interfaces.GetAt(i) == object)
            m_interfaces.RemoveAt(i);
    }
    if (m_interfaces.GetSize() == 0)
        m_interfaces.RemoveAll(); // gives its memory back
}

BOOL PumpMessage(DWORD milliseconds)
{
    MSG message;
    if (!PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT);
        return TRUE;
    }
    if (message.message == WM_QUIT) {
        PostQuitMessage(static_cast<int>(message.wParam));
        return FALSE;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
    return TRUE;
}
