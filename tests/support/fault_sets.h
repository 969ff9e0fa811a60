/// \file
/// System calls of the library that fail as one, for many tests.
#pragma once

#include "support/fault_loop.h"

namespace zo_test {

/// Calls of the registry, those of Win32s included.
class RegistryFaults : public FaultSource {
public:
    static constexpr LONG kError = ERROR_REGISTRY_IO_FAILED;

    RegistryFaults() : FaultSource("registry") {}

private:
    static constexpr char kLibrary[] = "ZOGBLBRX.DLL";
    ZO_FAULTY_CALL(RegOpenKeyExA) m_open{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegCreateKeyExA) m_create{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegQueryValueExA) m_query{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegSetValueExA) m_set{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegEnumKeyExA) m_enumerate{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegEnumValueA) m_enumerateValues{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegDeleteValueA) m_deleteValue{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegOpenKeyA) m_openOld{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegCreateKeyA) m_createOld{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegQueryValueA) m_queryOld{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegSetValueA) m_setOld{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegEnumKeyA) m_enumerateOld{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegDeleteKeyA) m_delete{*this, kLibrary, kError};
#ifdef _WIN64
    ZO_FAULTY_CALL(RegDeleteKeyExA) m_deleteInView{*this, kLibrary, kError};
#endif
};

/// Calls by which the library learns the product: the program's path and its version.
class ProductFaults : public FaultSource {
public:
    ProductFaults() : FaultSource("product") {}

private:
    ZO_FAULTY_CALL(GetModuleFileNameA) m_path{*this, "ZOGBLBRX.DLL", 0};
    ZO_FAULTY_CALL(GetFileVersionInfoSizeA) m_size{*this, "ZOGBLBRX.DLL", 0};
    ZO_FAULTY_CALL(GetFileVersionInfoA) m_version{*this, "ZOGBLBRX.DLL", FALSE};
};

/// Texts of the language library.
class StringFaults : public FaultSource {
public:
    StringFaults() : FaultSource("string") {}

private:
    ZO_FAULTY_CALL(LoadStringA) m_load{*this, "ZOGBLBRX.DLL", 0};
};

} // namespace zo_test
