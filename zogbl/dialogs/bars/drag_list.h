/// \file
/// List boxes whose rows can be dragged.
#pragma once

#include <afxwin.h>

/// A list box of the system's whose rows can be dragged elsewhere. A click selects as ever; who moves on with the
/// button held down drags the row. A drag ends without effect by Esc, and if the mouse is lost.
class DragList : public CListBox {
public:
    /// What becomes of a row. Points are on the screen.
    class Client {
    public:
        virtual void OnDragOver(DragList& from, CPoint point) = 0; ///< may set the cursor
        virtual void OnDrop(DragList& from, int row, CPoint point) = 0;
        virtual void OnDragEnded() = 0; ///< however it came; before OnDrop

    protected:
        ~Client() = default;
    };

    explicit DragList(Client& client) : m_client(client) {}

    /// Before which row a point lies, the number of rows for behind the last one. \param point on the screen
    int GetPlaceAt(CPoint point) const;
    /// Shows with a line before which row something would be put; -1: no line.
    void Mark(int place);
    int GetMark() const { return m_nMark; }
    bool IsDragging() const { return m_nDragged >= 0; }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool IsFarFrom(CPoint point) const;
    void Begin();
    int End();

    Client& m_client;
    CPoint m_pressed;    // where the button went down
    int m_nPressed = -1; // the row, while it is held down
    int m_nDragged = -1;
    int m_nMark = -1;
};
