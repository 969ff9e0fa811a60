/// \file
/// Exports the library's interface: whole classes, and functions with their full signatures.
#pragma once

#ifdef ZOGBL_BUILD
#define ZOGBL_API __declspec(dllexport)
#else
#define ZOGBL_API __declspec(dllimport)
#endif
