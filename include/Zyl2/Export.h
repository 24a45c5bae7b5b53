#ifndef ZYL2_EXPORT_H
#define ZYL2_EXPORT_H

/// Marks what a host may link against; everything else in the library stays hidden.
#define ZYL2_EXPORT __attribute__((visibility("default")))

#endif
