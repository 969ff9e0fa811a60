/// \file
/// The whole interface of the library.
#pragma once

#include <zogbl/avl.h>
#include <zogbl/country_code.h>
#include <zogbl/custom_resource.h>
#include <zogbl/directory_functions.h>
#include <zogbl/event_log.h>
#include <zogbl/file_functions.h>
#include <zogbl/file_name_functions.h>
#include <zogbl/gdi_data.h>
#include <zogbl/global_config.h>
#include <zogbl/global_error.h>
#include <zogbl/language_support.h>
#include <zogbl/location_item.h>
#include <zogbl/location_registry.h>
#include <zogbl/mailboxes.h>
#include <zogbl/module.h>
#include <zogbl/number_text.h>
#include <zogbl/operating_system.h>
#include <zogbl/registry_base.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/status.h>
#include <zogbl/trace.h>
#include <zogbl/tree.h>
#include <zogbl/version_resource.h>
