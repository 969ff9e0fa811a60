// Profile files beside the bare system calls, and a profile file in memory beside a library of that kind.
#include "families.h"
#include "harness.h"

#include <zogbl/file_functions.h>
#include <zogbl/mem_ini_file.h>

#define SI_IMPLEMENTATION // the code too, not declarations alone
#include <SimpleIni.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr Limits kProfileLimits = {0, 1.10};
constexpr Limits kMemoryLoadLimits = {0, 1.2};
constexpr Limits kMemorySaveLimits = {0, 1.5};

// As many sections and keys as a profile file of the suite's has.
constexpr int kSectionCount = 8;
constexpr int kKeyCount = 8;
constexpr char kSection[] = "Section04";
constexpr char kTextKey[] = "Key04";
constexpr char kOtherTextKey[] = "Key06";
constexpr char kNumberKey[] = "Key05";
constexpr char kText[] = "C:\\Program Files\\Zo\\Suite\\Outgoing";
constexpr char kOtherText[] = "C:\\Program Files\\Zo\\Suite\\Incoming";
constexpr int kNumber = 1;

// As large as a list of names holds, 4096 characters: sections, and keys in each of them.
constexpr int kLargeCount = 16;
constexpr int kLargeNameLength = 250;

void RequireStatus(DWORD status) { Require(status == ZO_INI_SUCCESS, "an operation on a profile file failed"); }

/// A profile file of this process alone; gone with the object.
class ProfileFile {
public:
    ProfileFile(LPCSTR name, const CString& text)
    {
        char folder[MAX_PATH];
        Require(GetTempPathA(sizeof folder, folder) != 0, "there is no temporary folder");
        m_path.Format("%sZoBenchmark-%lu-%s.ini", folder, GetCurrentProcessId(), name);
        CFile file(m_path, CFile::modeCreate | CFile::modeWrite);
        file.Write(static_cast<LPCSTR>(text), static_cast<UINT>(text.GetLength()));
        // An old file: what was written a moment ago is not kept in the system's cache.
        constexpr FILETIME kOld = {0, 0x01C00000};
        Require(SetFileTime(file.m_hFile, &kOld, &kOld, &kOld), "a file's time could not be set");
    }
    ~ProfileFile() { CZoGlobalFileFunctions::Delete(m_path); }
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;

    LPCSTR GetPath() const { return m_path; }

private:
    CString m_path;
};

CString MakeText()
{
    CString text;
    for (int section = 0; section < kSectionCount; ++section) {
        CString line;
        line.Format("[Section%02d]\r\n", section);
        text += line;
        for (int key = 0; key < kKeyCount; ++key) { // texts and numbers in turn
            line.Format("Key%02d=%s\r\n", key, key % 2 == 0 ? kText : "1");
            text += line;
        }
    }
    return text;
}

CString LargeName(LPCSTR kind, int number)
{
    CString name;
    name.Format("%s %02d ", kind, number);
    return name + CString('x', kLargeNameLength - name.GetLength());
}

CString MakeLargeText()
{
    CString text;
    for (int section = 0; section < kLargeCount; ++section) {
        text += "[" + LargeName("Section", section) + "]\r\n";
        for (int key = 0; key < kLargeCount; ++key)
            text += LargeName("Key", key) + "=" + kText + "\r\n";
    }
    return text;
}

// The bare calls ------------------------------------------------------------------------------------------------------

void ReadText(LPCSTR path, LPSTR text, DWORD size)
{
    GetPrivateProfileStringA(kSection, kTextKey, "", text, size, path);
    Require(std::strcmp(text, kText) == 0, "a text came back wrong");
}

/// The names of the sections and the lines of each of them.
void ReadSections(LPCSTR path)
{
    char names[ZO_INI_VALUE_SIZE];
    GetPrivateProfileStringA(nullptr, nullptr, "", names, sizeof names, path);
    int count = 0;
    for (LPCSTR name = names; *name != '\0'; name += std::strlen(name) + 1) {
        char lines[0x4000];
        Require(GetPrivateProfileSectionA(name, lines, sizeof lines, path) > kLargeCount * kLargeNameLength,
                "lines are missing");
        ++count;
    }
    Require(count == kLargeCount, "sections are missing");
}

// In memory -----------------------------------------------------------------------------------------------------------

/// Loading, looking up and saving; both libraries compare names with their case.
void MeasureMemory(Harness& harness)
{
    const ProfileFile file("large", MakeLargeText());
    const LPCSTR path = file.GetPath();
    const CString section = LargeName("Section", 8);
    const CString key = LargeName("Key", 8);

    CZoMemIniFile memory;
    CSimpleIniCaseA peer;
    const auto load = [path](CZoMemIniFile& into) { RequireStatus(into.LoadIniFile(path, nullptr)); };
    const auto loadPeer = [path](CSimpleIniCaseA& into) {
        Require(into.LoadFile(path) == SI_OK, "SimpleIni could not load a file");
    };
    load(memory);
    loadPeer(peer);
    harness.Compare("profiles: memory load", {{"CZoMemIniFile::LoadIniFile",
                                               [=] {
                                                   CZoMemIniFile loaded;
                                                   load(loaded);
                                               }},
                                              {"SimpleIni: LoadFile", [=] {
                                                   CSimpleIniCaseA loaded;
                                                   loadPeer(loaded);
                                               }}});
    harness.Compare("profiles: memory look-up", {{"CZoMemIniFile::GetIniValue",
                                                  [&] {
                                                      CString value;
                                                      RequireStatus(memory.GetIniValue(section, key, value));
                                                      Require(value == kText, "a text came back wrong");
                                                  }},
                                                 {"SimpleIni: GetValue", [&] {
                                                      Require(std::strcmp(peer.GetValue(section, key, ""), kText) == 0,
                                                              "a text came back wrong");
                                                  }}});

    // The end of the object makes the system forget the file; so does the last of the bare calls.
    harness.Compare("profiles: memory load, sections",
                    {{"CZoMemIniFile::LoadIniFile",
                      [=] {
                          CZoMemIniFile loaded;
                          load(loaded);
                      }},
                     {"GetPrivateProfileSection for each",
                      [=] {
                          ReadSections(path);
                          WritePrivateProfileStringA(nullptr, nullptr, nullptr, path);
                      }}},
                    kMemoryLoadLimits);

    // A file that was just written is read anew by each call, several in a save: few rounds, one operation each.
    const unsigned rounds = (std::max)(harness.GetRounds() / 5, 4u);
    const auto save = [&](LPCSTR text, Samples& samples) {
        RequireStatus(memory.DeleteIniKey(section, key)); // so that the key is not listed twice
        RequireStatus(memory.SetIniValue(section, key, text));
        const long long start = Ticks();
        RequireStatus(memory.SaveIniFile(FALSE));
        samples.nanoseconds.push_back(Nanoseconds(Ticks() - start));
    };
    constexpr char kSaveName[] = "profiles: memory save";
    if (harness.Wants(kSaveName)) {
        Samples saved = {"CZoMemIniFile::SaveIniFile", {}};
        Samples peerSaved = {"SimpleIni: SaveFile", {}};
        for (unsigned round = 0; round < rounds; ++round) {
            const LPCSTR text = round % 2 == 0 ? kOtherText : kText; // one value changes
            save(text, saved);
            Require(peer.SetValue(section, key, text) == SI_UPDATED, "SimpleIni could not set a value");
            const long long start = Ticks();
            Require(peer.SaveFile(path) == SI_OK, "SimpleIni could not save a file");
            peerSaved.nanoseconds.push_back(Nanoseconds(Ticks() - start));
        }
        harness.Add(kSaveName, {saved, peerSaved}, Unit::milliseconds);
    }
    constexpr char kSaveSectionsName[] = "profiles: memory save, sections";
    if (harness.Wants(kSaveSectionsName)) {
        Samples saved = {"CZoMemIniFile::SaveIniFile", {}};
        Samples floor = {"GetPrivateProfileSection for each, one write", {}};
        const CString otherKey = LargeName("Key", 9); // its own, for what is there already is not written
        const auto saveBare = [&](LPCSTR text) {
            const long long start = Ticks();
            ReadSections(path);
            Require(WritePrivateProfileStringA(section, otherKey, text, path), "a call failed");
            floor.nanoseconds.push_back(Nanoseconds(Ticks() - start));
        };
        for (unsigned round = 0; round < rounds; ++round) {
            const LPCSTR text = round % 2 == 0 ? kOtherText : kText;
            saveBare(text);
            save(text, saved);
        }
        harness.Add(kSaveSectionsName, {saved, floor}, Unit::milliseconds, kMemorySaveLimits);
    }
}

} // namespace

void MeasureProfiles(Harness& harness)
{
    const ProfileFile file("small", MakeText());
    const LPCSTR path = file.GetPath();
    CZoIniFile profile;
    RequireStatus(profile.SetFileName(path));
    RequireStatus(profile.SetSection(kSection));

    harness.Compare("profiles: string read",
                    {{"CZoIniFile::DoString",
                      [&] {
                          char text[260];
                          RequireStatus(profile.DoString(kTextKey, TRUE, "", text, sizeof text));
                          Require(std::strcmp(text, kText) == 0, "a text came back wrong");
                      }},
                     {"GetPrivateProfileString",
                      [=] {
                          char text[260];
                          ReadText(path, text, sizeof text);
                      }},
                     {"GetPrivateProfileString, 4097 characters",
                      [=] {
                          char text[ZO_INI_VALUE_SIZE];
                          ReadText(path, text, sizeof text);
                      }}},
                    kProfileLimits);
    harness.Compare("profiles: integer read",
                    {{"CZoIniFile::DoInteger",
                      [&] {
                          int number = 0;
                          RequireStatus(profile.DoInteger(kNumberKey, TRUE, 0, &number));
                          Require(number == kNumber, "a number came back wrong");
                      }},
                     {"GetPrivateProfileString, atoi",
                      [=] {
                          char text[40];
                          GetPrivateProfileStringA(kSection, kNumberKey, "", text, sizeof text, path);
                          Require(std::atoi(text) == kNumber, "a number came back wrong");
                      }}},
                    kProfileLimits);
    harness.Compare("profiles: 8 sections listed",
                    {{"CZoIniFile::EnumerateSections",
                      [&] {
                          CStringArray names;
                          RequireStatus(profile.EnumerateSections(&names));
                          Require(names.GetSize() == kSectionCount, "sections are missing");
                      }},
                     {"GetPrivateProfileString",
                      [=] {
                          char list[ZO_INI_VALUE_SIZE];
                          GetPrivateProfileStringA(nullptr, nullptr, "", list, sizeof list, path);
                          int count = 0;
                          for (LPCSTR name = list; *name != '\0'; name += std::strlen(name) + 1)
                              ++count;
                          Require(count == kSectionCount, "sections are missing");
                      }}},
                    kProfileLimits);
    // Another text each time, and a key for each: what is there already would not be written.
    harness.Compare("profiles: string write",
                    {{"CZoIniFile::DoString",
                      [&, isText = true]() mutable {
                          isText = !isText;
                          RequireStatus(profile.DoString(kTextKey, FALSE, isText ? kText : kOtherText, nullptr, 0));
                      }},
                     {"WritePrivateProfileString",
                      [=, isText = true]() mutable {
                          isText = !isText;
                          const LPCSTR text = isText ? kText : kOtherText;
                          Require(WritePrivateProfileStringA(kSection, kOtherTextKey, text, path), "a call failed");
                      }}},
                    kProfileLimits);
    MeasureMemory(harness);
}
