/// \file
/// The registered product without which no language library is found.
#pragma once

#include <afx.h>

/// Sees to it that the library's product is registered. Where it is not, ZoProvision.exe, which lies beside this
/// program, registers it for the object's lifetime. Throws BenchmarkFailure when that fails.
class RegisteredProduct {
public:
    RegisteredProduct();
    ~RegisteredProduct();
    RegisteredProduct(const RegisteredProduct&) = delete;
    RegisteredProduct& operator=(const RegisteredProduct&) = delete;

    const CString& GetUserKey() const { return m_userKey; }           ///< below HKEY_LOCAL_MACHINE
    const CString& GetLanguagesKey() const { return m_languagesKey; } ///< below HKEY_LOCAL_MACHINE

private:
    bool ReadKeys();

    CString m_userKey;
    CString m_languagesKey;
    bool m_isOurs = false;
};

/// The loaded language library, for the object's lifetime. Throws BenchmarkFailure when there is none.
class LoadedLanguage {
public:
    LoadedLanguage();
    ~LoadedLanguage();
    LoadedLanguage(const LoadedLanguage&) = delete;
    LoadedLanguage& operator=(const LoadedLanguage&) = delete;
};
