/// \file
/// Files, file names, folders; numbers as texts.
#pragma once

#include <zogbl/directory_functions.h>
#include <zogbl/file_functions.h>
#include <zogbl/file_name_functions.h>
#include <zogbl/number_text.h>
