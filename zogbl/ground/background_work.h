/// \file
/// Work that can take long, in a thread that nobody has to wait for.
#pragma once

#include "system_handle.h"

#include <memory>

/// Loads this library once more, for a thread: FreeLibraryAndExitThread ends both. \return null if it cannot be had
HMODULE HoldLibrary();

/// Does its work in a thread of its own. If whoever began it leaves it alone, object and thread end with the work, and
/// the library stays loaded until then. So Work touches nothing but the object's own data.
///
///     BackgroundPtr<Reading> reading(new Reading(path)); // throws CMemoryException*
///     reading->Begin();
///     if (reading->IsOver(400))
///         Show(*reading);                                // else ask again, or reset(), which leaves it alone
class BackgroundWork {
public:
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;

    /// If there can be no thread, the work is done before this returns.
    void Begin();
    /// Waits for at most so many milliseconds. \return whether the work is done: then its data may be read
    bool IsOver(DWORD patience = 0) const;
    bool HasFailed() const { return m_hasFailed; } ///< an exception ended the work: memory ran out
    /// The object may not be used any more.
    void Leave();

protected:
    BackgroundWork() = default;
    virtual ~BackgroundWork() = default;
    virtual void Work() = 0; ///< may throw CMemoryException*

private:
    static DWORD WINAPI Run(LPVOID work);
    void WorkSafely();

    SystemHandle m_thread; // none: the work was done at once
    HMODULE m_library = nullptr;
    LONG m_references = 1; // whoever began it, and the thread
    bool m_hasFailed = false;
};

struct LeaveWork {
    void operator()(BackgroundWork* work) const { work->Leave(); }
};
template <class WORK> using BackgroundPtr = std::unique_ptr<WORK, LeaveWork>;
