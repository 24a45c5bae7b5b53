#include "Topology.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace Exodus {

namespace {

struct Entry
{
    char const* family;
    std::int64_t nodeCount;
    char const* type;
    std::vector<std::size_t> order;
};

/// The upright edges come before those of the top in a file, and after them in a model. The centre
/// of a solid is the first of its inner nodes in a file, and the last in a model.
std::vector<Entry> const& entries()
{
    static std::vector<Entry> const all = {
        {"POINT", 1, "Point", {}},
        {"LINE", 2, "Line", {}},
        {"LINE", 3, "Line 3", {}},
        {"LINE", 4, "Line 4", {}},
        {"TRI", 3, "Triangle", {}},
        {"TRI", 6, "Triangle 6", {}},
        {"TRI", 7, "Triangle 7", {}},
        {"QUAD", 4, "Quadrangle", {}},
        {"QUAD", 8, "Quadrangle 8", {}},
        {"QUAD", 9, "Quadrangle 9", {}},
        {"SHELL", 3, "Triangle", {}},
        {"SHELL", 4, "Quadrangle", {}},
        {"SHELL", 6, "Triangle 6", {}},
        {"SHELL", 8, "Quadrangle 8", {}},
        {"SHELL", 9, "Quadrangle 9", {}},
        {"TET", 4, "Tetrahedron", {}},
        {"TET", 10, "Tetrahedron 10", {}},
        {"TET", 14, "Tetrahedron 14", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 11, 12}},
        {"TET", 15, "Tetrahedron 15", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 14, 12, 13, 10}},
        {"PYR", 5, "Pyramid", {}},
        {"PYR", 13, "Pyramid 13", {}},
        {"PYR", 14, "Pyramid 14", {}},
        {"PYR", 19, "Pyramid 19", {}},
        {"WEDGE", 6, "Wedge", {}},
        {"WEDGE", 12, "Quadratic linear wedge", {}},
        {"WEDGE", 15, "Wedge 15", {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11}},
        {"WEDGE", 18, "Wedge 18", {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11, 15, 16, 17}},
        {"WEDGE", 21, "Wedge 21", {0,  1, 2,  3,  4,  5,  6,  7,  8,  12, 13,
                                   14, 9, 10, 11, 16, 17, 20, 18, 19, 15}},
        {"HEX", 8, "Hexahedron", {}},
        {"HEX", 20, "Hexahedron 20", {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,
                                      10, 11, 16, 17, 18, 19, 12, 13, 14, 15}},
        {"HEX", 27, "Hexahedron 27", {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 16, 17,
                                      18, 19, 12, 13, 14, 15, 23, 24, 25, 26, 21, 22, 20}},
        {"HEXSHELL", 8, "Hexahedron", {}},
    };
    return all;
}

std::string upperCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    });
    return text;
}

bool startsWith(std::string const& text, std::string const& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

struct Spelling
{
    char const* beginning;
    char const* family;
};

std::string familyOf(std::string const& name)
{
    static constexpr std::array<Spelling, 16> spellings = {{
        {"SPH", "POINT"},
        {"CIR", "POINT"},
        {"POI", "POINT"},
        {"BAR", "LINE"},
        {"BEA", "LINE"},
        {"TRU", "LINE"},
        {"ROD", "LINE"},
        {"EDG", "LINE"},
        {"LIN", "LINE"},
        {"TRI", "TRI"},
        {"QUA", "QUAD"},
        {"SHE", "SHELL"},
        {"TET", "TET"},
        {"PYR", "PYR"},
        {"WED", "WEDGE"},
        {"HEXSHELL", "HEXSHELL"},
    }};
    std::string const upper = upperCase(name);
    for (Spelling const& spelling : spellings)
        if (startsWith(upper, spelling.beginning))
            return spelling.family;
    return startsWith(upper, "HEX") ? "HEX" : std::string();
}

} // namespace

Topology topologyOf(std::string const& name, std::int64_t nodesPerElement,
                    std::int64_t dimensionOfFile)
{
    std::string family = familyOf(name);
    if (family == "SHELL" && dimensionOfFile < 3)
        family = "LINE";
    for (Entry const& entry : entries())
        if (entry.family == family && entry.nodeCount == nodesPerElement)
            return {Exchange::ElementType::find(entry.type), entry.order};
    return {};
}

bool isPolygon(std::string const& name)
{
    return startsWith(upperCase(name), "NSIDED");
}

bool isPolyhedron(std::string const& name)
{
    return startsWith(upperCase(name), "NFACED");
}

} // namespace Exodus
