/// \file
/// Exports the classes of the framework-extension library.
#pragma once

#ifdef ZOMFX_BUILD
#define ZOMFX_API __declspec(dllexport)
#else
#define ZOMFX_API __declspec(dllimport)
#endif
