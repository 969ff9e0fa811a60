/// \file
/// The state of the language library and the keys of the product.
#pragma once

#include "page.h"

class LanguagePage : public Page {
public:
    static CString GetLanguageName(); ///< of the texts

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;

private:
    int WidestLabel(); ///< in pixels

    static constexpr int kRows = 8;
    CStatic m_labels[kRows];
    CStatic m_values[kRows];
};
