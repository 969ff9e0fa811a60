/// \file
/// Dialogs, sheets and message boxes; checks of their data.
#pragma once

#include <zogbl/abort_dialog.h>
#include <zogbl/about_dialog.h>
#include <zogbl/argument_prompt.h>
#include <zogbl/ask_name_dialog.h>
#include <zogbl/dialog.h>
#include <zogbl/document_save.h>
#include <zogbl/file_open.h>
#include <zogbl/font_dialog.h>
#include <zogbl/language_dialog.h>
#include <zogbl/message_box.h>
#include <zogbl/new_document_dialog.h>
#include <zogbl/print_dialog.h>
#include <zogbl/property_sheet.h>
#include <zogbl/select_directory.h>
#include <zogbl/splash_wnd.h>
#include <zogbl/string_select_dialog.h>
#include <zogbl/validators.h>
#include <zogbl/wizard.h>
