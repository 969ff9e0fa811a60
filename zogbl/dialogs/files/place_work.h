/// \file
/// What is asked of drives and folders in threads of their own: a network or a medium may take minutes to answer.
#pragma once

#include "ground/background_work.h"
#include "places.h"

/// What a drive is, and its place in the network. It is not read.
class DriveWork : public BackgroundWork {
public:
    explicit DriveWork(LPCSTR root) : m_root(root) {} ///< throws CMemoryException*

    const CString& GetRoot() const { return m_root; }
    /// Known before the place in the network is, so also while the work goes on.
    PlacePicture GetPicture() const;
    const NetworkPlace& GetPlace() const { return m_place; } ///< when the work is over

private:
    ~DriveWork() override = default;
    void Work() override;

    CString m_root;
    mutable LONG m_picture = static_cast<LONG>(PlacePicture::kDrive);
    NetworkPlace m_place;
};

/// What is to be found out. Empty texts: not that.
struct PlaceQuestion {
    CString create;   ///< a folder that is made first
    CString named;    ///< what may be a folder, a file or nothing
    CString extended; ///< the same with the default extension
    std::vector<CString>
        folders;            ///< the first that can be read is wanted; \p named comes before them if it is a folder
    CString patterns;       ///< of the files wanted
    bool withAbove = false; ///< what the folders that it lies in hold is wanted, too
};

struct PlaceAnswer {
    DWORD createError = ERROR_SUCCESS;
    bool isFolder = false;                              ///< \p named is one
    bool hasParent = false;                             ///< the folder of \p named is there
    DWORD attributes = INVALID_FILE_ATTRIBUTES;         ///< of \p named
    DWORD extendedAttributes = INVALID_FILE_ATTRIBUTES; ///< of \p extended
    DWORD error = ERROR_SUCCESS;                        ///< why the first folder cannot be read
    CString folder;                                     ///< that could be read; empty: none
    FolderContents contents;
    bool isSilent = false;             ///< a drive has not answered
    std::vector<FolderContents> above; ///< from the root down to the folder, if wanted
};

constexpr DWORD kPlacePatience = 400;  // milliseconds for an answer, before it is shown that there is none yet
constexpr UINT kLookAtPlaceEvery = 50; // milliseconds, from then on

class PlaceWork : public BackgroundWork {
public:
    explicit PlaceWork(PlaceQuestion question) : m_question(std::move(question)) {}

    PlaceAnswer& GetAnswer() { return m_answer; } ///< when the work is over

private:
    ~PlaceWork() override = default;
    void Work() override;
    void ReadFirst();
    void ReadAbove();

    PlaceQuestion m_question;
    PlaceAnswer m_answer;
};
