// Marks what the shared library xygraph exports; everything else stays hidden. Single members carry the mark;
// a class with signals carries it as a whole, and those of its members that only the library calls are
// XYGRAPH_LOCAL. Programs that link the object files instead of the library (tests, benchmarks) define
// LUMOPLOT_STATIC.
#pragma once

#if !defined(_WIN32)
#define XYGRAPH_EXPORT __attribute__((visibility("default")))
#define XYGRAPH_LOCAL __attribute__((visibility("hidden")))
#elif defined(LUMOPLOT_STATIC)
#define XYGRAPH_EXPORT
#elif defined(XYGRAPH_BUILDING)
#define XYGRAPH_EXPORT __declspec(dllexport)
#else
#define XYGRAPH_EXPORT __declspec(dllimport)
#endif
#if defined(_WIN32)
#define XYGRAPH_LOCAL
#endif
