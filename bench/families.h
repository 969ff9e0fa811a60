/// \file
/// The families of measurements, a file each.
#pragma once

class Harness;

void MeasureRegistry(Harness& harness);
void MeasureProgressBar(Harness& harness);
void MeasureBitmaps(Harness& harness);
void MeasureCalendar(Harness& harness);
void MeasureColorControls(Harness& harness);
void MeasureCountries(Harness& harness);
void MeasureDateTime(Harness& harness);
void MeasureFolders(Harness& harness);
void MeasureHeaders(Harness& harness);
void MeasurePickers(Harness& harness);
void MeasurePictures(Harness& harness);
void MeasureProfiles(Harness& harness);
void MeasureStartup(Harness& harness);
void MeasureTextPanel(Harness& harness);
void MeasureTrace(Harness& harness);
void MeasureTranslation(Harness& harness);
void MeasureTrees(Harness& harness);
void MeasureValues(Harness& harness);

/// What "zobench --child steps" and "zobench --child host" do: start the library and print what each step took.
/// \return the exit code of the child.
int RunStartupChild(const char* kind);

/// What "zobench --child lines <way>" does: writes lines to a shared file and prints when it began and ended, in ticks.
/// \return the exit code of the child.
int RunLinesChild(const char* way);
