/// \file
/// Status codes. 0 is success. Any other is
///   - a Windows error code, as the system gave it,
///   - a small code of one class, listed there, or
///   - one of the suite's own codes below.
#pragma once

#include <windows.h>

constexpr DWORD ZoErrOutOfMemory = 0x24004000;      ///< no memory for an object
constexpr DWORD ZoErrMemoryException = 0x24004004;  ///< no memory for a container to grow
constexpr DWORD ZoErrBadCallback = 0x24004401;      ///< the address of a function is not code
constexpr DWORD ZoErrBadData = 0x24004407;          ///< an invalid object or bad data
constexpr DWORD ZoErrNullOutput = 0x2400441A;       ///< no place for a result
constexpr DWORD ZoErrCycle = 0x24004437;            ///< links lead round in a circle
constexpr DWORD ZoErrResourceNotFound = 0x24004451; ///< a table resource is missing

constexpr DWORD ZoErrNoMemory = 0x24014000;       ///< configuration: no memory for a work buffer
constexpr DWORD ZoErrObjectInvalid = 0x24014407;  ///< a registry record without a section, or a null buffer
constexpr DWORD ZoErrNoValueName = 0x2401446C;    ///< the string that names a registry value is missing
constexpr DWORD ZoErrWrongValueType = 0x24015800; ///< configuration: the value has another type than the one read
