#include "kept_answers.h"

#include <zogbl/message_box.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>

#include "ground/number_record.h"
#include "resources/user_settings.h"

namespace {

constexpr LPCSTR kSection = "Answers";
constexpr LPCSTR kMark = "ZoAnswer1"; // the answer; behind the record a line end and the question
constexpr char kBetween = '\n';
constexpr size_t kMostQuestion = 1000; // bytes

bool Read(const CString& text, KeptAnswer& kept)
{
    const int end = text.Find(kBetween);
    if (end < 0)
        return false;
    const CString numbers = text.Left(end);
    NumberRecordReader record(numbers, kMark);
    kept.answer = record.Next(IDCONTINUE);
    kept.question = text.Mid(end + 1);
    return record.IsWhole() && CanBeKept(kept.answer);
}

} // namespace

bool CanBeKept(int answer)
{
    return answer == IDOK || answer == IDYES || answer == IDNO || answer == IDIGNORE || answer == IDCONTINUE;
}

int FindKeptAnswer(LPCSTR name)
{
    return ResultOr(0, [&]() -> int {
        CString text;
        KeptAnswer kept;
        return ReadSetting(kSection, name, text) && Read(text, kept) ? kept.answer : 0;
    });
}

DWORD KeepAnswer(LPCSTR name, int answer, LPCSTR question)
{
    return ResultOr(DWORD{ERROR_NOT_ENOUGH_MEMORY}, [&]() -> DWORD {
        NumberRecordWriter record(kMark);
        record.Add(answer);
        LPCSTR end = question;
        while (*end != '\0' && static_cast<size_t>(end - question) < kMostQuestion)
            end = NextCharacter(end);
        return KeepSetting(kSection, name,
                           record.Finish() + kBetween + CString(question, static_cast<int>(end - question)));
    });
}

DWORD ListKeptAnswers(std::vector<KeptAnswer>& answers)
{
    CStringArray names;
    const DWORD status = ListSettings(kSection, names);
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        CString text;
        KeptAnswer kept = {names[i], 0, CString()};
        if (ReadSetting(kSection, names[i], text) && Read(text, kept))
            answers.push_back(kept);
    }
    return status;
}

DWORD ZoForgetAnswer(LPCSTR name) { return ForgetSetting(kSection, name); }
