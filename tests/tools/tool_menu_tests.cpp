#include "tool_fixture.h"
