/// \file
/// The system's library of common controls.
#pragma once

/// Loads it and registers the classes of its first controls. It stays loaded, for its windows do.
void LoadCommonControls();
