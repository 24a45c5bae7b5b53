#ifndef TESTS_MOXREAD_SAMPLE_H
#define TESTS_MOXREAD_SAMPLE_H

#include "TestFile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace MoxReadTest {

struct TestNode
{
    std::uint32_t id = 0;
    std::uint32_t parent = 0;
    std::uint32_t previous = 0;
    std::uint32_t next = 0;
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::string name;
    std::string type;
    std::string version;
    std::uint64_t lightPosition = 0;
};

struct TestGroup
{
    std::vector<float> transform = {0, 0, 0, 0, 0, 1, 0, 1, 1, 1};
    unsigned flag = 0;
};

struct TestVariable
{
    std::string name;
    std::uint32_t type = 0;
    std::uint32_t elementCode = 0;
    unsigned linked = 0;
    std::uint32_t linkNode = 0;
    std::uint32_t linkIndex = 0;
    std::uint32_t count = 0;
    unsigned width = 0;
    unsigned flag1 = 0;
    unsigned flag2 = 0;
    std::uint32_t float1 = 0;
    std::uint32_t float2 = 0;
    unsigned flag3 = 0;
    std::uint64_t position = 0;
    unsigned vibration = 0;
};

struct TestAttributes
{
    std::vector<std::string> names;
    std::vector<unsigned> tags;
    std::vector<std::uint32_t> uint32s;
    std::vector<float> floats;
    std::vector<double> doubles;
    std::vector<std::string> strings;
};

struct TestMaterial
{
    std::uint32_t size = 84;
    std::string version = "0.3";
    unsigned flag = 1;
};

struct TestWriting
{
    std::uint32_t size = 82;
    std::string version = "0.1";
    std::string formatVersion = "1.3";
};

/// A small model with one of everything, each field free to be wrong:
///
///   1 Group "root", with a transform and an attribute of each type
///     2 Shape "part"
///       3 Geometry "part": variables 0 "Coordinates", 1 "Ids" and 2 "Coordinates" step "t2",
///         the last of them a link to the first
///     4 Group "rest"
///
/// "Light Data": group 1 at 0, geometry 3 at 41 (its variables at 45, 90 and 127), group 4 at 159,
/// end at 200. "Attributes": node 1 at 0, the variables at 72, 106 and 130, node 4 at 154, end at
/// 178. "Heavy Data": 24 bytes of coordinates, 8 bytes of ids.
struct Sample
{
    Sample();

    std::vector<TestNode> nodes;
    TestGroup root;
    TestGroup rest;
    /// Whether "Light Data" has it.
    bool hasRest = true;
    std::vector<TestVariable> variables;
    /// Of node 1, of the three variables, of node 4.
    std::vector<TestAttributes> attributes;
    TestMaterial material;
    TestWriting writing;

    std::string tree() const;
    std::string light() const;
    std::string attributeBytes() const;
    std::string resources() const;
    std::string global() const;
    std::string heavy() const;

    /// "Heavy Data" in slot 0, then "Mox Tree", "Light Data", "Attributes", "Resources", "Global
    /// Information", all of them compressed.
    std::vector<TestBlock> blocks() const;
    /// The same blocks, none of them compressed.
    std::vector<TestBlock> plainBlocks() const;
    std::string file() const;
};

/// The six vectors of an attribute list.
std::string bytesOf(TestAttributes const& attributes);

/// A file with a root group only.
std::string minimalFile();

} // namespace MoxReadTest

#endif
