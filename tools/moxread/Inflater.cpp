#include "moxread/Inflater.h"

#include "moxread/WholeInflater.h"

#include <stdexcept>
#include <utility>

namespace MoxRead {

namespace {

std::string namesOf(std::vector<Inflater> const& inflaters)
{
    std::string names;
    for (Inflater const inflater : inflaters)
        names += (names.empty() ? "" : ", ") + nameOf(inflater);
    return names;
}

// In the order of their speed on blocks of results, with long matches and without.
std::vector<std::pair<Inflater, WholeInflater>> wholeInflaters()
{
    return {
#ifdef MOXWRITER_HAS_LIBDEFLATE
        {Inflater::Libdeflate, libdeflateInflater()},
#endif
#ifdef MOXWRITER_HAS_ISAL
        {Inflater::Isal, isalInflater()},
#endif
        {Inflater::Zlib, zlibInflater()},
    };
}

} // namespace

std::vector<Inflater> builtInflaters()
{
    std::vector<Inflater> inflaters;
    for (auto const& [inflater, inflate] : wholeInflaters())
        inflaters.push_back(inflater);
    return inflaters;
}

std::string nameOf(Inflater inflater)
{
    switch (inflater) {
    case Inflater::Zlib:
        return "zlib";
    case Inflater::Libdeflate:
        return "libdeflate";
    case Inflater::Isal:
        return "isal";
    case Inflater::Fastest:
        break;
    }
    return "fastest";
}

WholeInflater wholeInflaterOf(Inflater inflater)
{
    for (auto const& [built, inflate] : wholeInflaters())
        if (inflater == built || inflater == Inflater::Fastest)
            return inflate;
    throw std::invalid_argument("the reader was built without " + nameOf(inflater) + "; it has " +
                                namesOf(builtInflaters()));
}

} // namespace MoxRead
