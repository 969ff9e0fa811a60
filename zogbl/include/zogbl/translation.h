/// \file
/// Character translation of lines and its editor.
#pragma once

#include <zogbl/translate.h>
#include <zogbl/translate_editor.h>
