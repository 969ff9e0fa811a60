#include "arguments.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

const char* const kHelp = "Registers a product of the suite, so that its programs find their settings.\n"
                          "\n"
                          "  ZoProvision [options] [EXECUTABLE ...]\n"
                          "\n"
                          "Each executable names its product by its version resource: company, product name and\n"
                          "product version. Without one, the Workbench beside this program is registered. The class\n"
                          "library is registered with the first product and taken out with the last. Running it\n"
                          "again changes nothing that is there. Installations of a product in several folders share\n"
                          "its settings.\n"
                          "\n"
                          "  --user NAME          register this user instead of the one logged on\n"
                          "  --languages ID,ID    language ids in hexadecimal, for example 0409,0407; without this\n"
                          "                       option those whose library lies beside this program\n"
                          "  --current ID         make this the current language\n"
                          "  --remove             take the product out of the registry if it is installed in no other\n"
                          "                       folder; with --user, that user only\n"
                          "  --help               this text\n"
                          "\n"
                          "Exit code: 0 done, 1 something failed, 2 the command line makes no sense.\n";

namespace {

/// Reads one language id. \return 0 if it is none.
DWORD ParseLanguage(const char* text)
{
    char* end = nullptr;
    const unsigned long id = std::strtoul(text, &end, 16);
    return end != text && *end == '\0' && id <= 0xFFFF ? static_cast<DWORD>(id) : 0;
}

bool ParseLanguages(const CString& list, CDWordArray& languages)
{
    int from = 0;
    for (;;) {
        const int comma = list.Find(',', from);
        const DWORD id = ParseLanguage(comma < 0 ? list.Mid(from) : list.Mid(from, comma - from));
        if (id == 0)
            return false;
        languages.Add(id);
        if (comma < 0)
            return true;
        from = comma + 1;
    }
}

bool Complain(const char* what, const char* word)
{
    std::fprintf(stderr, "ZoProvision: %s: %s\nZoProvision --help tells more.\n", what, word);
    return false;
}

} // namespace

bool Arguments::Parse(int count, char** words)
{
    for (int i = 1; i < count; ++i) {
        const char* word = words[i];
        const auto is = [word](const char* option) { return std::strcmp(word, option) == 0; };
        const auto value = [&]() -> const char* { return i + 1 < count ? words[++i] : nullptr; };
        if (is("--help") || is("-h") || is("/?")) {
            help = true;
        } else if (is("--remove")) {
            remove = true;
        } else if (is("--user")) {
            user = value();
            if (user.IsEmpty() || user.FindOneOf("\\/") >= 0)
                return Complain("not the name of a user", user);
            allUsers = false;
        } else if (is("--languages")) {
            const CString list = value();
            if (!ParseLanguages(list, languages))
                return Complain("not a list of language ids", list);
        } else if (is("--current")) {
            const CString id = value();
            currentLanguage = ParseLanguage(id);
            if (currentLanguage == 0)
                return Complain("not a language id", id);
        } else if (word[0] == '-') {
            return Complain("unknown option", word);
        } else {
            char path[MAX_PATH];
            const DWORD length = GetFullPathNameA(word, sizeof path, path, nullptr);
            if (length == 0 || length >= sizeof path)
                return Complain("not a usable path", word);
            executables.Add(path);
        }
    }
    return true;
}
