/// \file
/// The whole interface of the library, by family.
#pragma once

#include <zogbl/controls.h>
#include <zogbl/diag.h>
#include <zogbl/dialogs.h>
#include <zogbl/files.h>
#include <zogbl/formats.h>
#include <zogbl/frame.h>
#include <zogbl/telephony.h>
#include <zogbl/tools.h>
#include <zogbl/translation.h>
