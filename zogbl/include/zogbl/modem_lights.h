/// \file
/// The lights of a modem.
#pragma once

#include <zogbl/control.h>

class ControlTip;
class CZoTransBmp;
class PortWatch;

/// The port was let go, because it failed or does not answer; ZoLightsDetached tells why. Detach sends none.
constexpr UINT ZON_LIGHTS_DETACHED = ZON_FIRST - 180;

struct ZoLightsDetached {
    NMHDR header;
    DWORD status; ///< of GetDetachStatus
};

/// A row of lights with captions, as on a modem. The program switches them. CD and CTS follow a port, if one is
/// attached; RD and SD flash when the program says that bytes have come or gone.
///
///     m_lights.Create(WS_VISIBLE, area, this, IDC_LIGHTS);
///     m_lights.Attach(m_line.m_hComm);
///     m_lights.SetLight(CZoModemLights::kOH, TRUE);
///     ... WriteFile(m_line.m_hComm, ...);
///     m_lights.ReportSent();
///
/// It has no keys and no focus. A tip over each light says what it is: "CD, carrier". For screen readers it is an
/// indicator of that name, which is checked while it is lit; changes are told at most twice a second, those of RD and
/// SD never.
///
/// One timer runs while a port is attached and the lights can be seen, while RD or SD flashes, and for the half second
/// in which a change waits to be told to screen readers. All is for the thread of the window.
class ZOGBL_API CZoModemLights : public CZoControl {
    DECLARE_DYNAMIC(CZoModemLights)
public:
    enum Light {
        kOH,  ///< off hook
        kCD,  ///< carrier
        kTR,  ///< terminal ready (DTR)
        kRD,  ///< receives data
        kSD,  ///< sends data
        kCTS, ///< clear to send
        kRTS, ///< request to send
        kHS,  ///< high speed
        kFree ///< the first of those for the program's own use
    };
    static constexpr int kLightCount = 16;   ///< those of its own included
    static constexpr int kMostCaption = 15;  ///< bytes
    static constexpr DWORD kLeastFlash = 60; ///< milliseconds that RD and SD stay lit
    static constexpr UINT kAskEach = 100;    ///< milliseconds between two questions to the port
    static constexpr int kPatience = 10;     ///< looks at the port without an answer, until it is let go

    CZoModemLights();
    ~CZoModemLights() override;

    /// Which lights are shown, in this order. At the beginning: all but the program's own.
    /// \return FALSE, changing nothing, for a number that is no light or occurs twice
    BOOL ShowLights(const Light* lights, int count);
    /// Another caption and name. \param caption below the light, at most kMostCaption bytes: "AA"
    /// \param name for its tip and for screen readers, in the user's language: "auto answer"
    /// \return FALSE, changing nothing, for no light, a null, a longer caption, and if memory has run out
    BOOL SetLightTexts(Light light, LPCSTR caption, LPCSTR name);

    /// \return FALSE, changing nothing, for no light, and for CD and CTS while a port is attached
    BOOL SetLight(Light light, BOOL isOn);
    BOOL IsLit(Light light) const;
    void ReportReceived(); ///< RD flashes, or goes on doing so
    void ReportSent();     ///< SD likewise

    /// Lets CD and CTS follow a port. The handle stays the caller's. Detach before you close it: another port may get
    /// its number. The port is asked in another thread, so the program goes on if the question waits: on a handle that
    /// is not for overlapped use, it does so behind a pending read.
    /// \return 0; ERROR_INVALID_HANDLE for none; ZoErrOutOfMemory; a status of the system, if there can be no thread.
    /// On failure nothing is attached
    DWORD Attach(HANDLE port);
    void Detach(); ///< CD and CTS go out
    BOOL IsAttached() const { return m_pWatch != nullptr; }
    /// Why the port was let go: its error, ERROR_INVALID_HANDLE for instance if it was closed; ERROR_TIMEOUT if it did
    /// not answer. \return 0 while one is attached, and after Detach
    DWORD GetDetachStatus() const { return m_dwDetachStatus; }

    /// Other pictures: two cells side by side, dark and lit, or several such rows, one below the other, for the lights
    /// by their numbers; the last row serves the lights behind it. They stay the caller's, as long as they are used.
    /// \param pictures null: the control's own, in the size of the font and the colours of the scheme
    /// \return FALSE, changing nothing, if they are not of two columns
    BOOL SetPictures(CZoTransBmp* pictures);
    CSize GetBestSize() const; ///< in pixels, for all that is shown

    int GetPartCount() const override; ///< the lights that are shown
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Measures {
        CSize cell; // a light and its caption
        CSize picture;
        int textHeight;
    };

    static bool IsLight(int light) { return light >= 0 && light < kLightCount; }
    LPCSTR CaptionOf(Light light) const;
    CString NameOf(Light light) const;
    Measures Measure() const;
    CRect GetCell(int part) const;
    CRect GetPicturePlace(const CRect& cell) const;
    void DrawLight(CDC* dc, CZoTransBmp* pictures, Light light, const CRect& cell);
    CZoTransBmp* GetPictures();
    void Change(Light light, bool isOn);
    void Flash(Light light, DWORD& since);
    void EndFlash(Light light, DWORD since, DWORD now);
    void Refresh(Light light);
    void TellReaders(DWORD now);
    DWORD GetUntold() const;
    bool LookAtPort();
    void LetGo(DWORD status);
    void OnTick();
    void RunTimer();

    Light m_shown[kLightCount];
    int m_nShown;
    CString m_captions[kLightCount]; // empty: its own
    CString m_names[kLightCount];
    DWORD m_dwOn = 0;       // a bit for each light: those that are switched on
    DWORD m_dwFlashing = 0; // RD and SD, for a moment
    DWORD m_dwTold = 0;     // those that are lit, as screen readers know them
    DWORD m_dwToldAt = 0;   // milliseconds of the system's counter, as all times here
    DWORD m_dwReceivedAt = 0;
    DWORD m_dwSentAt = 0;
    DWORD m_dwAskedAt = 0;
    int m_nUnanswered = 0;
    DWORD m_dwDetachStatus = 0;
    UINT m_nPeriod = 0; // of the timer; 0: there is none
    PortWatch* m_pWatch = nullptr;
    Measures m_measures = {};
    CZoTransBmp* m_pPictures = nullptr;    // the caller's, or null
    CZoTransBmp* m_pOwnPictures = nullptr; // null until they are drawn
    ControlTip* m_pTip = nullptr;
};
