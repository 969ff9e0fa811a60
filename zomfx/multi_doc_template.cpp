#include <zomfx/multi_doc_template.h>

#include <common/without_throwing.h>

#include "resource_access.h"

IMPLEMENT_DYNAMIC(CZoMultiDocTemplate, CMultiDocTemplate)

CZoMultiDocTemplate::CZoMultiDocTemplate(UINT resourceId, CRuntimeClass* documentClass, CRuntimeClass* frameClass,
                                         CRuntimeClass* viewClass)
    : CMultiDocTemplate(resourceId, documentClass, frameClass, viewClass)
{
}

BOOL CZoMultiDocTemplate::GetDocString(CString& text, DocStringIndex index) const
{
    text.Empty();
    CString all;
    const BOOL loaded =
        WithoutThrowing([&] { return ZoMfxLoadString(m_nIDResource, all) && AfxExtractSubString(text, all, index); });
    if (!loaded)
        text.Empty();
    return loaded;
}
