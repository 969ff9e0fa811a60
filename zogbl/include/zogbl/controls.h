/// \file
/// Controls and drawing: pickers, shared fonts, effects, bitmaps.
#pragma once

#include <zogbl/country_box.h>
#include <zogbl/effects.h>
#include <zogbl/flag_box.h>
#include <zogbl/flag_lcid_box.h>
#include <zogbl/gdi_data.h>
#include <zogbl/trans_bmp.h>
