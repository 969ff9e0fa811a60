/// \file
/// The library in its process: statuses and numbers, language, resources, registry, modules.
#pragma once

#include <zogbl/brixel_access.h>
#include <zogbl/custom_resource.h>
#include <zogbl/export.h>
#include <zogbl/global_config.h>
#include <zogbl/installed_modules.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>
#include <zogbl/module_language.h>
#include <zogbl/registry_base.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/status.h>
#include <zogbl/template_module.h>
#include <zogbl/version_resource.h>
