/// \file
/// A fault source for every call of the registry that the library makes.
#pragma once

#include "support/test.h"

namespace zo_test {

class RegistryFaults : public FaultSource {
public:
    static constexpr LONG kError = ERROR_REGISTRY_IO_FAILED;
    static constexpr char kLibrary[] = "ZOGBLBRX.DLL";

    RegistryFaults() : FaultSource("registry") {}

private:
    ZO_FAULTY_CALL(RegOpenKeyExA) m_open{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegCreateKeyExA) m_create{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegQueryValueExA) m_query{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegSetValueExA) m_set{*this, kLibrary, kError};
    ZO_FAULTY_CALL(RegEnumKeyExA) m_enumerate{*this, kLibrary, kError};
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

} // namespace zo_test
