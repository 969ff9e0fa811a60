/// \file
/// The buttons of a tool bar, as they stand in it.
#pragma once

#include "tool_bar_content.h"
#include "tool_bar_pictures.h"

class ControlTip;

/// Fills the bar: a handle if the bar is not locked, the buttons that have room and, if some have none, a button for
/// their menu. The parts are these buttons.
class ToolBarStrip : public CZoControl {
public:
    ToolBarStrip(CZoToolBar& bar, const ToolBarContent& content, const ToolBarPictures& pictures);
    ~ToolBarStrip() override;

    int GetBestHeight() const;
    int GetBestWidth() const; ///< with all buttons. Throws CMemoryException*.
    void OnContentChanged();
    /// Asks \p target for the states of the commands. The bar may be gone then.
    void UpdateStates(CFrameWnd& target, BOOL isDisabledWithoutHandler);
    BOOL TakeKeyboard();
    void LeaveKeyboard();
    UINT GetMenuFlags() const; ///< TPM_..., for the direction

    int GetPartCount() const override { return static_cast<int>(m_parts.size()); }
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override { return m_nFocused; }
    BOOL DoPartAction(int part) override;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    void OnReloadTexts() override;
    void OnDragMove(CPoint point) override;
    void OnDragEnd(CPoint point) override;
    void OnDragUndo() override;
    BOOL PreTranslateMessage(MSG* message) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    friend class ToolUpdate;

    static constexpr int kMore = -1;    // the button of the menu
    static constexpr int kDocking = -1; // the bar is being dragged
    struct Part {
        int button; // or kMore
        CRect area;
    };
    struct State {
        bool isEnabled = true;
        int check = 0; // as in CCmdUI
    };

    bool IsPart(int part) const { return part >= 1 && part <= GetPartCount(); }
    const Part& At(int part) const { return m_parts[part - 1]; }
    const State& StateOf(int part) const;
    UINT GetCommand(int part) const;
    CSize ButtonSize() const;
    int GripWidth() const;
    int PartOf(int button) const;
    void SetState(int button, const State& state);
    void InvalidatePart(int part);
    void ShowMessage(int part);
    void SetHot(int part);
    void SetDown(BOOL isDown);
    void FocusPart(int part);
    BOOL OnKey(UINT key, BOOL isRepeated);
    void OnButtonDown(CPoint point);
    void OnMouseMove(CPoint point);
    BOOL Press(int part);
    void OpenMore();
    void Send(UINT command);
    bool IsOverHandle(CPoint point) const;
    void DrawPart(CDC* dc, int part) const;
    CPoint MenuPlace(int part) const;

    CZoToolBar& m_bar;
    const ToolBarContent& m_content;
    const ToolBarPictures& m_pictures;
    std::vector<Part> m_parts;
    std::vector<int> m_gaps;   // middles of separators
    std::vector<int> m_hidden; // buttons without room, -1: separators
    std::vector<State> m_states;
    int m_nChanges = 0; // of the content
    int m_nFocused = 1;
    int m_nHot = 0;     // under the pointer
    int m_nPressed = 0; // by the mouse, while it is held down; or kDocking
    BOOL m_bDown = FALSE;
    bool m_isOutOfDate = false;  // the layout
    BOOL m_bWasAtBottom = FALSE; // when the drag of the bar began
    HWND m_hBefore = nullptr;    // had the focus before
    ControlTip* m_pTip = nullptr;
};
