#include "options_search.h"

#include <common/double_byte.h>

#include "dialogs/base/dialog_resource.h"

namespace {

constexpr UINT kJapanese = 932;
constexpr UINT kWideBlank = 0x8140; // of Japanese

/// By the system, which also knows letters with accents.
void ToSmallLetters(CString& text)
{
    MapCase(text.GetBuffer(0), [](unsigned char* characters) {
        return reinterpret_cast<unsigned char*>(::CharLowerA(reinterpret_cast<LPSTR>(characters)));
    });
    text.ReleaseBuffer();
}

/// In small letters and without access keys: "&&" is a "&". Throws CMemoryException*.
CString Comparable(const CString& text)
{
    CString result;
    for (LPCSTR at = text; *at != '\0';) {
        if (*at == '&' && *++at == '\0')
            break;
        const auto width = static_cast<int>(CharacterWidth(at));
        result += CString(at, width);
        at += width;
    }
    ToSmallLetters(result);
    return result;
}

bool IsBlank(UINT character)
{
    return character == ' ' || character == '\t' || (character == kWideBlank && ::GetACP() == kJapanese);
}

} // namespace

OptionsSearch::OptionsSearch(LPCSTR typed)
{
    CString text = typed;
    ToSmallLetters(text);
    for (LPCSTR at = text; *at != '\0';) {
        LPCSTR end = at;
        while (*end != '\0' && !IsBlank(CharacterAt(end)))
            end = NextCharacter(end);
        if (end > at)
            m_words.Add(CString(at, static_cast<int>(end - at)));
        at = NextCharacter(end);
    }
}

bool OptionsSearch::IsIn(const CString& texts) const
{
    for (INT_PTR i = 0; i < m_words.GetSize(); ++i) {
        const CString& word = m_words[i];
        if (FindText(texts, static_cast<size_t>(texts.GetLength()), word, static_cast<size_t>(word.GetLength())) ==
            nullptr)
            return false;
    }
    return true;
}

CString ComparableTexts(UINT templateId, HWND page)
{
    CString texts = TemplateTexts(templateId);
    for (HWND child = ::GetWindow(page, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        char name[8] = "";
        ::GetClassNameA(child, name, sizeof name);
        if (lstrcmpiA(name, "Static") != 0 && lstrcmpiA(name, "Button") != 0)
            continue; // what somebody typed is no text of the page
        texts += WindowText(child) + "\n";
    }
    return Comparable(texts);
}
