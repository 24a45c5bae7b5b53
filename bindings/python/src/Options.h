#ifndef BINDINGS_PYTHON_OPTIONS_H
#define BINDINGS_PYTHON_OPTIONS_H

#include <Zyl2/Mox2/SaverOptions.h>

#include <cstdint>
#include <string>
#include <tuple>

namespace Python {

/// Options as `moxwriter.writer` prepares them: whether to overwrite, three texts, the encoder,
/// threads, size of blocks, whether to be recoverable.
using Options =
    std::tuple<bool, std::string, std::string, std::string, int, int, std::uint64_t, int>;

inline Zyl2::Mox2::SaverOptions saverOptionsOf(Options const& given)
{
    Zyl2::Mox2::SaverOptions options;
    options.overwrite = std::get<0>(given);
    options.text1 = std::get<1>(given);
    options.text2 = std::get<2>(given);
    options.text3 = std::get<3>(given);
    options.encoder = static_cast<Zyl2::Mox2::Encoder>(std::get<4>(given));
    options.threads = std::get<5>(given);
    options.blockSize = std::get<6>(given);
    options.recoverable = std::get<7>(given);
    return options;
}

} // namespace Python

#endif
