/// \file
/// The suite's types of documents.
#pragma once

#include <zomfx/export.h>

#include <afxext.h>

/// A type of documents whose names follow the user's language, and which tells its resource number. Unlike
/// CMultiDocTemplate, it looks for the string of that number each time: in the framework's resource chain first, then
/// in the language library.
class ZOMFX_API CZoMultiDocTemplate : public CMultiDocTemplate {
    DECLARE_DYNAMIC(CZoMultiDocTemplate)
public:
    CZoMultiDocTemplate(UINT resourceId, CRuntimeClass* documentClass, CRuntimeClass* frameClass,
                        CRuntimeClass* viewClass);

    UINT GetResourceID() const { return m_nIDResource; }

    /// \return FALSE, with \p text empty: there is no such string or part, or memory has run out
    BOOL GetDocString(CString& text, DocStringIndex index) const override;
};
