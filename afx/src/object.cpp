#include <afxext.h>

#include <cstring>

CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), 0xFFFF, nullptr, nullptr, nullptr};

CRuntimeClass* AFXAPI CObject::GetThisClass() { return &classCObject; }
CRuntimeClass* CObject::GetRuntimeClass() const { return &classCObject; }
void CObject::Serialize(CArchive&) {}
void CObject::AssertValid() const {}
void CObject::Dump(CDumpContext&) const {}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const { return GetRuntimeClass()->IsDerivedFrom(pClass); }

CObject* CRuntimeClass::CreateObject()
{
    if (m_pfnCreateObject == nullptr)
        return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (CMemoryException* e) {
        e->Delete();
        return nullptr;
    }
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const
{
    const CRuntimeClass* candidate = this;
    while (candidate != nullptr && candidate != pBaseClass)
        candidate = candidate->m_pfnGetBaseClass != nullptr ? candidate->m_pfnGetBaseClass() : nullptr;
    return candidate != nullptr;
}

CRuntimeClass* AFXAPI CRuntimeClass::FromName(LPCSTR lpszClassName)
{
    const auto findIn = [lpszClassName](CRuntimeClass* list) {
        while (list != nullptr && std::strcmp(list->m_lpszClassName, lpszClassName) != 0)
            list = list->m_pNextClass;
        return list;
    };
    const AFX_MODULE_STATE* state = AfxGetModuleState();
    if (CRuntimeClass* found = findIn(state->m_pClassList))
        return found;
    for (const CDynLinkLibrary* dll = state->m_pLibraryList; dll != nullptr; dll = dll->m_pNextDLL) {
        if (CRuntimeClass* found = findIn(dll->m_pFirstSharedClass))
            return found;
    }
    return nullptr;
}

AFX_CLASSINIT::AFX_CLASSINIT(CRuntimeClass* pNewClass)
{
    AFX_MODULE_STATE* state = AfxGetModuleState();
    pNewClass->m_pNextClass = state->m_pClassList;
    state->m_pClassList = pNewClass;
}

CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject)
{
    return pObject != nullptr && pObject->IsKindOf(pClass) ? pObject : nullptr;
}

void AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine)
{
    char text[512];
    wsprintfA(text, "Assertion failed: %.400s line %d\r\n", lpszFileName, nLine);
    OutputDebugStringA(text);
    DebugBreak();
}
