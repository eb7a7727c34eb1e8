#pragma once

/// Marks what a user of the shared library may see. Everything else stays hidden inside it.
#if defined(_WIN32)
#define ZONTARA_EXPORT
#else
#define ZONTARA_EXPORT __attribute__((visibility("default")))
#endif
