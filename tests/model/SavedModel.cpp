// Blocks as ContainerReader.h finds them. A block whose lowest transformation bit is set:
//
//     untransformed length, 4 | one zlib stream
//
// "Mox Tree":            count, 4 | records: six ids, 4 each | name, type, version | position, 8
// "Light Data":          groups: 10 floats | flag, 1
//                        geometries: count, 4 | variables: name | type word, 4 | link flag, 1 |
//                        linked: node, 4 | index, 4
//                        otherwise: count, 4 | width, 1 | 11 bytes | position, 8
//                        | vibration flag, 1
// "Attributes":          names | tags | integers | floats | doubles | texts, a count before each
// "Resources":           record size, 4 | version | 18 floats | flag, 1
// "Global Information":  count, 4 | records: size, 4 | version | seven texts

#include "SavedModel.h"

#include "container/ContainerReader.h"
#include "container/InflatedBlock.h"
#include "container/TemporaryFile.h"

#include <sstream>
#include <stdexcept>

namespace ModelTests {

namespace {

/// Takes one thing after the other out of a block.
class Reader
{
public:
    explicit Reader(std::string const& bytes) : bytes_(bytes) {}

    template <typename T>
    T take()
    {
        T value{};
        std::string const raw = takeBytes(sizeof value);
        std::memcpy(&value, raw.data(), sizeof value);
        return value;
    }

    std::string takeBytes(std::size_t count)
    {
        if (count > bytes_.size() - at_)
            throw std::runtime_error("a block ends early");
        at_ += count;
        return bytes_.substr(at_ - count, count);
    }

    std::string takeText() { return takeBytes(take<std::uint32_t>()); }

    template <typename T>
    std::vector<T> takeVector()
    {
        std::vector<T> values(take<std::uint32_t>());
        for (T& value : values)
            value = take<T>();
        return values;
    }

    std::vector<std::string> takeTexts()
    {
        std::vector<std::string> texts(take<std::uint32_t>());
        for (std::string& text : texts)
            text = takeText();
        return texts;
    }

private:
    std::string const& bytes_;
    std::size_t at_ = 0;
};

template <typename T>
std::string tagged(char letter, T const& value)
{
    std::ostringstream text;
    text << letter << ' ' << value;
    return text.str();
}

std::map<std::string, std::string> takeAttributes(Reader& reader)
{
    auto const names = reader.takeTexts();
    auto const tags = reader.takeVector<unsigned char>();
    auto const integers = reader.takeVector<std::uint32_t>();
    auto const floats = reader.takeVector<float>();
    auto const doubles = reader.takeVector<double>();
    auto const texts = reader.takeTexts();
    std::array<std::size_t, 4> next{};
    std::map<std::string, std::string> attributes;
    for (std::size_t entry = 0; entry < names.size(); ++entry) {
        std::size_t const at = next.at(tags.at(entry))++;
        switch (tags[entry]) {
        case 0:
            attributes[names[entry]] = tagged('i', integers.at(at));
            break;
        case 1:
            attributes[names[entry]] = tagged('f', floats.at(at));
            break;
        case 2:
            attributes[names[entry]] = tagged('s', texts.at(at));
            break;
        default:
            attributes[names[entry]] = tagged('d', doubles.at(at));
        }
    }
    return attributes;
}

} // namespace

/// Walks the records of the tree, and the other blocks along with them.
class SavedModel::Decoder
{
public:
    explicit Decoder(SavedModel const& model)
        : tree_(model.bytes("Mox Tree")), light_(model.bytes("Light Data")),
          attributes_(model.bytes("Attributes")), resources_(model.bytes("Resources")),
          global_(model.bytes("Global Information"))
    {}

    std::map<unsigned int, SavedNode> takeNodes()
    {
        std::map<unsigned int, SavedNode> nodes;
        auto const count = tree_.take<std::int32_t>();
        for (std::int32_t record = 0; record < count; ++record) {
            SavedNode const node = takeNode();
            nodes[node.id] = node;
        }
        return nodes;
    }

    std::vector<std::string> takeLastWritingRecord()
    {
        std::vector<std::string> texts;
        auto const count = global_.take<std::uint32_t>();
        for (std::uint32_t record = 0; record < count; ++record) {
            global_.take<std::uint32_t>();
            global_.takeText();
            texts.clear();
            for (int field = 0; field < 7; ++field)
                texts.push_back(global_.takeText());
        }
        return texts;
    }

private:
    SavedNode takeNode()
    {
        SavedNode node;
        node.id = tree_.take<std::uint32_t>();
        node.parent = tree_.take<std::uint32_t>();
        for (int relative = 0; relative < 4; ++relative)
            tree_.take<std::uint32_t>();
        node.name = tree_.takeText();
        node.type = tree_.takeText();
        node.version = tree_.takeText();
        tree_.take<std::uint64_t>();
        takePayload(node);
        return node;
    }

    void takePayload(SavedNode& node)
    {
        if (node.type == "Group") {
            node.transform = light_.take<std::array<float, 10>>();
            node.attributes = takeAttributes(attributes_);
            node.flag = light_.take<unsigned char>();
        } else if (node.type == "Shape") {
            resources_.take<std::uint32_t>();
            resources_.takeText();
            node.material = resources_.take<std::array<float, 18>>();
            node.flag = resources_.take<unsigned char>();
        } else if (node.type == "Geometry") {
            node.variables.resize(light_.take<std::uint32_t>());
            for (SavedVariable& variable : node.variables)
                variable = takeVariable();
        }
    }

    SavedVariable takeVariable()
    {
        SavedVariable variable;
        variable.name = light_.takeText();
        auto const typeWord = light_.take<std::uint32_t>();
        variable.variableType = typeWord & 0xFFFFFFU;
        variable.elementCode = typeWord >> 24U;
        variable.linked = light_.take<unsigned char>() != 0;
        if (variable.linked) {
            variable.linkedNode = light_.take<std::uint32_t>();
            variable.linkedVariable = light_.take<std::uint32_t>();
        } else {
            variable.valueCount = light_.take<std::int32_t>();
            variable.width = light_.take<unsigned char>();
            light_.takeBytes(11);
            variable.position = light_.take<std::uint64_t>();
        }
        variable.vibration = light_.take<unsigned char>() != 0;
        variable.attributes = takeAttributes(attributes_);
        return variable;
    }

    Reader tree_;
    Reader light_;
    Reader attributes_;
    Reader resources_;
    Reader global_;
};

SavedModel::SavedModel(std::string const& path)
{
    for (Support::ReadSlot const& slot : Support::ReadSlots(Support::ReadFile(path)))
        blocks_[slot.name] += Support::ContentOf(slot);
    Decoder decoder(*this);
    nodes_ = decoder.takeNodes();
    writingRecord_ = decoder.takeLastWritingRecord();
}

std::string const& SavedModel::bytes(std::string const& block) const
{
    static std::string const none;
    auto const found = blocks_.find(block);
    return found == blocks_.end() ? none : found->second;
}

std::string SavedModel::unshuffled(SavedVariable const& variable) const
{
    auto const values = static_cast<std::size_t>(variable.valueCount);
    std::size_t const rows = values / variable.width;
    std::string const planes = bytes("Heavy Data").substr(variable.position, values * 4);
    std::string plain(values * 4, '\0');
    for (std::size_t value = 0; value < values; ++value)
        for (std::size_t byte = 0; byte < 4; ++byte) {
            std::size_t const column = value % variable.width;
            std::size_t const row = value / variable.width;
            plain[value * 4 + byte] = planes.at((column * 4 + byte) * rows + row);
        }
    return plain;
}

} // namespace ModelTests
