/// \file
/// The families of measurements, a file each.
#pragma once

class Harness;

void MeasureRegistry(Harness& harness);
void MeasureCountries(Harness& harness);
void MeasureProfiles(Harness& harness);
void MeasureStartup(Harness& harness);

/// What "zobench --child steps" and "zobench --child host" do: start the library and print what each step took.
/// \return the exit code of the child.
int RunStartupChild(const char* kind);
