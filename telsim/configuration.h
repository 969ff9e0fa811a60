/// \file
/// What there is to simulate: telsim.ini, described in docs/telsim.md.
#pragma once

#include "tapi_header.h"

#include <string>
#include <vector>

namespace telsim {

struct LineConfiguration {
    std::string name = "Simulated Modem";
    std::string registryKey = "SOFTWARE\\Zo,Inc.\\Simulated Modem";
    DWORD stringFormat = STRINGFORMAT_ASCII;
    DWORD bearerModes = LINEBEARERMODE_VOICE | LINEBEARERMODE_PASSTHROUGH;
    DWORD mediaModes = LINEMEDIAMODE_UNKNOWN | LINEMEDIAMODE_DATAMODEM | LINEMEDIAMODE_G3FAX;
    DWORD lineFeatures = LINEFEATURE_MAKECALL;
    DWORD addressFeatures = LINEADDRFEATURE_MAKECALL;
    DWORD lowVersion = 0x00010003;
    DWORD highVersion = kHighestVersion;
    std::string number = "5550100"; ///< its own
    std::string port;               ///< such as "COM9"; empty: a handle that is none of a port
    std::string settings;           ///< the device configuration's bytes
    bool allocated = false;         ///< by another program, so that it cannot be opened
    DWORD replyDelay = 0;           ///< milliseconds, each from the step before
    DWORD dialtoneDelay = 0;
    DWORD connectDelay = 0;
};

/// A call that comes by itself once the line is opened as owner.
struct IncomingCall {
    DWORD device = 0;
    DWORD after = 0; ///< milliseconds
    std::string number;
    std::string name;
    DWORD partyFlags = 0;  ///< 0: by what is known
    DWORD hangUpAfter = 0; ///< milliseconds from the ring; 0: never
};

/// Where the numbers are dialed from.
struct Location {
    DWORD country = 1;
    std::string areaCode = "425";
    std::string outsidePrefix; ///< to get a line, such as "9,"
    std::string longDistancePrefix = "1";
    std::string internationalPrefix = "011";
    std::string cancelCallWaiting; ///< such as "*70,"
    bool tone = true;
};

struct Configuration {
    std::vector<LineConfiguration> lines;
    std::vector<IncomingCall> incomingCalls;
    Location location;
    bool showDialogs = false; ///< message boxes in place of the dialogs; otherwise they are over at once
};

/// A line without a port, as it is when nothing is set.
LineConfiguration DefaultLine(size_t device);

/// Sets one key of a line, as the file would. \return FALSE for an unknown key or a value that makes no sense.
bool SetLineKey(LineConfiguration& line, const std::string& key, const std::string& value);

/// Reads the file that the environment variable TELSIM_INI names, or telsim.ini beside the library. Without either
/// there are two lines: one on port COM99 and one without a port.
/// \param complaints gets a line for each mistake in the file.
Configuration LoadConfiguration(std::vector<std::string>& complaints);

} // namespace telsim
