/// \file
/// Profile files and trees.
#pragma once

#include <zogbl/avl.h>
#include <zogbl/ini_file.h>
#include <zogbl/mem_ini_file.h>
#include <zogbl/tree.h>
