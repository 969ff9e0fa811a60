/// \file
/// Controls and drawing: the controls and their base, pickers, shared fonts, effects, bitmaps.
#pragma once

#include <zogbl/bitmap_window.h>
#include <zogbl/calendar.h>
#include <zogbl/calendar_button.h>
#include <zogbl/color_button.h>
#include <zogbl/color_chooser.h>
#include <zogbl/column_list.h>
#include <zogbl/control.h>
#include <zogbl/country_box.h>
#include <zogbl/date_time.h>
#include <zogbl/date_time_fields.h>
#include <zogbl/effects.h>
#include <zogbl/flag_box.h>
#include <zogbl/flag_lcid_box.h>
#include <zogbl/gdi_data.h>
#include <zogbl/header.h>
#include <zogbl/modem_lights.h>
#include <zogbl/progress_bar.h>
#include <zogbl/screen_sample.h>
#include <zogbl/status_wnd.h>
#include <zogbl/text_panel.h>
#include <zogbl/trans_bmp.h>
#include <zogbl/type_ahead.h>
