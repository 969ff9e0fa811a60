/// \file
/// The families of measurements, a file each.
#pragma once

class Harness;

void MeasureRegistry(Harness& harness);
void MeasureCountries(Harness& harness);
