#ifndef MOXREAD_WHOLEINFLATER_H
#define MOXREAD_WHOLEINFLATER_H

#include "moxread/Inflater.h"

#include <cstddef>
#include <cstdint>

namespace MoxRead {

/// Inflates a zlib stream at once.
///
/// \return whether all `size` bytes are one sound stream that inflates to `length` bytes, neither
///         less nor more, and has their checksum. Else `to` holds anything, and what is wrong,
///         if anything is, remains to be found.
using WholeInflater = bool (*)(std::uint8_t const* stream, std::size_t size, std::uint8_t* to,
                               std::size_t length) noexcept;

WholeInflater zlibInflater() noexcept;
/// Has no definition where the library behind it was not found when the reader was built.
WholeInflater libdeflateInflater() noexcept;
/// \copydoc libdeflateInflater
WholeInflater isalInflater() noexcept;

/// \throws std::invalid_argument the reader was built without it
WholeInflater wholeInflaterOf(Inflater inflater);

} // namespace MoxRead

#endif
