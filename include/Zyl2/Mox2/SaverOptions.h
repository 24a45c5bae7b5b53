#ifndef ZYL2_MOX2_SAVEROPTIONS_H
#define ZYL2_MOX2_SAVEROPTIONS_H

#include <Zyl2/Mox2/Encoder.h>

#include <string>

namespace Zyl2 {
namespace Mox2 {

/// How `Model::saveTo` opens a file and signs it, and how the file is compressed.
struct SaverOptions
{
    SaverOptions() : overwrite(false), encoder(Encoder::Default) {}

    /// When false, an existing file at the path is an error.
    bool overwrite;
    /// First text of the file's writing record, for instance the host's name and version.
    std::string text1;
    /// Second text of the writing record; used only when `text1` is not empty.
    std::string text2;
    /// Contract: carried along for hosts that set it, and written nowhere.
    std::string text3;
    /// What compresses the file. A host that leaves it alone lets its users choose.
    Encoder encoder;
};

} // namespace Mox2
} // namespace Zyl2

#endif
