#pragma once

/// Marks what the shared library exports. Everything else is hidden.
#if defined(_WIN32)
#if defined(FOM_BUILDING)
#define FOM_API __declspec(dllexport)
#elif defined(FOM_STATIC)
#define FOM_API
#else
#define FOM_API __declspec(dllimport)
#endif
#else
#define FOM_API __attribute__((visibility("default")))
#endif
