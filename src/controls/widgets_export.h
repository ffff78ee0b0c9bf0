// Marks what the shared library xywidgets exports, and in an exported class what stays hidden as everything
// else does.
#pragma once

#if !defined(_WIN32)
#define XYWIDGETS_EXPORT __attribute__((visibility("default")))
#define XYWIDGETS_LOCAL __attribute__((visibility("hidden")))
#elif defined(LUMOPLOT_STATIC)
#define XYWIDGETS_EXPORT
#elif defined(XYWIDGETS_BUILDING)
#define XYWIDGETS_EXPORT __declspec(dllexport)
#else
#define XYWIDGETS_EXPORT __declspec(dllimport)
#endif
#if defined(_WIN32)
#define XYWIDGETS_LOCAL
#endif
