#include "control_kit.h"
