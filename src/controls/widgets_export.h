// Marks what the shared library xywidgets exports; everything else stays hidden.
#pragma once

#if !defined(_WIN32)
#define XYWIDGETS_EXPORT __attribute__((visibility("default")))
#elif defined(LUMOPLOT_STATIC)
#define XYWIDGETS_EXPORT
#elif defined(XYWIDGETS_BUILDING)
#define XYWIDGETS_EXPORT __declspec(dllexport)
#else
#define XYWIDGETS_EXPORT __declspec(dllimport)
#endif
