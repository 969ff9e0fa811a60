/// \file
/// Application framework: the common controls, by its parts.
#pragma once

#include <afximl_.h> // image lists
