/// \file
/// What most tests with texts stand on: the product is registered, its language library loaded, and a folder is there.
#pragma once

#include "support/registered_product.h"
#include "support/test.h"

#include <zogbl/dialog.h>
#include <zogbl/module.h>

namespace zo_test {

constexpr DWORD kEnglish = 0x0409;
constexpr DWORD kGerman = 0x0407;

class ProductTest : public testing::Test {
protected:
    ProductTest() { EXPECT_TRUE(ZoGblLoadLanguageDLL()); }
    ~ProductTest() override { ZoGblDumpLanguageDLL(); }

    /// As a user does in a running program, whose open dialogs follow.
    void ChangeLanguage(DWORD language)
    {
        ZoGblDumpLanguageDLL();
        m_product.MakeCurrent(language);
        EXPECT_TRUE(ZoGblLoadLanguageDLL());
        CZoDialog::ReloadOpenDialogs();
    }
    /// The folder, or a name in it.
    std::string Path(const std::string& name = {}) const { return m_folder.Path(name); }

    RegisteredProduct m_product;
    TestFolder m_folder;
};

} // namespace zo_test
