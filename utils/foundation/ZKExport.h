// ZKExport.h: the one export macro of ZKUtils.
//
// The library is built with hidden symbols; every public class and every
// public free function carries ZKUTILS_EXPORT so that it is visible to the
// application that loads the shared library.
#pragma once

#if defined(_WIN32)
#if defined(ZKUTILS_BUILDING_LIBRARY)
#define ZKUTILS_EXPORT __declspec(dllexport)
#else
#define ZKUTILS_EXPORT __declspec(dllimport)
#endif
#else
#define ZKUTILS_EXPORT __attribute__((visibility("default")))
#endif
