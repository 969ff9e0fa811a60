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
    ZO_FAULTY_CALL(RegOpenKeyExA) m_open{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegCreateKeyExA) m_create{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegQueryValueExA) m_query{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegSetValueExA) m_set{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegEnumKeyExA) m_enumerate{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegEnumValueA) m_enumerateValues{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegDeleteValueA) m_deleteValue{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegOpenKeyA) m_openOld{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegCreateKeyA) m_createOld{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegQueryValueA) m_queryOld{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegSetValueA) m_setOld{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegEnumKeyA) m_enumerateOld{*this, kZogbl, kError};
    ZO_FAULTY_CALL(RegDeleteKeyA) m_delete{*this, kZogbl, kError};
#ifdef _WIN64
    ZO_FAULTY_CALL(RegDeleteKeyExA) m_deleteInView{*this, kZogbl, kError};
#endif
};

/// Calls by which the library learns the product: the program's path and its version.
class ProductFaults : public FaultSource {
public:
    ProductFaults() : FaultSource("product") {}

private:
    ZO_FAULTY_CALL(GetModuleFileNameA) m_path{*this, kZogbl, 0};
    ZO_FAULTY_CALL(GetFileVersionInfoSizeA) m_size{*this, kZogbl, 0};
    ZO_FAULTY_CALL(GetFileVersionInfoA) m_version{*this, kZogbl, FALSE};
};

/// Files and folders of the library: whatever it calls gives the same error.
class FileFaults : public FaultSource {
public:
    explicit FileFaults(DWORD error) : FaultSource("files"), m_error(error) {}

private:
    const DWORD m_error;
    ZO_FAULTY_CALL(InitializeSecurityDescriptor) m_security{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(CreateFileA) m_open{*this, kZogbl, INVALID_HANDLE_VALUE, m_error};
    ZO_FAULTY_CALL(WriteFile) m_write{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(SetFilePointer) m_seek{*this, kZogbl, INVALID_SET_FILE_POINTER, m_error};
    ZO_FAULTY_CALL(SetEndOfFile) m_cut{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(CopyFileA) m_copy{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(MoveFileA) m_move{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(DeleteFileA) m_delete{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(GetFileAttributesA) m_attributes{*this, kZogbl, INVALID_FILE_ATTRIBUTES, m_error};
    ZO_FAULTY_CALL(SetFileAttributesA) m_mark{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(GetTempPathA) m_tempPath{*this, kZogbl, 0, m_error};
    ZO_FAULTY_CALL(GetTempFileNameA) m_tempName{*this, kZogbl, 0, m_error};
    ZO_FAULTY_CALL(CreateDirectoryA) m_makeFolder{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(RemoveDirectoryA) m_removeFolder{*this, kZogbl, FALSE, m_error};
    ZO_FAULTY_CALL(FindFirstFileA) m_find{*this, kZogbl, INVALID_HANDLE_VALUE, m_error};
    ZO_FAULTY_CALL(FindNextFileA) m_findNext{*this, kZogbl, FALSE, m_error};
};

/// The framework's files (CFile), with the error that each call would give.
class FrameworkFileFaults : public FaultSource {
public:
    FrameworkFileFaults() : FaultSource("framework's files") {}

private:
    static constexpr char kFramework[] = "ZOAFX.DLL";
    ZO_FAULTY_CALL(CreateFileA) m_open{*this, kFramework, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED};
    ZO_FAULTY_CALL(GetFileSize) m_size{*this, kFramework, INVALID_FILE_SIZE, ERROR_INVALID_HANDLE};
    ZO_FAULTY_CALL(SetFilePointer) m_seek{*this, kFramework, INVALID_SET_FILE_POINTER, ERROR_SEEK};
    ZO_FAULTY_CALL(ReadFile) m_read{*this, kFramework, FALSE, ERROR_CRC};
    ZO_FAULTY_CALL(WriteFile) m_write{*this, kFramework, FALSE, ERROR_DISK_FULL};
    ZO_FAULTY_CALL(SetEndOfFile) m_cut{*this, kFramework, FALSE, ERROR_DISK_FULL};
    ZO_FAULTY_CALL(FlushFileBuffers) m_flush{*this, kFramework, FALSE, ERROR_WRITE_FAULT};
};

/// Texts of the language library.
class StringFaults : public FaultSource {
public:
    StringFaults() : FaultSource("string") {}

private:
    ZO_FAULTY_CALL(LoadStringA) m_load{*this, kZogbl, 0};
};

} // namespace zo_test
