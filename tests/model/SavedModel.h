#ifndef TESTS_MODEL_SAVEDMODEL_H
#define TESTS_MODEL_SAVEDMODEL_H

#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace ModelTests {

/// A variable of a geometry, as a file has it.
struct SavedVariable
{
    std::string name;
    unsigned int variableType = 0;
    unsigned int elementCode = 0;
    bool linked = false;
    unsigned int linkedNode = 0;
    unsigned int linkedVariable = 0;
    int valueCount = 0;
    unsigned int width = 0;
    std::uint64_t position = 0;
    bool vibration = false;
    /// Values as text, with the letter of their type in front: i, f, d, s.
    std::map<std::string, std::string> attributes;
};

/// A node, as a file has it; what its kind doesn't have stays empty.
struct SavedNode
{
    unsigned int id = 0;
    unsigned int parent = 0;
    std::string name;
    std::string type;
    std::string version;
    std::array<float, 10> transform{};
    unsigned int flag = 0;
    std::map<std::string, std::string> attributes;
    std::array<float, 18> material{};
    std::vector<SavedVariable> variables;
};

/// Reads a model back, far enough for the tests to see what a call did to the file. Shares no code
/// with what is tested.
class SavedModel
{
public:
    explicit SavedModel(std::string const& path);

    /// Nodes by id.
    std::map<unsigned int, SavedNode> const& nodes() const { return nodes_; }
    SavedNode const& node(unsigned int id) const { return nodes_.at(id); }

    /// The seven texts of the last writing record.
    std::vector<std::string> const& writingRecord() const { return writingRecord_; }

    /// Untransformed bytes of all blocks of a name, one after the other.
    std::string const& bytes(std::string const& block) const;

    /// The values of a variable that is no link, in row order.
    template <typename T>
    std::vector<T> values(SavedVariable const& variable) const
    {
        std::string const plain = unshuffled(variable);
        std::vector<T> values(plain.size() / sizeof(T));
        if (!values.empty())
            std::memcpy(values.data(), plain.data(), plain.size());
        return values;
    }

private:
    class Decoder;

    std::string unshuffled(SavedVariable const& variable) const;

    std::map<std::string, std::string> blocks_;
    std::map<unsigned int, SavedNode> nodes_;
    std::vector<std::string> writingRecord_;
};

} // namespace ModelTests

#endif
