/// \file
/// Countries and locations, telephone lines, mailboxes.
#pragma once

#include <zogbl/address_functions.h>
#include <zogbl/country_code.h>
#include <zogbl/flag_lcid.h>
#include <zogbl/location_item.h>
#include <zogbl/location_registry.h>
#include <zogbl/location_sheet.h>
#include <zogbl/location_wizard.h>
#include <zogbl/mailboxes.h>
#include <zogbl/tapi_interface.h>
