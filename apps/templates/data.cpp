// The data view: the bytes of a file, as numbers and as characters.
#include "entry_points.h"
#include "template_ids.h"
#include "text_document.h"

#include <algorithm>

namespace {

constexpr int kMaximum = 12288; // bytes; each takes five characters of the text
constexpr int kBytesPerLine = 16;

class DataDocument : public TextDocument {
    DECLARE_DYNCREATE(DataDocument)
public:
    BOOL OnOpenDocument(LPCSTR path) override
    {
        BOOL isWhole = FALSE; // whether it is or not, saving copies the file
        return CDocument::OnOpenDocument(path) && ReadFile(path, m_bytes, kMaximum, isWhole);
    }
    BOOL OnSaveDocument(LPCSTR path) override
    {
        return GetPathName().IsEmpty() ? TextDocument::OnSaveDocument(path) : CopyTo(path);
    }
    void DeleteContents() override { m_bytes.Empty(); }
    CString GetText() const override
    {
        CString text;
        for (int offset = 0; offset < m_bytes.GetLength(); offset += kBytesPerLine)
            text += Line(offset);
        return text;
    }

private:
    CString Line(int offset) const
    {
        CString numbers;
        CString characters;
        const int end = (std::min)(offset + kBytesPerLine, m_bytes.GetLength());
        for (int i = offset; i < end; ++i) {
            const auto byte = static_cast<unsigned char>(m_bytes[i]);
            CString number;
            number.Format("%02X ", byte);
            numbers += number;
            characters += byte >= ' ' && byte < 0x7F ? static_cast<char>(byte) : '.';
        }
        CString line;
        line.Format("%06X  %-*s %s\r\n", static_cast<unsigned>(offset), 3 * kBytesPerLine, (LPCSTR)numbers,
                    (LPCSTR)characters);
        return line;
    }

    CString m_bytes;
};

class DataView : public TextView {
    DECLARE_DYNCREATE(DataView)
protected:
    bool HasColumns() const override { return true; }
};

class DataFrame : public CMDIChildWnd {
    DECLARE_DYNCREATE(DataFrame)
};

IMPLEMENT_DYNCREATE(DataDocument, TextDocument)
IMPLEMENT_DYNCREATE(DataView, TextView)
IMPLEMENT_DYNCREATE(DataFrame, CMDIChildWnd)

} // namespace

const TemplateLibrary& GetTemplateLibrary()
{
    static const TemplateLibrary library = {
        2,  ZO_IDS_DATA_TYPE, RUNTIME_CLASS(DataDocument), RUNTIME_CLASS(DataFrame), RUNTIME_CLASS(DataView),
        16, nullptr};
    return library;
}
