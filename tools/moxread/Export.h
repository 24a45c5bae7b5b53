#ifndef MOXREAD_EXPORT_H
#define MOXREAD_EXPORT_H

/// Marks what other tools may link against; everything else in the library stays hidden.
#define MOXREAD_EXPORT __attribute__((visibility("default")))

#endif
