#ifndef ZYL2_MOX2_SAVEROPTIONS_H
#define ZYL2_MOX2_SAVEROPTIONS_H

#include <Zyl2/Mox2/Encoder.h>

#include <cstdint>
#include <string>

namespace Zyl2 {
namespace Mox2 {

/// How `Model::saveTo` opens a file and signs it, and how the file is compressed.
struct SaverOptions
{
    SaverOptions()
        : overwrite(false), encoder(Encoder::Default), threads(-1), blockSize(0), recoverable(-1)
    {}

    /// When false, an existing file at the path is an error.
    bool overwrite;
    /// First text of the file's writing record, for instance the host's name and version.
    std::string text1{};
    /// Second text of the writing record; used only when `text1` is not empty.
    std::string text2{};
    /// Contract: carried along for hosts that set it, and written nowhere.
    std::string text3{};
    /// What compresses the file. A host that leaves it alone lets its users choose.
    Encoder encoder;
    /// How many threads of its own the model may start to compress full blocks while the host goes
    /// on: 0 to 1024. A negative number, the default, stands for what the environment variable
    /// MOXWRITER_THREADS says, and for 0 where that is not set or empty. With 0 the library starts
    /// no thread. The bytes of the file do not depend on it.
    int threads;
    /// Bytes from which on a block of the file is full: 1 to 4294967294. 0, the default, stands for
    /// what the environment variable MOXWRITER_DEFAULT_BLOCK_SIZE says, and for 209715200 (200 MiB)
    /// where that is not set. Threads have something to do as soon as one block is full.
    std::uint64_t blockSize;
    /// Whether what was added survives the process: 1 or `true`, 0 or `false`. A negative number,
    /// the default, stands for what the environment variable MOXWRITER_RECOVERABLE says (1 or 0),
    /// and for 0 where that is not set or empty. Beside the file there is then a folder, which has
    /// its name and ".recovery" behind it, until the file is closed; `mox recover` makes a whole
    /// file of both. The bytes of the file do not depend on it.
    int recoverable;
};

} // namespace Mox2
} // namespace Zyl2

#endif
