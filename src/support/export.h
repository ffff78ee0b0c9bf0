// Marks what the shared library xygraph exports; everything else stays hidden. Programs that link the object
// files instead of the library (tests, benchmarks) define LUMOPLOT_STATIC.
#pragma once

#if !defined(_WIN32)
#define XYGRAPH_EXPORT __attribute__((visibility("default")))
#elif defined(LUMOPLOT_STATIC)
#define XYGRAPH_EXPORT
#elif defined(XYGRAPH_BUILDING)
#define XYGRAPH_EXPORT __declspec(dllexport)
#else
#define XYGRAPH_EXPORT __declspec(dllimport)
#endif
