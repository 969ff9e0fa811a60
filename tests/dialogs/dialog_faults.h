/// \file
/// Dialogs that open, or say that they do not, whatever fails.
#pragma once

#include "support/test.h"

namespace zo_test {

/// What dialogs ask the system for.
class SystemFaults : public FileFaults {
public:
    SystemFaults() : FileFaults(ERROR_ACCESS_DENIED) {}

private:
    static constexpr char kLibrary[] = "ZOGBLBRX.DLL", kFramework[] = "ZOAFX.DLL";
    ZO_FAULTY_CALL(GetFullPathNameA) m_fullPath{*this, kLibrary, 0, ERROR_INVALID_NAME};
    ZO_FAULTY_CALL(GetCurrentDirectoryA) m_folder{*this, kLibrary, 0, ERROR_ACCESS_DENIED};
    ZO_FAULTY_CALL(GetLogicalDrives) m_drives{*this, kLibrary, 0};
    ZO_FAULTY_CALL(FileTimeToLocalFileTime) m_localTime{*this, kLibrary, FALSE};
    ZO_FAULTY_CALL(FileTimeToSystemTime) m_time{*this, kLibrary, FALSE};
    ZO_FAULTY_CALL(RegOpenKeyExA) m_registry{*this, kLibrary, ERROR_ACCESS_DENIED};
    ZO_FAULTY_CALL(GetFileVersionInfoSizeA) m_version{*this, kLibrary, 0};
    ZO_FAULTY_CALL(LoadLibraryA) m_load{*this, kLibrary, nullptr, ERROR_NOT_ENOUGH_MEMORY};
    ZO_FAULTY_CALL(GetProcAddress) m_bind{*this, kLibrary, nullptr, ERROR_PROC_NOT_FOUND};
    ZO_FAULTY_CALL(LoadIconA) m_icon{*this, kLibrary, nullptr};
    ZO_FAULTY_CALL(LoadBitmapA) m_picture{*this, kLibrary, nullptr};
    ZO_FAULTY_CALL(GetTextMetricsA) m_metrics{*this, kLibrary, FALSE};
    ZO_FAULTY_CALL(CreateCompatibleDC) m_memoryDC{*this, kLibrary, nullptr};
    ZO_FAULTY_CALL(CreateCompatibleDC) m_frameworkDC{*this, kFramework, nullptr};
    ZO_FAULTY_CALL(CreateCompatibleBitmap) m_bitmap{*this, kFramework, nullptr};
    ZO_FAULTY_CALL(GetDC) m_dc{*this, kLibrary, nullptr}, m_clientDC{*this, kFramework, nullptr};
};

/// Of the fault loops; 0: none.
struct DialogStrides {
    int memory = 1, system = 1, controls = 0, files = 0;
};

/// Runs \p show while memory, calls of the system, messages to controls and the framework's files fail. Windows that
/// open are handed to \p person; boxes are answered with No.
inline void RunDialogFaults(const DialogDriver::Act& person, const std::function<void(const FaultRun&)>& show,
                            DialogStrides strides = {})
{
    const BoxStub noBox(IDNO);
    const auto drive = [&](const FaultRun& run) {
        const AnyDialogDriver driver(person);
        show(run);
    };
    const auto run = [&](FaultSource& faults, int stride) {
        if (stride > 0)
            RunFaultLoop(faults, drive, {.stride = stride});
    };
    {
        AllocationFaults memory;
        run(memory, strides.memory);
    }
    {
        SystemFaults system;
        run(system, strides.system);
    }
    {
        FaultSource controls("controls");
        const ZO_FAULTY_CALL(SendMessageA) send(controls, "ZOGBLBRX.DLL", LB_ERR);
        run(controls, strides.controls);
    }
    FrameworkFileFaults files;
    run(files, strides.files);
}

} // namespace zo_test
