#pragma once
// This release: the one place its version is written. The version resource, the About box and the
// package's name (scripts/version.sh) all read it. Plain preprocessor text, so that the resource
// compiler can read it too.

#define VRL_RELEASE_YEAR 2023
#define VRL_RELEASE_MONTH 12
#define VRL_RELEASE_DAY 30
#define VRL_RELEASE_KIND 0  // 0 release, 1 beta, 2 alpha, 3 test

#define VRL_STRINGIFY_(x) #x
#define VRL_STRINGIFY(x) VRL_STRINGIFY_(x)

#if VRL_RELEASE_KIND == 1
#define VRL_RELEASE_KIND_SUFFIX "-beta"
#elif VRL_RELEASE_KIND == 2
#define VRL_RELEASE_KIND_SUFFIX "-alpha"
#elif VRL_RELEASE_KIND == 3
#define VRL_RELEASE_KIND_SUFFIX "-test"
#else
#define VRL_RELEASE_KIND_SUFFIX ""
#endif

// "2023.12.30", "2024.3.5-beta": the file version's text and the package's name.
#define VRL_VERSION_TEXT                                                                              \
    VRL_STRINGIFY(VRL_RELEASE_YEAR) "." VRL_STRINGIFY(VRL_RELEASE_MONTH) "." VRL_STRINGIFY(VRL_RELEASE_DAY) \
    VRL_RELEASE_KIND_SUFFIX
