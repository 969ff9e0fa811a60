/// \file
/// A drive in a list: it stands there at once, and gets its picture and its place in the network later.
#pragma once

#include "place_work.h"

class Drive {
public:
    /// Begins to ask, in a thread for each drive: one that does not answer is not in the way of the others. Throws
    /// CMemoryException*.
    explicit Drive(const CString& root) : m_work(new DriveWork(root)) { m_work->Begin(); }

    const CString& GetRoot() const { return m_work->GetRoot(); }
    /// Waits for at most so many milliseconds. \return whether the system has answered: picture and name are the last
    bool Look(DWORD patience = 0)
    {
        m_isKnown = m_isKnown || m_work->IsOver(patience);
        return m_isKnown;
    }
    bool IsKnown() const { return m_isKnown; }
    PlacePicture GetPicture() const { return m_work->GetPicture(); }
    CString GetName() const; ///< as a person knows it. Throws CMemoryException*.

private:
    BackgroundPtr<DriveWork> m_work;
    bool m_isKnown = false;
};

constexpr UINT kLookAtDrivesEvery = 100; // milliseconds
constexpr DWORD kDrivePatience = 50;     // milliseconds for one of them, before the list is shown as it is

/// All drives together have a moment to answer, before their list is shown.
class DrivesPatience {
public:
    DWORD ForNext() const { return ::GetTickCount() - m_begun < kMost ? kDrivePatience : 0; } ///< in milliseconds

private:
    static constexpr DWORD kMost = 200;
    const DWORD m_begun = ::GetTickCount();
};
