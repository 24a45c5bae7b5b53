#include "moxread/Inflater.h"

#include "moxread/WholeInflater.h"

#include <algorithm>
#include <stdexcept>

namespace MoxRead {

namespace {

std::string namesOf(std::vector<Inflater> const& inflaters)
{
    std::string names;
    for (Inflater const inflater : inflaters)
        names += (names.empty() ? "" : ", ") + nameOf(inflater);
    return names;
}

} // namespace

// In the order of their speed on blocks of results, with long matches and without.
std::vector<Inflater> builtInflaters()
{
    std::vector<Inflater> inflaters;
    if (libdeflateInflater() != nullptr)
        inflaters.push_back(Inflater::Libdeflate);
    if (isalInflater() != nullptr)
        inflaters.push_back(Inflater::Isal);
    inflaters.push_back(Inflater::Zlib);
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
    std::vector<Inflater> const built = builtInflaters();
    if (inflater == Inflater::Fastest)
        inflater = built.front();
    if (std::find(built.begin(), built.end(), inflater) == built.end()) {
        throw std::invalid_argument("the reader was built without " + nameOf(inflater) +
                                    "; it has " + namesOf(built));
    }
    if (inflater == Inflater::Libdeflate)
        return libdeflateInflater();
    return inflater == Inflater::Isal ? isalInflater() : zlibInflater();
}

} // namespace MoxRead
