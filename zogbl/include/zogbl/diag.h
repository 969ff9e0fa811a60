/// \file
/// Telling what happens and where: trace, event log, the last error, the system and its user.
#pragma once

#include <zogbl/event_log.h>
#include <zogbl/global_error.h>
#include <zogbl/operating_system.h>
#include <zogbl/trace.h>
