/// \file
/// Telephone lines: takes a modem's port, talks to the modem, hangs up, shows who calls and what the interface tells.
#pragma once

#include "debug_texts.h"
#include "page.h"

#include "../text_box.h"

#include <zogbl/modem_lights.h>
#include <zogbl/tapi_interface.h>

class LinePage;

/// A line that tells the page of its events.
class WorkbenchLine : public CZoTAPIInterface {
public:
    explicit WorkbenchLine(LinePage& page);

    /// Names of the devices that can be used; \p ids gets the device identifier of each.
    void ListDevices(CStringArray& names, CDWordArray& ids);

    void DoLineCallState(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                         DWORD_PTR dwParam2, DWORD_PTR dwParam3) override;
    void DoLineCallInfo(DWORD hDevice, DWORD dwMsg, DWORD_PTR dwCallbackInstance, DWORD_PTR dwParam1,
                        DWORD_PTR dwParam2, DWORD_PTR dwParam3) override;

private:
    LinePage& m_page;
};

class LinePage : public Page {
public:
    LinePage();

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;
    void Refresh() override;

    // What the buttons do; also for the tour.
    BOOL TakePort();
    void HangUp();
    BOOL Answer(BOOL enable);
    /// Sends bytes to the modem. \return FALSE without a port, or when they do not go out within five seconds.
    BOOL Send(const CString& bytes);
    /// Takes over what the modem has sent. \return how many bytes
    int Receive();

    WorkbenchLine& GetLine() { return m_line; }
    const CString& GetReceived() const { return m_received; }
    void ForgetReceived() { m_received.Empty(); }
    /// What the line has told debuggers and the page, at most the last that the page shows.
    const CString& GetLog() const { return m_logged; }
    void Log(const CString& text);
    /// Before the port is closed: the lights must not ask a port that has gone.
    void LeavePort() { m_lights.Detach(); }

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;

    afx_msg void OnTimer(UINT_PTR timer);
    afx_msg void OnDevice();
    afx_msg void OnTakePort();
    afx_msg void OnHangUp();
    afx_msg void OnAnswer();
    afx_msg void OnSend();
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    BOOL PreparePort();
    void EndFailedCall();
    BOOL Transfer(bool write, char* bytes, DWORD size, DWORD& transferred);
    void ShowState();
    void EnableControls();
    void ShowLights();
    void TakeDebugTexts();
    static void AppendTo(CEdit& view, const CString& text);

    DebugTexts m_debugTexts;
    CString m_logged;
    WorkbenchLine m_line;
    CDWordArray m_deviceIds;
    CString m_received; // at most the last kMostReceived bytes
    CString m_unshown;  // what the terminal does not show yet
    HANDLE m_event = nullptr;
    bool m_isBusy = false;

    CComboBox m_devices;
    CButton m_takePort;
    CButton m_hangUp;
    CButton m_answer;
    CZoModemLights m_lights;
    HANDLE m_lit = INVALID_HANDLE_VALUE; // the port that the lights are for
    TextBox m_terminal;
    CEdit m_command;
    CButton m_send;
    TextBox m_log;
};
