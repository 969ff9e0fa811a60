/// \file
/// Tests of a registered product with its language library loaded.
#pragma once

#include "product/registered_product.h"
#include "support/test.h"

#include <zogbl/module.h>

class LanguageTest : public testing::Test {
protected:
    LanguageTest() { EXPECT_TRUE(ZoGblLoadLanguageDLL()); }
    ~LanguageTest() override { ZoGblDumpLanguageDLL(); }
    void ChangeLanguage(DWORD language)
    {
        ZoGblDumpLanguageDLL();
        m_product.MakeCurrent(language);
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
    }

    RegisteredProduct m_product;
};
