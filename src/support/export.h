// Marks what the shared library xygraph exports; everything else stays hidden.
#pragma once

#if defined(_WIN32)
#if defined(XYGRAPH_BUILDING)
#define XYGRAPH_EXPORT __declspec(dllexport)
#else
#define XYGRAPH_EXPORT __declspec(dllimport)
#endif
#else
#define XYGRAPH_EXPORT __attribute__((visibility("default")))
#endif
