/// \file
/// Which buttons a tool bar shows, without windows.
#pragma once

#include <zogbl/tool_bar.h>

#include <vector>

/// The buttons of a program, and which of them the user wants to see. It can be copied.
class ToolBarContent {
public:
    static constexpr int kMostShown = 256; ///< and as many are known

    /// As shipped. \param buttons live as long as this. Throws CMemoryException*.
    ToolBarContent(const ZoToolButton* buttons, int count, bool isAtBottom);

    /// Whether a program may ship these.
    static bool IsValid(const ZoToolButton* buttons, int count);

    void Ship(); ///< As shipped. Throws CMemoryException*.
    /// As the user had it, with the buttons that were not known then.
    /// \return false, changing nothing: the record is damaged. Throws CMemoryException*.
    bool Read(LPCSTR record);
    CString Write() const; ///< Throws CMemoryException*.

    const ZoToolButton& GetButton(int button) const { return m_buttons[button]; }
    int GetCount() const { return m_count; }
    int Find(UINT command) const; ///< the number of a button; -1: a separator, or of no command of the program

    /// Numbers of the buttons to show, and -1 for separators: none at the ends, no two in a row. Throws
    /// CMemoryException*.
    std::vector<int> GetVisible() const;
    /// Places in \c shown of what the program knows, separators included. Throws CMemoryException*.
    std::vector<int> GetRows() const;
    bool IsShown(UINT command) const;
    bool IsFull() const { return shown.size() >= kMostShown; }

    std::vector<int> shown; ///< commands; 0: a separator; also such as the program does not know
    bool isLocked = true;
    bool isAtBottom;

private:
    void AddNew(const std::vector<int>& known);

    const ZoToolButton* m_buttons;
    int m_count;
    bool m_isShippedAtBottom;
    std::vector<int> m_others; // commands that another version of the program has
};

/// The parts of a command's string. Both throw CMemoryException*.
CString ToolName(UINT command);
CString ToolMessage(UINT command);
