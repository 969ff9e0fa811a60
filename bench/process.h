/// \file
/// Programs that are started and waited for.
#pragma once

#include <string>

/// The folder of this program, with a backslash behind it, and its whole path.
std::string OwnFolder();
std::string OwnPath();

struct ProgramRun {
    unsigned exitCode;
    std::string output; ///< what it wrote to its standard output
    long long started;  ///< ticks, just before it was created
};

/// Runs a program and waits for it, at most half a minute. \p commandLine begins with its path, in quotes. Its output
/// is to stay below 32 KB. Throws BenchmarkFailure when it cannot be started or does not end; it is ended then.
ProgramRun RunProgram(const std::string& commandLine);
