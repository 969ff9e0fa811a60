/// \file
/// An application with document types, beside the tests' own.
#pragma once

#include "support/product_test.h"

namespace zo_test {

/// A type of documents by its texts; it tells no resource number.
class NamedType : public CMultiDocTemplate {
public:
    explicit NamedType(LPCSTR name, LPCSTR extension = "")
        : CMultiDocTemplate(0, nullptr, nullptr, nullptr), m_name(name), m_extension(extension)
    {
    }
    BOOL GetDocString(CString& text, DocStringIndex index) const override
    {
        text = index == filterName || index == fileNewName ? m_name : index == filterExt ? m_extension : CString();
        return !text.IsEmpty();
    }

private:
    CString m_name, m_extension;
};

class DocumentTest : public ProductTest {
protected:
    DocumentTest()
    {
        CWinApp* tests = AfxGetApp();
        m_application = std::make_unique<CWinApp>();
        AfxGetModuleState()->m_pCurrentWinApp = tests;
    }
    CDocTemplate* Add(CDocTemplate* type) { return m_application->AddDocTemplate(type), type; }

    std::unique_ptr<CWinApp> m_application;
};

} // namespace zo_test
