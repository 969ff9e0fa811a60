#include "support/test.h"

namespace {

class ModuleTestBase : public CObject {
    DECLARE_DYNAMIC(ModuleTestBase)
};
IMPLEMENT_DYNAMIC(ModuleTestBase, CObject)

class ModuleTestObject : public ModuleTestBase {
    DECLARE_DYNCREATE(ModuleTestObject)
};
IMPLEMENT_DYNCREATE(ModuleTestObject, ModuleTestBase)

} // namespace

TEST(RuntimeClasses, AreFoundCreatedAndCompared)
{
    EXPECT_EQ(RUNTIME_CLASS(ModuleTestObject), CRuntimeClass::FromName("ModuleTestObject"));
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("ModuleTestBase")) << "it cannot be created";
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("NoSuchClass"));
    EXPECT_EQ(RUNTIME_CLASS(CFrameWnd), CRuntimeClass::FromName("CFrameWnd")) << "a class of the framework's library";
    ZO_EXPECT_NO_LEAK({
        CObject* object = CRuntimeClass::FromName("ModuleTestObject")->CreateObject();
        ASSERT_NE(nullptr, object);
        EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(ModuleTestObject)));
        EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(ModuleTestBase)));
        EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CObject)));
        EXPECT_FALSE(object->IsKindOf(RUNTIME_CLASS(CWnd)));
        EXPECT_EQ(object, DYNAMIC_DOWNCAST(ModuleTestBase, object));
        EXPECT_EQ(nullptr, DYNAMIC_DOWNCAST(CWnd, object));
        delete object;
    });
    EXPECT_EQ(nullptr, RUNTIME_CLASS(ModuleTestBase)->CreateObject());
}

TEST(Application, HasTheHelpFileOfItsProgram)
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    std::string expected(path);
    expected.replace(expected.rfind('.'), std::string::npos, ".HLP");
    EXPECT_EQ(expected, AfxGetApp()->m_pszHelpFilePath);
}

TEST(ExtensionModule, BringsItsClassesAndTakesThemAway)
{
    AFX_MODULE_STATE* state = AfxGetModuleState();
    CRuntimeClass* const hostClasses = state->m_pClassList;
    CRuntimeClass libraryClass = {"LibraryClass", sizeof(CObject), 0xFFFF, nullptr, nullptr, nullptr};
    CRuntimeClass shadowedClass = {"ModuleTestObject", sizeof(CObject), 0xFFFF, nullptr, nullptr, nullptr};
    AFX_EXTENSION_MODULE library = {};
    AfxBeginExtensionModule(); // what a library does before its static objects, these objects, and its entry
    const AFX_CLASSINIT registersClass(&libraryClass);
    const AFX_CLASSINIT registersShadowedClass(&shadowedClass);
    ASSERT_TRUE(AfxInitExtensionModule(library, reinterpret_cast<HMODULE>(0x10000)));
    EXPECT_EQ(hostClasses, state->m_pClassList) << "the host's list is not what it was";
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("LibraryClass")) << "not in the chain yet";

    new CDynLinkLibrary(library);
    EXPECT_EQ(&libraryClass, CRuntimeClass::FromName("LibraryClass"));
    EXPECT_EQ(RUNTIME_CLASS(ModuleTestObject), CRuntimeClass::FromName("ModuleTestObject")) << "the host comes first";
    AfxTermExtensionModule(library);
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("LibraryClass"));
    EXPECT_FALSE(library.bInitialized) << "it can be started again";
}

namespace {

/// Strings of host and first, host and second, first and second, first, second: who is found to have them.
std::string Strings()
{
    std::string all;
    for (const UINT id : {1600u, 1616u, 1632u, 1648u, 1664u}) {
        CString text("before");
        text.LoadString(id);
        all += std::string(text) + "|";
    }
    return all;
}

} // namespace

TEST(ResourceChain, GoesHostNewestOldestSystem)
{
    const HMODULE firstModule = LoadLibraryExA("afx_test_first.DLL", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HMODULE secondModule = LoadLibraryExA("afx_test_second.DLL", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(nullptr, firstModule);
    ASSERT_NE(nullptr, secondModule);
    ZO_EXPECT_NO_LEAK({
        AFX_EXTENSION_MODULE first = {};
        AFX_EXTENSION_MODULE second = {};
        ASSERT_TRUE(AfxInitExtensionModule(first, firstModule));
        ASSERT_TRUE(AfxInitExtensionModule(second, secondModule));
        EXPECT_EQ("host|host||||", Strings());

        new CDynLinkLibrary(first);
        new CDynLinkLibrary(second);
        EXPECT_EQ("host|host|second|first|second|", Strings());
        EXPECT_EQ(310, CString(MAKEINTRESOURCE(1700)).GetLength()) << "a long string was cut";
        EXPECT_EQ(AfxGetInstanceHandle(), AfxFindResourceHandle(MAKEINTRESOURCE(9999), RT_STRING)) << "for nobody's";
        CBitmap bitmap;
        EXPECT_TRUE(bitmap.LoadBitmap(70)) << "which the first one has";
        bitmap.DeleteObject();
        char small[4];
        EXPECT_EQ(3, AfxLoadString(1664, small, sizeof small));
        EXPECT_STREQ("sec", small);

        AfxTermExtensionModule(second);
        EXPECT_EQ("host|host|first|first||", Strings());
        AfxSetResourceHandle(secondModule);
        EXPECT_EQ("first|second|second|first|second|", Strings());
        AfxSetResourceHandle(AfxGetInstanceHandle());

        ASSERT_TRUE(AfxInitExtensionModule(second, secondModule));
        new CDynLinkLibrary(second, TRUE);
        EXPECT_EQ("host|host|first|first|second|", Strings()); // a system library is last, though newest
        AfxTermExtensionModule(first);
        AfxTermExtensionModule(second);
        EXPECT_EQ("host|host||||", Strings());

        // Resources of one module under the name of another.
        auto* link = new CDynLinkLibrary(AfxGetInstanceHandle(), firstModule);
        EXPECT_EQ("host|host|first|first||", Strings());
        delete link;
    });
    FreeLibrary(firstModule);
    FreeLibrary(secondModule);
}
