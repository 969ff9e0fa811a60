/// \file
/// The suite's types of documents.
#pragma once

#include <zomfx/export.h>

#include <afxext.h>

/// A type of documents whose names follow the user's language: unlike CMultiDocTemplate, it loads them anew each time.
///
/// They are in the string of its resource number, which is looked for in the framework's resource chain first, then in
/// the language library.
class ZOMFX_API CZoMultiDocTemplate : public CMultiDocTemplate {
    DECLARE_DYNAMIC(CZoMultiDocTemplate)
public:
    CZoMultiDocTemplate(UINT resourceId, CRuntimeClass* documentClass, CRuntimeClass* frameClass,
                        CRuntimeClass* viewClass);

    UINT GetResourceID() const { return m_nIDResource; }

    /// \return FALSE, with \p text empty: there is no such string or part, or memory has run out
    BOOL GetDocString(CString& text, DocStringIndex index) const override;
};
