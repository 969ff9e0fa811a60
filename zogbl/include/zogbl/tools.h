/// \file
/// Tools menus and their editor.
#pragma once

#include <zogbl/tool_file.h>
#include <zogbl/tool_file_dialog.h>
#include <zogbl/tool_item.h>
#include <zogbl/tool_menu.h>
#include <zogbl/tool_pages.h>
#include <zogbl/tool_sheet.h>
