#include "Handle.h"
#include "Text.h"

using Zyl2::C::contentOf;
using Zyl2::C::guarded;
using Zyl2::C::textFrom;
using Zyl2::Mox2::Encoder;
using Zyl2::Mox2::SaverOptions;

static_assert(MOX_ENCODER_DEFAULT == static_cast<int>(Encoder::Default));
static_assert(MOX_ENCODER_ZLIB == static_cast<int>(Encoder::Zlib));
static_assert(MOX_ENCODER_LIBDEFLATE == static_cast<int>(Encoder::Libdeflate));
static_assert(MOX_ENCODER_ISAL == static_cast<int>(Encoder::Isal));

namespace {

mox_status setText(mox_options* options, std::string SaverOptions::*member, char const* text,
                   size_t length)
{
    return guarded([=] { contentOf(options).*member = textFrom(text, length, "text"); });
}

} // namespace

mox_status mox_options_create(mox_options** options)
{
    return Zyl2::C::create(options);
}

mox_status mox_options_destroy(mox_options* options)
{
    return Zyl2::C::destroy(options);
}

mox_status mox_options_set_overwrite(mox_options* options, int overwrite)
{
    return guarded([=] { contentOf(options).overwrite = overwrite != 0; });
}

mox_status mox_options_set_text1(mox_options* options, char const* text, size_t length)
{
    return setText(options, &SaverOptions::text1, text, length);
}

mox_status mox_options_set_text2(mox_options* options, char const* text, size_t length)
{
    return setText(options, &SaverOptions::text2, text, length);
}

mox_status mox_options_set_text3(mox_options* options, char const* text, size_t length)
{
    return setText(options, &SaverOptions::text3, text, length);
}

mox_status mox_options_set_encoder(mox_options* options, mox_encoder encoder)
{
    return guarded([=] { contentOf(options).encoder = static_cast<Encoder>(encoder); });
}

mox_status mox_options_set_threads(mox_options* options, int threads)
{
    return guarded([=] { contentOf(options).threads = threads; });
}

mox_status mox_options_set_block_size(mox_options* options, uint64_t bytes)
{
    return guarded([=] { contentOf(options).blockSize = bytes; });
}

mox_status mox_options_set_recoverable(mox_options* options, int recoverable)
{
    return guarded([=] { contentOf(options).recoverable = recoverable; });
}
