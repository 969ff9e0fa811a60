#include "place_work.h"

#include <algorithm>

namespace {

/// Whether the drive has answered, if only that it has no such folder: then others on it may be readable.
bool HasAnswered(DWORD error)
{
    constexpr DWORD kAnswers[] = {ERROR_FILE_NOT_FOUND,      ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED,
                                  ERROR_INVALID_NAME,        ERROR_DIRECTORY,      ERROR_BAD_PATHNAME,
                                  ERROR_FILENAME_EXCED_RANGE};
    return std::find(std::begin(kAnswers), std::end(kAnswers), error) != std::end(kAnswers);
}

} // namespace

PlacePicture DriveWork::GetPicture() const
{
    return static_cast<PlacePicture>(::InterlockedCompareExchange(&m_picture, 0, 0));
}

void DriveWork::Work()
{
    const PlacePicture picture = PictureOfDrive(m_root);
    ::InterlockedExchange(&m_picture, static_cast<LONG>(picture));
    if (picture == PlacePicture::kNetworkDrive)
        m_place = NetworkPlaceOf(m_root);
}

void PlaceWork::Work()
{
    const NoSystemBoxes guard;
    if (!m_question.create.IsEmpty() && !::CreateDirectoryA(m_question.create, nullptr)) {
        m_answer.createError = ::GetLastError();
        return;
    }
    if (!m_question.named.IsEmpty()) {
        m_answer.attributes = ::GetFileAttributesA(m_question.named);
        m_answer.isFolder =
            m_answer.attributes != INVALID_FILE_ATTRIBUTES && (m_answer.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        m_answer.hasParent = m_answer.isFolder || FolderExists(ParentOf(m_question.named));
    }
    if (m_answer.isFolder)
        m_question.folders.insert(m_question.folders.begin(), m_question.named);
    else if (!m_question.extended.IsEmpty())
        m_answer.extendedAttributes = ::GetFileAttributesA(m_question.extended);
    ReadFirst();
    if (m_question.withAbove && !m_answer.folder.IsEmpty())
        ReadAbove();
}

void PlaceWork::ReadFirst()
{
    CString silent; // the root of a drive that does not answer
    for (const CString& folder : m_question.folders) {
        if (!silent.IsEmpty() && RootOf(folder).CompareNoCase(silent) == 0)
            continue;
        FolderContents contents;
        const DWORD error = ReadFolder(folder, m_question.patterns, contents);
        if (error == ERROR_SUCCESS) {
            m_answer.folder = folder;
            m_answer.contents = std::move(contents);
            return;
        }
        if (m_answer.error == ERROR_SUCCESS)
            m_answer.error = error;
        if (!HasAnswered(error)) {
            silent = RootOf(folder);
            m_answer.isSilent = true;
        }
    }
}

void PlaceWork::ReadAbove()
{
    std::vector<CString> folders;
    AddWithAllAbove(folders, m_answer.folder);
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)
        ReadFolder(*folder, nullptr, m_answer.above.emplace_back()); // one that cannot be read lists nothing
}
