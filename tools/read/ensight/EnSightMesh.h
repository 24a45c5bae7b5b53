#ifndef READ_ENSIGHT_ENSIGHTMESH_H
#define READ_ENSIGHT_ENSIGHTMESH_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace VtkRead {

/// How many nodes and elements the parts of a mesh of EnSight have.
struct EnSightMesh
{
    struct Part
    {
        std::uint64_t number = 0;
        /// None where all parts share their nodes.
        std::uint64_t nodes = 0;
        /// By type; "block" are the cells of a structured part.
        std::map<std::string, std::uint64_t> elements;
        /// The kind of a structured part, if the file names it.
        std::string kind{};
        /// Whether a structured part has marks of what is left out.
        bool isBlanked = false;

        /// Elements that VTK's reader takes values of.
        bool hasElements() const;
        bool operator==(Part const& other) const;
    };

    bool isGold = false;
    std::uint64_t sharedNodes = 0;
    std::vector<Part> parts;
    bool hasNodeIds = false;
    bool hasElementIds = false;
    /// Whether, in a binary file, the shared nodes have ids other than 1, 2, 3 and so on.
    bool hasOwnNodeIds = false;

    bool operator==(EnSightMesh const& other) const;

    /// Null if there is none.
    Part const* find(std::uint64_t number) const;

    /// Of each element; 0 where it differs between the elements, or when the type is unknown.
    static std::uint64_t nodesOf(std::string const& type);
    static bool isElementType(std::string const& word);
    static bool hasMidSideNodes(std::string const& type);
    static bool isGhost(std::string const& type);
};

} // namespace VtkRead

#endif
