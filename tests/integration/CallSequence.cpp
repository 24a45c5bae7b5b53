#include "integration/CallSequence.h"

#include "integration/CheckedModel.h"
#include "integration/DatasetTypes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace Integration {

std::array<char const*, 6> const blockSizes{"0", "1", "10", "1000", "4096", "10485760"};

namespace {

using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::Model;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::PropertyType;

std::vector<std::string> const& names()
{
    static std::vector<std::string> const all{"a",
                                              "b",
                                              "c",
                                              "",
                                              "\x1E",
                                              "a\x1E"
                                              "b",
                                              std::string("z\0z", 3),
                                              std::string(1, '\0'),
                                              std::string(300, 'n'),
                                              "\xFF\xFE",
                                              "\xC3\xBC",
                                              "\xC3",
                                              "a/b",
                                              "/",
                                              "x:y"};
    return all;
}

/// Names of attributes, those with a meaning among them.
std::vector<std::string> const& attributeNames()
{
    static std::vector<std::string> const all{"Category",
                                              "Unit",
                                              "Link.x",
                                              "Link",
                                              "DataType",
                                              "Complex",
                                              "Contents",
                                              "DataSource",
                                              "Structure",
                                              "",
                                              "\x1E",
                                              std::string("n\0n", 3),
                                              std::string(300, 'a'),
                                              "\x80\x01"};
    return all;
}

std::vector<std::string> const& separators()
{
    static std::vector<std::string> const all{"/", "::", "/.", "\x1E"};
    return all;
}

/// Makes the calls of one sequence.
class CallSequence
{
public:
    CallSequence(Random& random, std::string const& path) : random_(random), model_(path) {}

    void run()
    {
        if (random_.chance(10))
            makeCalls(3);
        model_.save();
        if (random_.chance(90))
            model_.addNode(type(), random_.pick(names()), attributes());
        makeCalls(5 + random_.below(60));
        model_.closeAndCompare();
        if (random_.chance(10))
            makeCallsOfClosedModel();
    }

private:
    void makeCalls(std::size_t count)
    {
        for (; count > 0 && !random_.isExhausted() && !testing::Test::HasFailure(); --count)
            makeCall();
    }

    /// What must be refused leaves the file alone.
    void makeCallsOfClosedModel()
    {
        makeCalls(3);
        model_.closeAndCompare();
    }

    void makeCall()
    {
        switch (random_.below(16)) {
        case 0:
        case 1:
        case 2:
            model_.addNode(type(), random_.pick(names()), attributes());
            break;
        case 3:
            model_.moveToParentNode();
            break;
        case 4:
            model_.setCurrentNodeId(anyId());
            break;
        case 5:
        case 6:
            model_.setNodeData(anyId(), properties(), attributes());
            break;
        case 7:
            addComponents();
            break;
        case 8:
            addComponentMap();
            break;
        case 9:
            findPath();
            break;
        case 10:
            findNames();
            break;
        default:
            addArray();
        }
    }

    NodeType type()
    {
        static std::array<int, 10> const all{3, 3, 4, 4, 4, 2, 1, 0, 5, -1};
        return static_cast<NodeType>(random_.pick(all));
    }

    /// Most often one that a node has.
    unsigned int anyId()
    {
        static std::array<unsigned int, 3> const none{0, Model::INVALID_ID, 0x7FFFFFFFU};
        auto const count = static_cast<unsigned int>(model_.expected().nodeCount());
        if (random_.chance(4))
            return random_.pick(none);
        if (random_.chance(4))
            return count + 1;
        return 1 + static_cast<unsigned int>(random_.below(count));
    }

    unsigned int anyGeometryOr(unsigned int other)
    {
        std::vector<unsigned int> ids;
        for (unsigned int id = 1; id <= model_.expected().nodeCount(); ++id)
            if (model_.expected().node(id).kind == Kind::Geometry)
                ids.push_back(id);
        return ids.empty() ? other : random_.pick(ids);
    }

    float anyFloat()
    {
        static std::array<float, 8> const striking{0.0F,
                                                   -0.0F,
                                                   std::numeric_limits<float>::infinity(),
                                                   -std::numeric_limits<float>::infinity(),
                                                   std::numeric_limits<float>::quiet_NaN(),
                                                   std::numeric_limits<float>::denorm_min(),
                                                   std::numeric_limits<float>::max(),
                                                   std::numeric_limits<float>::lowest()};
        if (random_.chance(60))
            return random_.number();
        if (random_.chance(60))
            return random_.pick(striking);
        std::uint32_t const word = random_.word();
        float value = 0;
        std::memcpy(&value, &word, sizeof value);
        return value;
    }

    double anyDouble()
    {
        static std::array<double, 6> const striking{
            std::numeric_limits<double>::infinity(),   -std::numeric_limits<double>::infinity(),
            std::numeric_limits<double>::quiet_NaN(),  std::numeric_limits<double>::max(),
            std::numeric_limits<double>::denorm_min(), 1.0 / 3.0};
        return random_.chance(50) ? double{random_.number()} / 3.0 : random_.pick(striking);
    }

    std::vector<float> floats(std::size_t count)
    {
        std::vector<float> result(count);
        for (float& value : result)
            value = anyFloat();
        return result;
    }

    /// Most often of those that the chosen kind of node has, and as it takes them.
    PropertySet properties()
    {
        PropertySet result;
        std::size_t const first = random_.chance(50) ? 0 : 3;
        std::size_t const count = first == 0 ? 3 : 7;
        for (std::size_t i = 0; i < count; ++i)
            if (random_.chance(40))
                setProperty(result, static_cast<PropertyType>(first + i));
        if (random_.chance(4))
            setProperty(result, static_cast<PropertyType>(random_.below(13)));
        return result;
    }

    void setProperty(PropertySet& set, PropertyType type)
    {
        if (random_.chance(4))
            return set.setOther(type, random_.below(PropertySet::otherKinds()));
        bool const isNumber = type >= PropertyType::Transparency && type <= PropertyType::Shininess;
        if (isNumber != random_.chance(4))
            return setNumber(set, type);
        std::size_t const count = type == PropertyType::Rotation ? 4 : 3;
        set.set(type, floats(random_.chance(92) ? count : random_.below(6)));
    }

    void setNumber(PropertySet& set, PropertyType type)
    {
        // Of two factors that are no numbers, the bits of either may stay: the language doesn't
        // say.
        if (type == PropertyType::AmbientIntensity)
            return set.set(type, random_.number());
        if (random_.chance(50))
            return set.set(type, anyDouble());
        set.set(type, anyFloat());
    }

    AttributeSet attributes()
    {
        AttributeSet result;
        for (std::size_t count = random_.below(5); count > 0; --count)
            setAttribute(result, random_.pick(attributeNames()));
        return result;
    }

    void setAttribute(AttributeSet& set, std::string const& name)
    {
        if (random_.chance(2))
            return set.setUnstorable(name, random_.below(AttributeSet::unstorableKinds()));
        switch (random_.below(9)) {
        case 0:
            return set.set(name, anyFloat());
        case 1:
            return set.set(name, anyDouble());
        case 2:
            return set.set(name, static_cast<int>(random_.word()));
        case 3:
            return set.set(name, random_.word());
        case 4:
            return set.set(name, static_cast<long>(random_.word()) * 65537L);
        case 5:
            return set.set(name, "Vibration");
        case 6:
            return set.set(name, random_.pick(names()).c_str());
        case 7:
            return set.set(name, random_.pick(names()));
        default:
            return set.set(name, text());
        }
    }

    std::string text()
    {
        std::string result(random_.chance(5) ? 250 + random_.below(12) : random_.below(12), ' ');
        for (char& byte : result)
            byte = static_cast<char>(random_.chance(98) ? 1 + random_.below(255) : 0);
        return result;
    }

    void addComponents()
    {
        std::string const& separator = random_.pick(separators());
        std::vector<std::string> paths;
        for (std::size_t count = random_.below(6); count > 0; --count)
            paths.push_back(path(separator));
        model_.addComponents(paths, separator);
    }

    void addComponentMap()
    {
        std::string const& separator = random_.pick(separators());
        std::vector<ComponentText> components;
        for (std::size_t count = random_.below(6); count > 0; --count)
            components.push_back({path(separator), attributes()});
        model_.addComponentMap(components, separator);
    }

    /// Most often absolute, and below the root.
    std::string path(std::string const& separator)
    {
        if (random_.chance(5))
            return random_.pick(names());
        bool const hasRoot = model_.expected().node(1).kind != Kind::None;
        std::string const root = hasRoot ? model_.expected().node(1).name : "a";
        std::string result = separator + (random_.chance(96) ? root : random_.pick(names()));
        for (std::size_t depth = random_.below(5); depth > 0; --depth)
            result += separator + random_.pick(names());
        if (random_.chance(40))
            result += random_.chance(90) ? separator : separator.substr(0, 1);
        return result;
    }

    /// The names that lead to a node, the root's first.
    std::vector<std::string> namesTo(unsigned int id)
    {
        std::vector<std::string> result;
        for (; id != 0; id = model_.expected().node(id).parent)
            result.insert(result.begin(), model_.expected().node(id).name);
        return result;
    }

    std::vector<std::string> namesToSearch()
    {
        auto const count = static_cast<unsigned int>(model_.expected().nodeCount());
        auto result = namesTo(1 + static_cast<unsigned int>(random_.below(count)));
        if (random_.chance(20))
            result.back() = random_.pick(names());
        if (random_.chance(20))
            result.push_back(random_.pick(names()));
        if (random_.chance(5))
            result.clear();
        return result;
    }

    void findNames() { model_.getNodeId(namesToSearch()); }

    void findPath()
    {
        std::string const& separator = random_.pick(separators());
        std::string path;
        for (std::string const& name : namesToSearch())
            path += separator + name;
        model_.getNodeId(random_.chance(95) ? path : random_.pick(names()), separator);
    }

    void addArray()
    {
        ArrayCall call;
        DatasetTypeFacts const& facts = random_.pick(datasetTypes());
        call.type = facts.type;
        call.values = Values::anyBits(
            random_, random_.chance(50) ? Element::Float : Element::Uint32, facts.width, rows());
        if (random_.chance(2))
            call.values = Values::ascending(Element::Float, 1 + facts.width % 6, rows());
        if (random_.chance(2))
            call.type = static_cast<DatasetType>(31 + random_.below(3));
        call.asColumn = call.values.width == 1 && random_.chance(50);
        if ((facts.defaultName == nullptr && random_.chance(97)) || random_.chance(40))
            call.name = random_.pick(names());
        call.attributes = attributes();
        chooseIds(call);
        chooseSteps(call);
        model_.addArray(call);
    }

    std::size_t rows()
    {
        if (random_.chance(10))
            return 0;
        return random_.chance(2) ? 1000 + random_.below(2000) : random_.below(30);
    }

    void chooseIds(ArrayCall& call)
    {
        for (std::size_t count = random_.below(5); count > 0; --count)
            call.ids.push_back(random_.chance(85) ? anyGeometryOr(1) : anyId());
        call.asSingleId = call.ids.size() == 1 && random_.chance(50);
        call.asInt = call.asSingleId && random_.chance(30);
    }

    void chooseSteps(ArrayCall& call)
    {
        call.steps.clear();
        for (std::size_t count = random_.below(4); count > 0; --count)
            call.steps.push_back({random_.pick(names()), attributes()});
        call.asSingleStep = call.steps.size() == 1 && random_.chance(50);
    }

    Random& random_;
    CheckedModel model_;
};

} // namespace

void runCallSequence(Random& random, std::string const& path)
{
    CallSequence(random, path).run();
}

} // namespace Integration
