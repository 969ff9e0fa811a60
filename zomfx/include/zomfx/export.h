/// \file
/// How the framework-extension library exports its classes.
#pragma once

#ifdef ZOMFX_BUILD
#define ZOMFX_API __declspec(dllexport)
#else
#define ZOMFX_API __declspec(dllimport)
#endif
